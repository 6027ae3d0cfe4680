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

// The shear that sets an image upright: it takes out the slant of its intensity moments
// (mu11 / mu02, at most 45 degrees either way) about its centroid. A 2 by 3 map from upright
// coordinates to the image's, for warpAffine with WARP_INVERSE_MAP.
cv::Mat UprightShear(const cv::Mat& image);
cv::Mat Upright(const cv::Mat& image);

// Histograms of oriented gradients over a 5 by 5 grid of cells, 9 unsigned orientations each;
// every gradient is shared between its two nearest orientations and, by position, between its
// four nearest cells. Each block of 2 by 2 cells is square-rooted and L2-normalised, and the
// sixteen blocks together scaled to length 1: one CV_32F row. The density scales the resolution
// at which gradients are taken (cells of 5 × density pixels).
cv::Mat GradientHistogram(const cv::Mat& sample, double density);

// The feature that classifiers compare, from the sample set upright: its gradient histograms and
// its grey values at 20 by 20, L2-normalised and weighted by half.
cv::Mat SampleFeature(const cv::Mat& sample, double density);

// The settings of a support vector machine: C weighs training errors against the margin, and
// gamma is the radial basis kernel's exp(-gamma * distance^2).
struct MachineSettings {
    double c;
    double gamma;
};

// A support vector machine (radial basis kernel, one against one) over the sample features of
// the classifier's samples; it needs two classes at least.
cv::Ptr<cv::ml::SVM> TrainMachine(const Classifier& classifier, double density,
                                  const MachineSettings& settings);

// Classifies samples with the classifier's machine where it takes the features of this density,
// and with one trained on them from the samples, with the same settings, otherwise (another
// density, or a file written before the features changed).
class SupportVectorClassifier {
public:
    SupportVectorClassifier(const Classifier& classifier, double density);

    // One score per class, summing to 1: the machine's pairwise decisions as probabilities of
    // each class against each other one, coupled into one probability per class.
    std::vector<double> Scores(const cv::Mat& sample) const;
    double Density() const { return density_; }

private:
    // The decision between two of the machine's classes; a positive value favours the first.
    struct Decision {
        std::size_t first;
        std::size_t second;
        cv::Mat weights; // CV_64F, one per support vector used
        cv::Mat vectors; // CV_32S, indices of the support vectors used
        double offset;
    };

    double density_;
    std::size_t classCount_;
    std::vector<std::size_t> machineClasses_; // the class of each of the machine's classes
    cv::Mat supportVectors_;
    cv::Mat supportNorms_; // squared lengths, one per support vector
    double gamma_;
    std::vector<Decision> decisions_;
};

// The per-pixel anomaly model: good images are resized to one size, smoothed and set upright;
// their mean, their two principal modes of variation and the spread of each pixel's residual
// (what mean and modes leave) are kept, the spread with a floor so that constant pixels are not
// brittle.
AnomalyModel TrainAnomalyModel(const std::vector<cv::Mat>& goodImages, cv::Size size);

// The anomaly score of each pixel in 0 to 1, at the model's size scaled by the factor:
// 1 - exp(-z^2 / 18) with z the upright image's residual at the pixel in spreads, mapped back onto
// the image's own pixels.
cv::Mat AnomalyScoreMap(const AnomalyModel& model, const cv::Mat& grey, double scale);

// Boxes of the parts of an ink mask, left to right: outer contours, with boxes merged where one
// overlaps another horizontally by more than (1 - precision) of the narrower one, so the strokes
// of one character stay one part. Specks below a minimum size are dropped.
std::vector<cv::Rect> LocateParts(const cv::Mat& inkMask, double precision);

} // namespace KeloReference
