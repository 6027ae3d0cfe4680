#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DeepLearningEnums.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// One line of a blue label's feature metrics. The type is kept and archived but not given out.
class DLResultFeatureMetricsFeature : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultFeatureMetricsFeature)

    double Found() const { return found_; }
    double Recall() const { return recall_; }
    double Precision() const { return precision_; }
    double Fscore() const { return fscore_; }
    double Distance() const { return distance_; }
    std::string Name() const { return name_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultFeatureMetricsFeature() = default;
    DLResultFeatureMetricsFeature(ObjectCreateAccessToken const&, DLResultFeatureMetricsType type,
                                  std::string name, double found, double recall, double precision,
                                  double fscore, double distance);

    double found_ = 0;
    double recall_ = 0;
    double precision_ = 0;
    double fscore_ = 0;
    double distance_ = 0;
    DLResultFeatureMetricsType type_ = DLResultFeatureMetricsType::Features;
    std::string name_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultFeatureMetricsFeaturePtr = std::shared_ptr<DLResultFeatureMetricsFeature>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultFeatureMetricsFeature, 1)
