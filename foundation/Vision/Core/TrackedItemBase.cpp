#include "Vision/Core/TrackedItemBase.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Platform.h"

namespace Tavrin::Vision::Implementation {

const long long TrackedItemBase::sf0_;
const long long TrackedItemBase::SfName;
const long long TrackedItemBase::sfNextSf_;

TrackedItemBase::TrackedItemBase(ObjectCreateAccessToken const&)
    : id_(Private::PalUtils::NewGuid()) {}

TrackedItemBase::TrackedItemBase(ObjectCreateAccessToken const&, std::string const& name)
    : id_(Private::PalUtils::NewGuid())
    , name_(name) {}

void TrackedItemBase::ReGuid() {
    id_ = Private::PalUtils::NewGuid();
}

void TrackedItemBase::setName(std::string const& name) {
    if (name == name_)
        return;
    CheckName(name);
    auto args = std::make_shared<CancelChangingStringEventArgs>(name_, name);
    nameChanging_.Raise(args);
    if (args->Canceled())
        throw ArgumentException(args->Reason());
    name_ = name;
    OnChanged_(SfName);
}

void TrackedItemBase::CheckName(std::string const&) const {}

template <class Archive> void TrackedItemBase::serialize(Archive& archive, unsigned int version) {
    CheckLoadedVersion<Archive>(version, 1, "TrackedItemBase::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), id_, name_);
}

TAVRIN_INSTANTIATE_SERIALIZE(TrackedItemBase)

} // namespace Tavrin::Vision::Implementation

CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::Implementation::ITrackingCollectionTrackedItem,
                                     Tavrin::Vision::Implementation::TrackedItemBase)

TAVRIN_REGISTRATION(TrackedItemBase) {
    using Tavrin::Vision::Implementation::ITrackingCollectionTrackedItem;
    using Tavrin::Vision::Implementation::TrackedItemBase;
    rttr::registration::class_<ITrackingCollectionTrackedItem>(
        "Tavrin::Vision::Implementation::ITrackingCollectionTrackedItem")
        .property_readonly("ID", &ITrackingCollectionTrackedItem::ID)
        .property_readonly("Name", &ITrackingCollectionTrackedItem::Name);
    rttr::registration::class_<TrackedItemBase>("Tavrin::Vision::Implementation::TrackedItemBase")
        .property_readonly("SfName", &TrackedItemBase::SfName);
}
