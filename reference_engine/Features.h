#pragma once

#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/ml.hpp>

#include "Workspace.h"

// The classical methods of the engine, shared by training and analysis.
namespace KeloReference {

// Any input image as 8-bit grey: colour is averaged by luminance, 16 bits are scaled down.
cv::Mat ToGrey8(const cv::Mat& image);

// A whole image as a classifier sample: grey, resized to the sample size.
cv::Mat WholeSample(const cv::Mat& grey, cv::Size sampleSize);

// The ink of a grey image, bright on dark whatever its polarity: the grey values, inverted when
// most pixels lie above Otsu's threshold, and the mask of the pixels above it.
struct Ink {
    cv::Mat grey;
    cv::Mat mask;
};
Ink FindInk(const cv::Mat& grey);

// A located part as a classifier sample: the part's box of the ink's grey values, padded to a
// square around its centre and resized, so parts of any aspect keep their shape.
cv::Mat PartSample(const Ink& ink, const cv::Rect& box, cv::Size sampleSize);

// Histograms of oriented gradients over a 4 by 4 grid of cells, 9 unsigned orientations each,
// L2-normalised: one CV_32F row. The density scales the resolution at which gradients are taken.
cv::Mat GradientHistogram(const cv::Mat& sample, double density);

// A k-nearest-neighbour classifier over gradient histograms of the trained samples.
class NearestNeighbours {
public:
    NearestNeighbours(const Classifier& classifier, double density);

    // One score per class: the neighbours' votes weighted by inverse distance, summing to 1.
    std::vector<double> Scores(const cv::Mat& sample) const;
    double Density() const { return density_; }

private:
    Classifier classifier_;
    double density_;
    cv::Ptr<cv::ml::KNearest> nearest_;
};

// The per-pixel anomaly model: good images are resized to one size and smoothed; mean and spread
// of each pixel are kept, the spread with a floor so that constant pixels are not brittle.
AnomalyModel TrainAnomalyModel(const std::vector<cv::Mat>& goodImages, cv::Size size);

// The anomaly score of each pixel in 0 to 1, at the model's size scaled by the factor:
// 1 - exp(-z^2 / 18) with z the pixel's distance from the mean in spreads.
cv::Mat AnomalyScoreMap(const AnomalyModel& model, const cv::Mat& grey, double scale);

// Boxes of the parts of an ink mask, left to right: outer contours, with boxes merged where one
// overlaps another horizontally by more than (1 - precision) of the narrower one, so the strokes
// of one character stay one part. Specks below a minimum size are dropped.
std::vector<cv::Rect> LocateParts(const cv::Mat& inkMask, double precision);

} // namespace KeloReference
