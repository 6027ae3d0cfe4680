#include "Features.h"

#include "Failure.h"

#include <algorithm>
#include <cmath>
#include <set>

#include <opencv2/imgproc.hpp>

namespace KeloReference {
namespace {

const int GridCells = 5;
const int Orientations = 9;
const float SpreadFloor = 8.0f;      // grey levels
const double AnomalyBlurSigma = 1.5; // pixels of the model's size
// The principal modes of the good images' variation that the anomaly model allows for, chosen by
// cross-validation on the example's training digits.
const int AnomalyModes = 2;
const int MinimumPartPixels = 4;
// The grey values that join the gradient histograms in a sample's feature: their size, and the
// length that they are scaled to (the histograms' is 1), chosen by cross-validation.
const cv::Size GreySize(20, 20);
const double GreyWeight = 0.5;
// The slope of a pair's probability against the machine's decision value: 1 / (1 + exp(-8 d)).
// Chosen by the least cross-validated log loss on the example's training digits.
const double PairSlope = 8;

cv::Mat Smoothed(const cv::Mat& grey, cv::Size size) {
    cv::Mat resized;
    cv::resize(grey, resized, size, 0, 0, cv::INTER_AREA);
    cv::Mat smooth;
    resized.convertTo(smooth, CV_32F);
    cv::GaussianBlur(smooth, smooth, cv::Size(), AnomalyBlurSigma);
    return smooth;
}

// Two neighbouring bins and the share of a value that each takes.
struct Shares {
    int index[2];
    float share[2];
};

// A gradient is shared between the two orientations whose centres lie nearest, so that one near
// a boundary does not jump from one to the other.
Shares OrientationShares(float angle) {
    const float position =
        std::fmod(angle, static_cast<float>(CV_PI)) / static_cast<float>(CV_PI) * Orientations -
        0.5f;
    const float lower = std::floor(position);
    const int bin = (static_cast<int>(lower) + Orientations) % Orientations;
    return {{bin, (bin + 1) % Orientations}, {1 - (position - lower), position - lower}};
}

// A pixel is shared between the two cells whose centres lie nearest along one axis, so that a
// stroke a pixel off does not move from one cell to the next (past the outer centres, one of the
// two lies outside the grid).
Shares CellShares(int pixel, int cellSide) {
    const float position = (static_cast<float>(pixel) + 0.5f) / static_cast<float>(cellSide) - 0.5f;
    const float lower = std::floor(position);
    const int cell = static_cast<int>(lower);
    return {{cell, cell + 1}, {1 - (position - lower), position - lower}};
}

void AddToCell(cv::Mat& cells, int row, int column, const Shares& orientations, float weight) {
    if (row < 0 || column < 0 || row >= GridCells || column >= GridCells)
        return;
    float* cell = cells.ptr<float>(row * GridCells + column);
    for (int bin = 0; bin < 2; ++bin)
        cell[orientations.index[bin]] += weight * orientations.share[bin];
}

cv::Mat TrainingFeatures(const Classifier& classifier, double density) {
    cv::Mat features;
    for (int row = 0; row < classifier.samples.rows; ++row)
        features.push_back(SampleFeature(
            classifier.samples.row(row).reshape(1, classifier.sampleSize.height), density));
    return features;
}

// The labels that the samples carry, in increasing order: the classes of a machine trained on them.
std::vector<std::size_t> LabelsPresent(const Classifier& classifier) {
    const std::set<int> labels(classifier.labels.begin<int>(), classifier.labels.end<int>());
    return {labels.begin(), labels.end()};
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

cv::Mat UprightShear(const cv::Mat& image) {
    const cv::Moments moments = cv::moments(image);
    cv::Mat shear = (cv::Mat_<double>(2, 3) << 1, 0, 0, 0, 1, 0);
    if (moments.mu02 < 1e-2)
        return shear;
    const double skew = std::clamp(moments.mu11 / moments.mu02, -1.0, 1.0);
    shear.at<double>(0, 1) = skew;
    shear.at<double>(0, 2) = -skew * moments.m01 / moments.m00;
    return shear;
}

cv::Mat Upright(const cv::Mat& image) {
    cv::Mat upright;
    cv::warpAffine(image, upright, UprightShear(image), image.size(),
                   cv::WARP_INVERSE_MAP | cv::INTER_LINEAR);
    return upright;
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
    cv::Mat cells = cv::Mat::zeros(GridCells * GridCells, Orientations, CV_32F);
    for (int y = 0; y < resized.rows; ++y) {
        const Shares rows = CellShares(y, cellSide);
        for (int x = 0; x < resized.cols; ++x) {
            const Shares columns = CellShares(x, cellSide);
            const Shares orientations = OrientationShares(angle.at<float>(y, x));
            for (int row = 0; row < 2; ++row)
                for (int column = 0; column < 2; ++column)
                    AddToCell(cells, rows.index[row], columns.index[column], orientations,
                              magnitude.at<float>(y, x) * rows.share[row] * columns.share[column]);
        }
    }
    // Blocks normalised apart weigh strokes of faint and strong ink alike; the square root tames
    // strong edges first (Hellinger kernel).
    cv::sqrt(cells, cells);
    cv::Mat feature;
    const int blocksPerSide = GridCells - 1;
    for (int row = 0; row < blocksPerSide; ++row) {
        for (int column = 0; column < blocksPerSide; ++column) {
            cv::Mat block;
            for (int cell : {0, 1, GridCells, GridCells + 1})
                block.push_back(cells.row(row * GridCells + column + cell));
            block = block.reshape(1, 1);
            const double length = cv::norm(block);
            feature.push_back(length > 0 ? cv::Mat(block / length) : block);
        }
    }
    return feature.reshape(1, 1) / blocksPerSide;
}

cv::Mat SampleFeature(const cv::Mat& sample, double density) {
    const cv::Mat upright = Upright(sample);
    cv::Mat grey;
    cv::resize(upright, grey, GreySize, 0, 0, cv::INTER_AREA);
    grey.convertTo(grey, CV_32F);
    grey = grey.reshape(1, 1);
    const double length = cv::norm(grey);
    cv::Mat feature;
    cv::hconcat(GradientHistogram(upright, density), grey * (length > 0 ? GreyWeight / length : 0),
                feature);
    return feature;
}

cv::Ptr<cv::ml::SVM> TrainMachine(const Classifier& classifier, double density,
                                  const MachineSettings& settings) {
    if (LabelsPresent(classifier).size() < 2)
        Refuse("a classifier needs samples of two classes at least");
    cv::Ptr<cv::ml::SVM> machine = cv::ml::SVM::create();
    machine->setType(cv::ml::SVM::C_SVC);
    machine->setKernel(cv::ml::SVM::RBF);
    machine->setC(settings.c);
    machine->setGamma(settings.gamma);
    machine->train(TrainingFeatures(classifier, density), cv::ml::ROW_SAMPLE, classifier.labels);
    return machine;
}

SupportVectorClassifier::SupportVectorClassifier(const Classifier& classifier, double density)
    : density_(density)
    , classCount_(classifier.classes.size()) {
    if (classifier.samples.empty() || !classifier.machine)
        throw Failure(StatusComputeFailure, "the tool has no trained classifier");
    // A file's machine takes the features of density 1 as they were when it was trained; one
    // that cannot take these features is trained anew from the samples, with its settings.
    const int featureLength = SampleFeature(cv::Mat::zeros(8, 8, CV_8U), density).cols;
    const cv::Ptr<cv::ml::SVM> machine =
        density == 1 && classifier.machine->getVarCount() == featureLength
            ? classifier.machine
            : TrainMachine(classifier, density,
                           {classifier.machine->getC(), classifier.machine->getGamma()});
    machineClasses_ = LabelsPresent(classifier);
    supportVectors_ = machine->getSupportVectors();
    cv::reduce(supportVectors_.mul(supportVectors_), supportNorms_, 1, cv::REDUCE_SUM);
    gamma_ = machine->getGamma();
    int index = 0;
    for (std::size_t first = 0; first < machineClasses_.size(); ++first) {
        for (std::size_t second = first + 1; second < machineClasses_.size(); ++second) {
            Decision decision{first, second, {}, {}, 0};
            decision.offset =
                machine->getDecisionFunction(index++, decision.weights, decision.vectors);
            decisions_.push_back(std::move(decision));
        }
    }
}

std::vector<double> SupportVectorClassifier::Scores(const cv::Mat& sample) const {
    const cv::Mat feature = SampleFeature(sample, density_);
    // exp(-gamma * |v - f|^2) for every support vector v, with |v - f|^2 = |v|^2 + |f|^2 - 2 v.f.
    cv::Mat kernel = supportNorms_ + feature.dot(feature) - 2 * supportVectors_ * feature.t();
    cv::exp(kernel * -gamma_, kernel);
    const std::size_t count = machineClasses_.size();
    // inverses[i][j]: 1 / the probability of class i against class j.
    std::vector<std::vector<double>> inverses(count, std::vector<double>(count, 0.0));
    for (const Decision& decision : decisions_) {
        double value = -decision.offset;
        for (std::size_t index = 0; index < decision.vectors.total(); ++index)
            value += decision.weights.at<double>(static_cast<int>(index)) *
                     kernel.at<float>(decision.vectors.at<int>(static_cast<int>(index)));
        const double first = std::clamp(1 / (1 + std::exp(-PairSlope * value)), 1e-9, 1 - 1e-9);
        inverses[decision.first][decision.second] = 1 / first;
        inverses[decision.second][decision.first] = 1 / (1 - first);
    }
    // Pairwise coupling: were the pairwise probabilities those of one distribution p, each
    // p_i would be 1 / (sum over j of 1 / r_ij - (count - 2)).
    std::vector<double> scores(classCount_, 0.0);
    double total = 0;
    for (std::size_t i = 0; i < count; ++i) {
        double sum = 0;
        for (double inverse : inverses[i])
            sum += inverse;
        const double coupled = 1 / (sum - (static_cast<double>(count) - 2));
        scores.at(machineClasses_[i]) = coupled;
        total += coupled;
    }
    for (double& score : scores)
        score /= total;
    return scores;
}

AnomalyModel TrainAnomalyModel(const std::vector<cv::Mat>& goodImages, cv::Size size) {
    if (goodImages.empty())
        Refuse("an anomaly model needs good images");
    cv::Mat data;
    for (const cv::Mat& image : goodImages)
        data.push_back(Upright(Smoothed(ToGrey8(image), size)).reshape(1, 1));
    const int modes = std::min(static_cast<int>(goodImages.size()) - 1, AnomalyModes);
    AnomalyModel model;
    cv::reduce(data, model.mean, 0, cv::REDUCE_AVG);
    cv::Mat centred = data - cv::repeat(model.mean, data.rows, 1);
    if (modes > 0) {
        const cv::PCA pca(data, model.mean, cv::PCA::DATA_AS_ROW, modes);
        model.modes = pca.eigenvectors.clone();
        centred -= centred * model.modes.t() * model.modes;
    }
    cv::Mat squares;
    cv::reduce(centred.mul(centred), squares, 0, cv::REDUCE_AVG);
    cv::sqrt(squares, model.spread);
    model.spread = cv::Mat(cv::max(model.spread, SpreadFloor)).reshape(1, size.height);
    model.mean = model.mean.reshape(1, size.height);
    return model;
}

cv::Mat AnomalyScoreMap(const AnomalyModel& model, const cv::Mat& grey, double scale) {
    if (model.mean.empty())
        throw Failure(StatusComputeFailure, "the tool has no trained anomaly model");
    const cv::Mat smooth = Smoothed(grey, model.mean.size());
    const cv::Mat shear = UprightShear(smooth);
    cv::Mat upright;
    cv::warpAffine(smooth, upright, shear, smooth.size(), cv::WARP_INVERSE_MAP | cv::INTER_LINEAR);
    // Variation along the modes is what good images do; only what they leave is scored.
    cv::Mat residual = cv::Mat(upright - model.mean).reshape(1, 1);
    if (!model.modes.empty())
        residual -= residual * model.modes.t() * model.modes;
    cv::Mat z;
    cv::divide(cv::Mat(cv::abs(residual)).reshape(1, model.mean.rows), model.spread, z);
    cv::Mat uprightScores;
    cv::exp(z.mul(z) * (-1.0 / 18), uprightScores);
    uprightScores = 1.0 - uprightScores;
    // Scores belong to the pixels of the image, not to those of its upright form.
    cv::Mat scores;
    cv::warpAffine(uprightScores, scores, shear, uprightScores.size(), cv::INTER_LINEAR);
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
