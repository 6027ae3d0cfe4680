#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include <opencv2/core.hpp>

#include "Evaluation.h"

namespace TavrinCli {

// Each cell coloured by its share of the truth's row, with its count written in it.
cv::Mat ConfusionHeatMap(const Classification& classification, const std::string& title);

// The scores of good and of anomalous images as two histograms on one axis, with the threshold
// marked where there is one.
cv::Mat ScoreHistograms(const AnomalyDetection& anomaly, const std::optional<double>& threshold,
                        const std::string& title);

cv::Mat RocPlot(const AnomalyDetection& anomaly, const std::string& title);

// The plots of the evaluation's task as PNG files in folder, which is made even when the task has
// none (reading): confusion.png for classes and anomalies, scores.png and roc.png for anomalies
// (the curve only with both kinds of images). The files written.
std::vector<std::filesystem::path> WritePlots(const Evaluation& evaluation,
                                              const std::filesystem::path& folder);

} // namespace TavrinCli
