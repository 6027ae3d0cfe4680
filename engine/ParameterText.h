#pragma once

#include <string>
#include <utility>

#include "engine/NumberText.h"

// How parameter values travel between the parameter classes and the engine, which keeps every
// value as text, and the setter rules that all parameter classes share.
namespace Tavrin::Vision::DeepLearning::Private {

// Engine text to field. The lenient forms never fail: a text without a number gives 0.
double ParseReal(char const* text);
int ParseInteger(char const* text);
// True only for the exact, lower-case word.
bool ParseBool(char const* text);

// Field to engine text.
std::string FormatReal(double value);
std::string FormatInteger(long long value);
std::string FormatBool(bool value);

// The red tools' pair of thresholds as one text: "[lower,upper]".
std::string ComposeThresholdText(double lower, double upper);
// Skips the first and the last character unseen, whatever they are, and splits at the first
// comma. The lower threshold is stored before the upper one is parsed.
void ParseThresholdText(std::string const& text, double& lower, double& upper);
// For the red tools that keep the text as well: parses it, then keeps it whole.
void ParseThresholdTextKeepingIt(std::string text, double& lower, double& upper, std::string& kept);

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

} // namespace Tavrin::Vision::DeepLearning::Private
