#pragma once

#include <memory>
#include <string>

#include <rttr/type>

#include "Vision/Core/ToolConstants.h"
#include "Vision/Core/TrackedItemBase.h"
#include "Vision/Core/TrackingCollectionBase.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision::Implementation {

// A named input or output of a tool. A bound pin reaches its value through a property path from
// its tool, the pin's parent; a value pin holds the value itself. A pin of type rttr::variant
// takes values of any type.
//
// Names and path segments are identifiers: a letter or '_', then letters, digits or '_'; a path
// joins segments with '.'.
class ToolPin : public TrackedItemBase {
public:
    static const long long sf0_ = TrackedItemBase::sfNextSf_;
    static const long long SfMode = sf0_;
    static const long long SfPath = sf0_ << 1;
    static const long long SfType = sf0_ << 2;
    static const long long SfValue = sf0_ << 3;
    static const long long sfNextSf_ = sf0_ << 4;

    // A pin bound to the tool's property of that name, of any type.
    ToolPin(ObjectCreateAccessToken const& token, std::string const& name);
    ToolPin(ObjectCreateAccessToken const& token, std::string const& name,
            ToolPinModeConstants mode, rttr::type const& type, std::string const& path);

    TAVRIN_SHARED_FROM_THIS(ToolPin)

    ToolPinModeConstants Mode() const { return mode_; }
    void setMode(ToolPinModeConstants mode);
    std::string Path() const { return path_; }
    void setPath(std::string path);
    rttr::type Type() const { return type_; }
    void setType(rttr::type const& type);

    // A bound pin without a tool gives an empty variant. Throws ArgumentException when the path
    // does not lead to a property, or a value doesn't fit.
    rttr::variant Value() const;
    void setValue(rttr::variant value);

protected:
    void CheckName(std::string const& name) const override;

private:
    ToolPin() = default;

    rttr::variant ReadBound(Brnt::IObject& tool) const;
    void WriteBound(Brnt::IObject& tool, rttr::variant const& value) const;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    ToolPinModeConstants mode_ = ToolPinModeConstants_Bound;
    rttr::type type_ = rttr::type::get<rttr::variant>();
    std::string path_;
    rttr::variant value_;

    RTTR_ENABLE(TrackedItemBase)
};

using ToolPinPtr = std::shared_ptr<ToolPin>;

// A tool's pins, unique by name.
class ToolPinTrackingCollection : public TrackingCollectionBase<ToolPinPtr> {
public:
    explicit ToolPinTrackingCollection(ObjectCreateAccessToken const& token)
        : TrackingCollectionBase(token) {}

    TAVRIN_SHARED_FROM_THIS(ToolPinTrackingCollection)

protected:
    [[noreturn]] void ThrowLoadedItemRefused(ToolPinPtr const& pin,
                                             VisionException const& refusal) const override;

private:
    ToolPinTrackingCollection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(TrackingCollectionBase<ToolPinPtr>)
};

using ToolPinTrackingCollectionPtr = std::shared_ptr<ToolPinTrackingCollection>;

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Implementation::ToolPin, 1)
TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Implementation::ToolPinTrackingCollection, 1)
