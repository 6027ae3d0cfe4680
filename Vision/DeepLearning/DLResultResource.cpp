#include "Vision/DeepLearning/DLResultResource.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultResource::DLResultResource(ObjectCreateAccessToken const&, std::string name,
                                   std::string type, std::string uuid,
                                   std::shared_ptr<IImage> image, double scale)
    : name_(std::move(name))
    , type_(std::move(type))
    , uuid_(std::move(uuid))
    , image_(std::move(image))
    , scale_(scale) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultResource, cereal::virtual_base_class<ShareableBase>,
                          "DLResultRedRegionReadOnlyCollection::serialize()", name_, type_, uuid_,
                          image_, scale_)
