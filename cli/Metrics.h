#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TavrinCli {

// The answers of an anomaly tool. Of the truths, only GoodLabel means a good image: any other
// label (bad, or a kind of defect such as scratch) means an anomalous one.
inline const std::string GoodLabel = "good";
inline const std::string AnomalyLabel = "anomaly";

bool IsAnomalous(const std::string& truth);

// One image with a truth: what it is, what the tool answered, and the score behind the answer.
struct Outcome {
    std::string truth;
    std::string answer;
    double score = 0;
};

// A figure that may have nothing to stand on, such as the precision of a class never answered.
using Figure = std::optional<double>;

Figure Ratio(double part, double whole);

struct ClassFigures {
    std::string label;
    Figure precision;
    Figure recall;
    Figure f1;
    int support = 0;
};

// How often each answer was given for each truth. Labels are every truth and every answer.
struct Classification {
    std::vector<std::string> labels;
    // confusion[truth][answer], both as indices into labels.
    std::vector<std::vector<int>> confusion;
    int correct = 0;
    int total = 0;

    Figure Accuracy() const { return Ratio(correct, total); }
    std::vector<ClassFigures> PerClass() const;
};

// Labels come in the order of firstLabels where they appear there, the others after them sorted.
Classification Classify(const std::vector<Outcome>& outcomes,
                        const std::vector<std::string>& firstLabels = {});

// The decision "anomalous when the score is at least threshold", and what it gets right.
struct OperatingPoint {
    double threshold;
    int truePositives;
    int falsePositives;
};

// One operating point per distinct score, the highest first.
std::vector<OperatingPoint> OperatingPoints(const std::vector<Outcome>& outcomes);

struct RocPoint {
    double falsePositiveRate;
    double truePositiveRate;
};

struct ThresholdChoice {
    double threshold;
    double f1;
    double accuracy;
};

// An anomaly tool's figures: its own answers taken as good or anomaly, and its scores ranked.
struct AnomalyDetection {
    Classification answers;
    int good = 0;
    int anomalous = 0;
    std::vector<double> goodScores;
    std::vector<double> anomalousScores;
    // From (0, 0) to (1, 1); tied scores make one diagonal step.
    std::vector<RocPoint> roc;
    // The area under roc, so that a tie counts as half a correct ranking.
    Figure auroc;
    // The precision at each operating point weighted by the recall it adds.
    Figure averagePrecision;
    std::optional<ThresholdChoice> bestF1;
};

AnomalyDetection DetectAnomalies(const std::vector<Outcome>& outcomes);

// Edits (insertions, deletions, substitutions) that turn one text into the other, counted in
// characters of UTF-8 text.
std::size_t EditDistance(const std::string& from, const std::string& to);

struct Reading {
    int rows = 0;
    int exact = 0;
    std::size_t characters = 0;
    std::size_t edits = 0;

    Figure ExactRate() const { return Ratio(exact, rows); }
    // The edits over the characters of the truths.
    Figure CharacterErrorRate() const {
        return Ratio(static_cast<double>(edits), static_cast<double>(characters));
    }
};

Reading Read(const std::vector<Outcome>& outcomes);

} // namespace TavrinCli
