#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Vect2.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// One region that a red tool marked; center and points are in the caller's space, area and
// perimeter in the view's units.
class DLResultRedRegion : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultRedRegion)

    double Score() const { return score_; }
    std::string Name() const { return name_; }
    double Area() const { return area_; }
    double Perimeter() const { return perimeter_; }
    std::shared_ptr<Vect2> Center() const { return center_; }
    std::string Covers() const { return covers_; }
    std::shared_ptr<Vect2Collection> Points() const { return points_; }
    std::string Coverage() const { return coverage_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultRedRegion() = default;
    DLResultRedRegion(ObjectCreateAccessToken const&, double score, std::string name, double area,
                      double perimeter, std::shared_ptr<Vect2> center, std::string covers,
                      std::shared_ptr<Vect2Collection> points, std::string coverage);

    double score_ = 0;
    std::string name_;
    double area_ = 0;
    double perimeter_ = 0;
    std::shared_ptr<Vect2> center_;
    std::string covers_;
    std::shared_ptr<Vect2Collection> points_;
    std::string coverage_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultRedRegionPtr = std::shared_ptr<DLResultRedRegion>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultRedRegion, 1)
