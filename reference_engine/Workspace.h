#pragma once

#include <map>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/ml.hpp>

namespace KeloReference {

// Parameter texts by path, as the engine's get and set calls address them.
// Ordered by path; looked up by any text without making a string of it.
using Parameters = std::map<std::string, std::string, std::less<>>;

// Per-pixel model of good images: mean and spread of the grey values, both CV_32F of one size,
// and the principal modes of their variation, one per row of mean.total() values (CV_32F); the
// spread is that of what the modes leave.
struct AnomalyModel {
    cv::Mat mean;
    cv::Mat spread;
    cv::Mat modes;
};

// A classifier's training samples and the support vector machine trained on them. Samples are
// normalised grey images of sampleSize, one per row (CV_8U); labels index classes (CV_32S, one
// column). The machine takes the samples' features at sampling density 1; one that takes
// features of another form is replaced by one trained from the samples when the classifier is
// first used.
struct Classifier {
    cv::Size sampleSize;
    std::vector<std::string> classes;
    cv::Mat samples;
    cv::Mat labels;
    cv::Ptr<cv::ml::SVM> machine;
};

struct LayoutRegion {
    std::string name;
    cv::Rect2d box; // view coordinates
};

// A blue model. Parameters are kept under their keys relative to the model ("enabled", ...).
struct Model {
    std::string id;
    std::string type; // "string", "regex", "node" or "layout"
    Parameters parameters;
    std::string nodeClass;             // node: the feature class that the model counts
    std::vector<LayoutRegion> regions; // layout: the fields of the layout
};

struct Tool {
    std::string id;
    std::string uuid;
    std::string type;
    Parameters parameters;
    AnomalyModel anomaly;      // red tools
    Classifier classifier;     // green and blue tools
    std::vector<Model> models; // blue tools
    std::vector<Tool> children;
};

struct Stream {
    std::string id;
    std::string uuid;
    std::string frameWindow;
    std::vector<Tool> tools;
};

struct Workspace {
    std::string uuid;
    std::string lastModified;
    std::vector<Stream> streams;
};

// Workspace files are YAML documents of OpenCV's FileStorage; the format is described in the
// engine's README. Both throw Failure with StatusFileFailure.
Workspace ReadWorkspace(const std::string& path);
void WriteWorkspace(const Workspace& workspace, const std::string& path);

// The time now as an ISO 8601 text in UTC, to the second.
std::string UtcNow();

// A fresh random identity in the usual 8-4-4-4-12 form.
std::string NewUuid();

} // namespace KeloReference
