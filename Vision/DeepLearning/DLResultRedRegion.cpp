#include "Vision/DeepLearning/DLResultRedRegion.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultRedRegion::DLResultRedRegion(ObjectCreateAccessToken const&, double score, std::string name,
                                     double area, double perimeter, std::shared_ptr<Vect2> center,
                                     std::string covers, std::shared_ptr<Vect2Collection> points,
                                     std::string coverage)
    : score_(score)
    , name_(std::move(name))
    , area_(area)
    , perimeter_(perimeter)
    , center_(std::move(center))
    , covers_(std::move(covers))
    , points_(std::move(points))
    , coverage_(std::move(coverage)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultRedRegion, cereal::virtual_base_class<ShareableBase>,
                          "DLResultRedRegion::serialize()", score_, name_, area_, perimeter_,
                          center_, covers_, points_, coverage_)
