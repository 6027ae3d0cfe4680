#include "Vision/DeepLearning/DLToolRuntimeParams.h"

#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

DLToolRuntimeParams::DLToolRuntimeParams(
    ObjectCreateAccessToken const&, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : childTools_(childTools
                      ? std::move(childTools)
                      : Brnt::ObjectFactory::Construct<DLToolRuntimeParamsReadOnlyCollection>(
                            std::vector<DLToolRuntimeParamsPtr>()))
    , stream_(stream)
    , name_(std::move(name))
    , id_(std::move(id))
    , status_(std::move(status))
    , type_(std::move(type)) {}

DLToolRuntimeParams::DLToolRuntimeParams() = default;

DLToolRuntimeParams::~DLToolRuntimeParams() = default;

void DLToolRuntimeParams::ApplyRuntimeParameters() {
    Private::ParameterTables::Push(*this);
}

void DLToolRuntimeParams::FinalConstruct() {
    Private::ParameterTables::Read(*this);
}

Private::ParameterSet<DLToolRuntimeParams> const& DLToolRuntimeParams::Parameters() {
    using C = DLToolRuntimeParams;
    static auto const table = Private::MakeParameterTable<C>(
        Private::Setting("ShowRegion", &C::ShowRegion, &C::setShowRegion),
        Private::Setting("AddImageRecords", &C::AddImageRecords, &C::setAddImageRecords));
    return table;
}

void DLToolRuntimeParams::setParent(std::shared_ptr<DLToolRuntimeParams> const& parent) {
    parent_ = parent;
}

void DLToolRuntimeParams::setStream(std::shared_ptr<DLStream> const& stream) {
    stream_ = stream;
}

// Children were read before they could point back.
void DLToolRuntimeParams::AdoptChildTools() {
    if (!childTools_)
        return;
    auto const self = SharedFromThisAs<DLToolRuntimeParams>();
    for (auto const& child : *childTools_) {
        if (child)
            child->setParent(self);
    }
}

template <class Archive>
void DLToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLToolRuntimeParams::serialize");
    archive(cereal::virtual_base_class<ShareableBase>(this), childTools_, name_, id_, status_,
            type_, showRegion_, addImageRecords_);
    if constexpr (Archive::is_loading::value)
        AdoptChildTools();
}

TAVRIN_INSTANTIATE_SERIALIZE(DLToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLToolRuntimeParams")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::ChangedEventShareableBase,
                                     Tavrin::Vision::DeepLearning::DLToolRuntimeParams)
