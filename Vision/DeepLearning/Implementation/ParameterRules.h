#pragma once

#include <memory>
#include <string>
#include <utility>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>

namespace Tavrin::Vision {
class Vect2;
}

// The rules that the setters of every tool and model class follow: their bounds, how a value is
// stored, and the flags raised when it changed.
namespace Tavrin::Vision::DeepLearning::Private {

struct ValueRange {
    double minimum;
    double maximum;
    char const* name;
};

inline constexpr ValueRange SamplingDensityRange{0.2, 10.0, "SamplingDensity"};
inline constexpr ValueRange ThresholdRange{0.0, 1.0, "Threshold"};
inline constexpr ValueRange PrecisionRange{0.0, 1.0, "Precision"};

// Throws ArgumentException "<name> must be between <minimum> and <maximum>". A NaN fails
// neither comparison and passes.
void CheckInRange(double value, ValueRange const& range);

// The plain setter: stores and answers true unless the value equals the stored one. A NaN
// never equals, so it is always stored.
template <class T> bool StoreIfChanged(T& field, T value) {
    if (field == value)
        return false;
    field = std::move(value);
    return true;
}

inline bool StoreInRange(double& field, double value, ValueRange const& range) {
    CheckInRange(value, range);
    return StoreIfChanged(field, value);
}

// The setters of red tools that keep the threshold text: the text is recomposed from the new
// value and the stored other threshold before the comparison, so an unchanged value still
// brings the text to the formatted form.
bool StoreLowerThreshold(double& lower, double value, double upper, std::string& text);
bool StoreUpperThreshold(double lower, double& upper, double value, std::string& text);

// The threshold setter of green tools that keep the threshold text: the text takes the value
// held before this call, so what a run sends trails the setter by one step.
bool StoreLaggingThreshold(double& threshold, double value, std::string& text);

// Keeps the stored object when both are set and equal in value; a null on either side always
// counts as a change.
bool StoreFeatureSize(std::shared_ptr<Vect2>& field, std::shared_ptr<Vect2> value);

// The archive form of every tool and model class below its root: the version check, the root,
// then the class's own fields in order.
template <class Root, class Archive, class Owner, class... Fields>
void ArchiveBelowRoot(Archive& archive, unsigned int version, char const* where, Owner* owner,
                      Fields&... fields) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, where);
    archive(cereal::base_class<Root>(owner), fields...);
}

// The base of the tool and model roots, so that each setter is one call: store by the rule,
// then raise the setter's flags if the value changed.
class ParameterSetters : public virtual ChangedEventShareableBase {
protected:
    static constexpr ValueRange const& SamplingDensityRange = Private::SamplingDensityRange;
    static constexpr ValueRange const& ThresholdRange = Private::ThresholdRange;
    static constexpr ValueRange const& PrecisionRange = Private::PrecisionRange;

    template <class T> void Store(T& field, T value, long long flags) {
        RaiseIf(StoreIfChanged(field, std::move(value)), flags);
    }
    void Store(double& field, double value, ValueRange const& range, long long flags) {
        RaiseIf(StoreInRange(field, value, range), flags);
    }
    void RaiseIf(bool changed, long long flags) {
        if (changed)
            OnChanged_(flags);
    }
};

} // namespace Tavrin::Vision::DeepLearning::Private
