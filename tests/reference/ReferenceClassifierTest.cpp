// The methods of the green and blue tools below the C interface: setting samples upright and the
// support vector classifier trained on the example's digits.
#include <algorithm>
#include <filesystem>
#include <numeric>

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include "ExampleWorkspace.h"
#include "Features.h"

namespace {

using namespace KeloReference;
using ReferenceTests::TrainedExample;
namespace fs = std::filesystem;

cv::Mat Sheared(const cv::Mat& image, double skew) {
    const cv::Mat shear = (cv::Mat_<double>(2, 3) << 1, skew, -skew * image.rows / 2.0, 0, 1, 0);
    cv::Mat sheared;
    cv::warpAffine(image, sheared, shear, image.size(), cv::WARP_INVERSE_MAP | cv::INTER_LINEAR);
    return sheared;
}

const Classifier& GreenClassifier() {
    static const Classifier classifier =
        ReadWorkspace(TrainedExample().workspace).streams.at(1).tools.at(0).classifier;
    return classifier;
}

std::size_t Best(const std::vector<double>& scores) {
    return static_cast<std::size_t>(std::max_element(scores.begin(), scores.end()) -
                                    scores.begin());
}

TEST(ReferenceDeskewing, ASlantedStrokeStandsUpAboutItsCentre) {
    const struct {
        cv::Point top;
        cv::Point bottom;
    } strokes[] = {{{14, 2}, {6, 17}}, {{5, 3}, {13, 16}}, {{10, 2}, {10, 17}}};
    for (const auto& stroke : strokes) {
        SCOPED_TRACE(stroke.top.x);
        cv::Mat image = cv::Mat::zeros(20, 20, CV_8U);
        cv::line(image, stroke.top, stroke.bottom, 255, 2);
        const cv::Mat upright = Upright(image);
        const cv::Rect ink = cv::boundingRect(upright > 64);
        EXPECT_LE(ink.width, 5);
        const cv::Moments before = cv::moments(image), after = cv::moments(upright);
        EXPECT_NEAR(after.m10 / after.m00, before.m10 / before.m00, 0.5);
    }
}

TEST(ReferenceClassifier, ReadsSlantedDigitsAsTheUprightOnes) {
    const SupportVectorClassifier classifier(GreenClassifier(), 1);
    for (int digit = 0; digit < 10; ++digit) {
        const cv::Mat image = TrainedExample().Grey("green", std::to_string(digit) + "_0001.png");
        const std::size_t upright = Best(classifier.Scores(image));
        for (double skew : {-0.4, 0.4})
            EXPECT_EQ(Best(classifier.Scores(Sheared(image, skew))), upright)
                << digit << " sheared by " << skew;
    }
}

// The scores come from the machine's decision functions, computed anew: their best class is the
// one the machine votes for, and it is the truth for nearly every held-out digit.
TEST(ReferenceClassifier, ScoresAgreeWithTheMachinesVoteAndReadHeldOutDigits) {
    const Classifier& trained = GreenClassifier();
    const SupportVectorClassifier classifier(trained, 1);
    std::size_t images = 0, agreeing = 0, right = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(TrainedExample().folder / "unseen" / "green")) {
        const cv::Mat image = cv::imread(entry.path().string(), cv::IMREAD_GRAYSCALE);
        const std::vector<double> scores = classifier.Scores(image);
        EXPECT_NEAR(std::accumulate(scores.begin(), scores.end(), 0.0), 1, 1e-9);
        const std::size_t best = Best(scores);
        const float vote = trained.machine->predict(SampleFeature(image, 1));
        agreeing += static_cast<int>(best) == static_cast<int>(vote);
        right += trained.classes[best] == entry.path().filename().string().substr(0, 1);
        ++images;
    }
    ASSERT_GE(images, 500u);
    EXPECT_GE(agreeing, images * 99 / 100);
    EXPECT_GE(right, images * 98 / 100);
}

// A file whose machine was trained on features of another form (an older engine's) still
// classifies: a machine with the same settings is trained anew from the samples the file keeps,
// and it scores as the one trained on these features does.
TEST(ReferenceClassifier, AMachineForOtherFeaturesIsTrainedAnewFromTheSamples) {
    const Classifier& trained = GreenClassifier();
    Classifier stale = trained;
    stale.machine = cv::ml::SVM::create();
    stale.machine->setC(trained.machine->getC());
    stale.machine->setGamma(trained.machine->getGamma());
    const cv::Mat features = (cv::Mat_<float>(2, 3) << 0, 0, 0, 1, 1, 1);
    const cv::Mat labels = (cv::Mat_<int>(2, 1) << 0, 1);
    stale.machine->train(features, cv::ml::ROW_SAMPLE, labels);
    const SupportVectorClassifier retrained(stale, 1), current(trained, 1);
    for (int digit = 0; digit < 10; ++digit) {
        const cv::Mat image = TrainedExample().Grey("green", std::to_string(digit) + "_0001.png");
        const std::vector<double> expected = current.Scores(image);
        const std::vector<double> scores = retrained.Scores(image);
        for (std::size_t index = 0; index < scores.size(); ++index)
            EXPECT_NEAR(scores[index], expected[index], 1e-6) << digit << " class " << index;
    }
}

} // namespace
