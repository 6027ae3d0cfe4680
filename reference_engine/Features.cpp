#include "Features.h"

#include "Failure.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

namespace KeloReference {
namespace {

const int GridCells = 4;
const int Orientations = 9;
const float SpreadFloor = 8.0f;      // grey levels
const double AnomalyBlurSigma = 1.5; // pixels of the model's size
const int MinimumPartPixels = 4;

cv::Mat Smoothed(const cv::Mat& grey, cv::Size size) {
    cv::Mat resized;
    cv::resize(grey, resized, size, 0, 0, cv::INTER_AREA);
    cv::Mat smooth;
    resized.convertTo(smooth, CV_32F);
    cv::GaussianBlur(smooth, smooth, cv::Size(), AnomalyBlurSigma);
    return smooth;
}

cv::Mat TrainingFeatures(const Classifier& classifier, double density) {
    cv::Mat features;
    for (int row = 0; row < classifier.samples.rows; ++row)
        features.push_back(GradientHistogram(
            classifier.samples.row(row).reshape(1, classifier.sampleSize.height), density));
    return features;
}

} // namespace

cv::Mat ToGrey8(const cv::Mat& image) {
    cv::Mat grey;
    if (image.channels() == 3)
        cv::cvtColor(image, grey, cv::COLOR_BGR2GRAY);
    else if (image.channels() == 4)
        cv::cvtColor(image, grey, cv::COLOR_BGRA2GRAY);
    else
        grey = image;
    if (grey.depth() == CV_16U)
        grey.convertTo(grey, CV_8U, 1.0 / 257);
    return grey;
}

cv::Mat WholeSample(const cv::Mat& grey, cv::Size sampleSize) {
    cv::Mat sample;
    cv::resize(grey, sample, sampleSize, 0, 0, cv::INTER_AREA);
    return sample;
}

cv::Mat PartSample(const Ink& ink, const cv::Rect& box, cv::Size sampleSize) {
    // Training samples of handwriting leave a margin of a fifth around the ink; parts get the same.
    const int side = static_cast<int>(std::max(box.width, box.height) * 1.4) + 1;
    cv::Mat square = cv::Mat::zeros(side, side, CV_8U);
    const cv::Point offset((side - box.width) / 2, (side - box.height) / 2);
    ink.grey(box).copyTo(square(cv::Rect(offset, box.size())));
    return WholeSample(square, sampleSize);
}

cv::Mat GradientHistogram(const cv::Mat& sample, double density) {
    const int cellSide = std::max(2, static_cast<int>(std::lround(5 * density)));
    cv::Mat resized;
    cv::resize(sample, resized, cv::Size(cellSide * GridCells, cellSide * GridCells), 0, 0,
               cv::INTER_LINEAR);
    resized.convertTo(resized, CV_32F);
    cv::Mat dx, dy, magnitude, angle;
    cv::Sobel(resized, dx, CV_32F, 1, 0);
    cv::Sobel(resized, dy, CV_32F, 0, 1);
    cv::cartToPolar(dx, dy, magnitude, angle);
    cv::Mat histogram = cv::Mat::zeros(1, GridCells * GridCells * Orientations, CV_32F);
    for (int y = 0; y < resized.rows; ++y) {
        for (int x = 0; x < resized.cols; ++x) {
            const float unsignedAngle = std::fmod(angle.at<float>(y, x), static_cast<float>(CV_PI));
            const int bin =
                std::min(Orientations - 1, static_cast<int>(unsignedAngle / CV_PI * Orientations));
            const int cell = (y / cellSide) * GridCells + x / cellSide;
            histogram.at<float>(0, cell * Orientations + bin) += magnitude.at<float>(y, x);
        }
    }
    // The square root tames strong edges before the normalisation (Hellinger kernel).
    cv::sqrt(histogram, histogram);
    cv::normalize(histogram, histogram);
    return histogram;
}

NearestNeighbours::NearestNeighbours(const Classifier& classifier, double density)
    : classifier_(classifier)
    , density_(density)
    , nearest_(cv::ml::KNearest::create()) {
    if (classifier.samples.empty() || classifier.classes.empty())
        throw Failure(StatusComputeFailure, "the tool has no trained classifier");
    nearest_->setDefaultK(std::max(1, std::min(classifier.neighbours, classifier.samples.rows)));
    nearest_->train(TrainingFeatures(classifier, density), cv::ml::ROW_SAMPLE, classifier.labels);
}

std::vector<double> NearestNeighbours::Scores(const cv::Mat& sample) const {
    cv::Mat results, neighbours, distances;
    nearest_->findNearest(GradientHistogram(sample, density_), nearest_->getDefaultK(), results,
                          neighbours, distances);
    std::vector<double> scores(classifier_.classes.size(), 0.0);
    double total = 0;
    for (int index = 0; index < neighbours.cols; ++index) {
        const double weight = 1.0 / (1e-3 + std::sqrt(distances.at<float>(0, index)));
        scores.at(static_cast<std::size_t>(neighbours.at<float>(0, index))) += weight;
        total += weight;
    }
    for (double& score : scores)
        score /= total;
    return scores;
}

AnomalyModel TrainAnomalyModel(const std::vector<cv::Mat>& goodImages, cv::Size size) {
    if (goodImages.empty())
        Refuse("an anomaly model needs good images");
    cv::Mat sum = cv::Mat::zeros(size, CV_64F), squares = cv::Mat::zeros(size, CV_64F);
    for (const cv::Mat& image : goodImages) {
        cv::Mat smooth;
        Smoothed(ToGrey8(image), size).convertTo(smooth, CV_64F);
        sum += smooth;
        squares += smooth.mul(smooth);
    }
    const double count = static_cast<double>(goodImages.size());
    cv::Mat mean = sum / count;
    cv::Mat variance = squares / count - mean.mul(mean);
    cv::Mat spread;
    cv::sqrt(cv::max(variance, 0.0), spread);
    AnomalyModel model;
    mean.convertTo(model.mean, CV_32F);
    spread.convertTo(model.spread, CV_32F);
    model.spread = cv::max(model.spread, SpreadFloor);
    return model;
}

cv::Mat AnomalyScoreMap(const AnomalyModel& model, const cv::Mat& grey, double scale) {
    if (model.mean.empty())
        throw Failure(StatusComputeFailure, "the tool has no trained anomaly model");
    cv::Mat z;
    cv::absdiff(Smoothed(grey, model.mean.size()), model.mean, z);
    cv::divide(z, model.spread, z);
    cv::Mat scores;
    cv::exp(z.mul(z) * (-1.0 / 18), scores);
    scores = 1.0 - scores;
    const cv::Size size(std::max(1, static_cast<int>(std::lround(model.mean.cols * scale))),
                        std::max(1, static_cast<int>(std::lround(model.mean.rows * scale))));
    if (size != scores.size())
        cv::resize(scores, scores, size, 0, 0, cv::INTER_AREA);
    return scores;
}

Ink FindInk(const cv::Mat& grey) {
    Ink ink{grey, {}};
    cv::threshold(grey, ink.mask, 0, 255, cv::THRESH_BINARY | cv::THRESH_OTSU);
    if (static_cast<std::size_t>(cv::countNonZero(ink.mask)) * 2 > ink.mask.total()) {
        cv::bitwise_not(ink.mask, ink.mask);
        cv::bitwise_not(grey, ink.grey);
    }
    return ink;
}

std::vector<cv::Rect> LocateParts(const cv::Mat& inkMask, double precision) {
    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(inkMask.clone(), contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    std::vector<cv::Rect> boxes;
    for (const auto& contour : contours) {
        const cv::Rect box = cv::boundingRect(contour);
        if (box.area() >= MinimumPartPixels)
            boxes.push_back(box);
    }
    const auto sameColumn = [precision](const cv::Rect& a, const cv::Rect& b) {
        const int overlap = std::min(a.br().x, b.br().x) - std::max(a.x, b.x);
        const int verticalGap = std::max(a.y, b.y) - std::min(a.br().y, b.br().y);
        return overlap > (1 - precision) * std::min(a.width, b.width) &&
               verticalGap <= std::max(a.height, b.height) / 2;
    };
    for (bool merged = true; merged;) {
        merged = false;
        for (std::size_t i = 0; i < boxes.size() && !merged; ++i) {
            for (std::size_t j = i + 1; j < boxes.size() && !merged; ++j) {
                if (sameColumn(boxes[i], boxes[j])) {
                    boxes[i] |= boxes[j];
                    boxes.erase(boxes.begin() + static_cast<std::ptrdiff_t>(j));
                    merged = true;
                }
            }
        }
    }
    std::sort(boxes.begin(), boxes.end(),
              [](const cv::Rect& a, const cv::Rect& b) { return a.x < b.x; });
    return boxes;
}

} // namespace KeloReference
