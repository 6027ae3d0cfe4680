#pragma once

#include <string>

#include <opencv2/core.hpp>

#include "Features.h"
#include "Workspace.h"

namespace KeloReference {

struct TrainingOptions {
    std::string redType = "red";
    std::string greenType = "green";
    std::string blueType = "blue_read";
    cv::Size sampleSize{20, 20};
    // C and gamma, chosen by five-fold cross-validation on the example's training digits.
    MachineSettings machine{4, 2};
};

// Trains a workspace from a folder of labelled images, one stream per kind found:
//   red/good/*, red/bad/*   -> stream "anomaly", tool "defects" (bad images calibrate thresholds)
//   green/<class>/*         -> stream "classify", tool "classes"
//   blue/<string>_<n>.*     -> stream "read", tool "reader" with models "text", "pattern", "slots"
// Refuses a folder without any of them, and a kind without usable images.
Workspace TrainWorkspace(const std::string& folder, const TrainingOptions& options);

} // namespace KeloReference
