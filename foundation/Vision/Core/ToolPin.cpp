#include "Vision/Core/ToolPin.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

#include "Vision/Core/Registration.h"

#include "Vision/Core/CollectionReflection.h"

namespace Tavrin::Vision::Implementation {

const long long ToolPin::sf0_;
const long long ToolPin::SfMode;
const long long ToolPin::SfPath;
const long long ToolPin::SfType;
const long long ToolPin::SfValue;
const long long ToolPin::sfNextSf_;

namespace {

char const E_ModeNotValid[] = "The ToolPin Mode is not valid";
char const E_NameNotValid[] = "The ToolPin name is not valid";
char const E_PathNotValid[] = "The ToolPin path is not valid";
char const E_PathFixedInMode[] = "The ToolPin Path cannot be changed in this Mode";
char const E_TypeNull[] = "The ToolPin type cannot be null";
char const E_PinNotAdded[] = "Failed to add pin %1 of type %2 to a ToolPinTrackingCollection";

bool IsIdentifier(std::string_view text) {
    auto const identifierChar = [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
    };
    return !text.empty() && !std::isdigit(static_cast<unsigned char>(text.front())) &&
           std::all_of(text.begin(), text.end(), identifierChar);
}

std::vector<std::string> Segments(std::string const& path) {
    std::vector<std::string> segments(1);
    for (char c : path) {
        if (c == '.')
            segments.emplace_back();
        else
            segments.back() += c;
    }
    return segments;
}

bool IsPath(std::string const& path) {
    auto const segments = Segments(path);
    return std::all_of(segments.begin(), segments.end(),
                       [](std::string const& segment) { return IsIdentifier(segment); });
}

bool IsMode(ToolPinModeConstants mode) {
    return mode == ToolPinModeConstants_Bound || mode == ToolPinModeConstants_Value;
}

void CheckType(rttr::type const& type) {
    if (!type.is_valid())
        throw ArgumentException(E_TypeNull);
}

std::string SubstituteArgument(std::string text, std::string const& marker,
                               std::string const& value) {
    return text.replace(text.find(marker), marker.size(), value);
}

rttr::property PropertyOf(rttr::instance const& object, std::string const& name) {
    rttr::property const property = object.get_derived_type().get_property(name);
    if (!property.is_valid())
        throw ArgumentException(E_PathNotValid);
    return property;
}

// Walks the path from the object to the property of its last segment and hands that property,
// with the object holding it, to the visit.
template <class Visit>
rttr::variant Follow(rttr::instance const& object, std::vector<std::string> const& segments,
                     std::size_t at, Visit const& visit) {
    rttr::property const property = PropertyOf(object, segments[at]);
    if (at + 1 == segments.size())
        return visit(property, object);
    rttr::variant next = property.get_value(object);
    return Follow(rttr::instance(next), segments, at + 1, visit);
}

} // namespace

ToolPin::ToolPin(ObjectCreateAccessToken const& token, std::string const& name)
    : ToolPin(token, name, ToolPinModeConstants_Bound, rttr::type::get<rttr::variant>(), name) {}

ToolPin::ToolPin(ObjectCreateAccessToken const& token, std::string const& name,
                 ToolPinModeConstants mode, rttr::type const& type, std::string const& path)
    : TrackedItemBase(token, name)
    , mode_(mode)
    , type_(type)
    , path_(path) {
    CheckName(name);
    if (!IsMode(mode))
        throw ArgumentException(E_ModeNotValid);
    CheckType(type);
    if (mode == ToolPinModeConstants_Value && !path.empty())
        throw ArgumentException(E_PathFixedInMode);
    if (mode == ToolPinModeConstants_Bound && !IsPath(path))
        throw ArgumentException(E_PathNotValid);
}

// A pin turned into a value pin loses its path; a pin turned into a bound one is bound to the
// property of its own name.
void ToolPin::setMode(ToolPinModeConstants mode) {
    if (!IsMode(mode))
        throw ArgumentException(E_ModeNotValid);
    if (mode == mode_)
        return;
    mode_ = mode;
    path_ = mode == ToolPinModeConstants_Value ? std::string() : Name();
    OnChanged_(SfMode | SfPath);
}

void ToolPin::setPath(std::string path) {
    if (mode_ == ToolPinModeConstants_Value)
        throw ArgumentException(E_PathFixedInMode);
    if (!IsPath(path))
        throw ArgumentException(E_PathNotValid);
    if (path == path_)
        return;
    path_ = std::move(path);
    OnChanged_(SfPath);
}

void ToolPin::setType(rttr::type const& type) {
    CheckType(type);
    if (type == type_)
        return;
    type_ = type;
    OnChanged_(SfType);
}

rttr::variant ToolPin::Value() const {
    if (mode_ == ToolPinModeConstants_Value)
        return value_;
    auto const tool = Parent();
    return tool ? ReadBound(*tool) : rttr::variant();
}

void ToolPin::setValue(rttr::variant value) {
    bool const fits = type_ == rttr::type::get<rttr::variant>() || !value.is_valid() ||
                      value.get_type() == type_ || value.can_convert(type_);
    if (!fits)
        throw ArgumentException("The value does not fit the ToolPin type " +
                                type_.get_name().to_string());
    if (mode_ == ToolPinModeConstants_Value) {
        value_ = std::move(value);
        OnChanged_(SfValue);
        return;
    }
    auto const tool = Parent();
    if (!tool)
        throw ArgumentException("The ToolPin " + Name() + " has no tool to set the value in");
    WriteBound(*tool, value);
}

void ToolPin::CheckName(std::string const& name) const {
    if (!IsIdentifier(name))
        throw ArgumentException(E_NameNotValid);
}

rttr::variant ToolPin::ReadBound(Brnt::IObject& tool) const {
    return Follow(rttr::instance(tool), Segments(path_), 0,
                  [](rttr::property const& property, rttr::instance const& holder) {
                      return property.get_value(holder);
                  });
}

void ToolPin::WriteBound(Brnt::IObject& tool, rttr::variant const& value) const {
    Follow(rttr::instance(tool), Segments(path_), 0,
           [&](rttr::property const& property, rttr::instance const& holder) {
               if (!property.set_value(holder, value))
                   throw ArgumentException("The value cannot be written through the ToolPin path " +
                                           path_);
               return rttr::variant();
           });
}

template <class Archive> void ToolPin::serialize(Archive& archive, unsigned int version) {
    CheckLoadedVersion<Archive>(version, 1, "ToolPin::serialize()");
    std::string typeName = type_.get_name().to_string();
    archive(cereal::base_class<TrackedItemBase>(this), mode_, typeName, path_, value_);
    if constexpr (Archive::is_loading::value) {
        type_ = rttr::type::get_by_name(typeName);
        if (!type_.is_valid())
            throw SerializationException(E_TypeNull);
    }
}

void ToolPinTrackingCollection::ThrowLoadedItemRefused(ToolPinPtr const& pin,
                                                       VisionException const&) const {
    std::string const name = pin ? pin->Name() : std::string();
    std::string const type = pin ? pin->Type().get_name().to_string() : std::string();
    throw SerializationException(
        SubstituteArgument(SubstituteArgument(E_PinNotAdded, "%1", name), "%2", type));
}

template <class Archive>
void ToolPinTrackingCollection::serialize(Archive& archive, unsigned int version) {
    CheckLoadedVersion<Archive>(version, 1, "ToolPinTrackingCollection::serialize()");
    archive(cereal::base_class<TrackingCollectionBase<ToolPinPtr>>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(ToolPin)
TAVRIN_INSTANTIATE_SERIALIZE(ToolPinTrackingCollection)

} // namespace Tavrin::Vision::Implementation

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Implementation::ToolPin,
                               "Tavrin::Vision::Implementation::ToolPin")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Implementation::ToolPinTrackingCollection,
                               "Tavrin::Vision::Implementation::ToolPinTrackingCollection")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Implementation::TrackingCollectionBase<
                                   Tavrin::Vision::Implementation::ToolPinPtr>,
                               "Tavrin::Vision::Implementation::TrackingCollectionBase<"
                               "Tavrin::Vision::Implementation::ToolPinPtr>")
TAVRIN_REGISTER_COLLECTION_BASE(Tavrin::Vision::Implementation::ToolPinPtr,
                                "Tavrin::Vision::Implementation::CollectionBase<"
                                "Tavrin::Vision::Implementation::ToolPinPtr>")

TAVRIN_REGISTRATION(ToolPin) {
    using namespace Tavrin::Vision;
    using namespace Tavrin::Vision::Implementation;
    rttr::registration::enumeration<ToolPinModeConstants>("Tavrin::Vision::ToolPinModeConstants")(
        rttr::value("Bound", ToolPinModeConstants_Bound),
        rttr::value("Value", ToolPinModeConstants_Value));
    rttr::registration::class_<ToolPin>("Tavrin::Vision::Implementation::ToolPin")
        .property("Mode", &ToolPin::Mode, &ToolPin::setMode)
        .property("Path", &ToolPin::Path, &ToolPin::setPath)
        .property_readonly("Type", &ToolPin::Type)
        .property_readonly("SfMode", &ToolPin::SfMode)
        .property_readonly("SfPath", &ToolPin::SfPath)
        .property_readonly("SfType", &ToolPin::SfType)
        .property_readonly("SfValue", &ToolPin::SfValue);
    RegisterCollectionReflection<CollectionBase<ToolPinPtr>>(
        "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::Implementation::"
        "ToolPinPtr>");
    rttr::registration::class_<TrackingCollectionBase<ToolPinPtr>>(
        "Tavrin::Vision::Implementation::TrackingCollectionBase<"
        "Tavrin::Vision::Implementation::ToolPinPtr>");
    rttr::registration::class_<ToolPinTrackingCollection>(
        "Tavrin::Vision::Implementation::ToolPinTrackingCollection");
}
