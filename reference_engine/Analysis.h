#pragma once

#include <memory>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "Features.h"
#include "Workspace.h"

namespace KeloReference {

// One tool of an open workspace: what the file holds, the parameters as they stand now, and
// the classifier built from the trained samples, rebuilt when the sampling density changes.
struct RunningTool {
    explicit RunningTool(Tool tool);

    Tool definition;
    Parameters values;
    std::unique_ptr<SupportVectorClassifier> classifier;
    std::vector<RunningTool> children;
};

// An image that an answer refers to by its uuid: 8-bit grey.
struct ResourceImage {
    std::string uuid;
    cv::Mat pixels;
};

struct Analysis {
    std::string document;
    std::vector<ResourceImage> resources;
};

// Runs each tool of a stream, children after their parent, on one image and writes the result
// document: one marking per tool with one view over the whole image.
Analysis Analyse(std::vector<RunningTool>& tools, const cv::Mat& image);

} // namespace KeloReference
