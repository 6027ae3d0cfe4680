#include "Metrics.h"

#include <algorithm>
#include <numeric>

namespace TavrinCli {
namespace {

std::vector<std::string> LabelsOf(const std::vector<Outcome>& outcomes,
                                  const std::vector<std::string>& firstLabels) {
    std::vector<std::string> others;
    for (const Outcome& outcome : outcomes)
        for (const std::string* label : {&outcome.truth, &outcome.answer})
            if (std::find(firstLabels.begin(), firstLabels.end(), *label) == firstLabels.end())
                others.push_back(*label);
    std::sort(others.begin(), others.end());
    others.erase(std::unique(others.begin(), others.end()), others.end());
    std::vector<std::string> labels;
    for (const std::string& label : firstLabels)
        if (std::any_of(outcomes.begin(), outcomes.end(), [&](const Outcome& outcome) {
                return outcome.truth == label || outcome.answer == label;
            }))
            labels.push_back(label);
    labels.insert(labels.end(), others.begin(), others.end());
    return labels;
}

std::size_t IndexOf(const std::vector<std::string>& labels, const std::string& label) {
    return static_cast<std::size_t>(std::find(labels.begin(), labels.end(), label) -
                                    labels.begin());
}

Figure F1(int truePositives, int falsePositives, int falseNegatives) {
    return Ratio(2.0 * truePositives, 2.0 * truePositives + falsePositives + falseNegatives);
}

// Characters of UTF-8 text: a lead byte with the continuation bytes that follow it.
std::vector<std::string> Characters(const std::string& text) {
    std::vector<std::string> characters;
    for (const char byte : text) {
        const bool continuation = (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
        if (continuation && !characters.empty())
            characters.back() += byte;
        else
            characters.emplace_back(1, byte);
    }
    return characters;
}

std::vector<RocPoint> RocCurve(const std::vector<OperatingPoint>& points, int positives,
                               int negatives) {
    std::vector<RocPoint> curve{{0, 0}};
    for (const OperatingPoint& point : points)
        curve.push_back({static_cast<double>(point.falsePositives) / negatives,
                         static_cast<double>(point.truePositives) / positives});
    return curve;
}

double AreaUnder(const std::vector<RocPoint>& curve) {
    double area = 0;
    for (std::size_t i = 1; i < curve.size(); ++i)
        area += (curve[i].falsePositiveRate - curve[i - 1].falsePositiveRate) *
                (curve[i].truePositiveRate + curve[i - 1].truePositiveRate) / 2;
    return area;
}

double AveragePrecision(const std::vector<OperatingPoint>& points, int positives) {
    double sum = 0;
    int recalled = 0;
    for (const OperatingPoint& point : points) {
        const double precision =
            static_cast<double>(point.truePositives) / (point.truePositives + point.falsePositives);
        sum += precision * (point.truePositives - recalled) / positives;
        recalled = point.truePositives;
    }
    return sum;
}

// The threshold is set halfway to the next lower score, so that it keeps the same decisions on
// the images measured and leaves room on either side for new ones.
ThresholdChoice BestF1(const std::vector<OperatingPoint>& points, int positives, int negatives) {
    ThresholdChoice best{points.front().threshold, -1, 0};
    for (std::size_t i = 0; i < points.size(); ++i) {
        const OperatingPoint& point = points[i];
        const double f1 =
            *F1(point.truePositives, point.falsePositives, positives - point.truePositives);
        if (f1 <= best.f1)
            continue;
        const double below = i + 1 < points.size() ? points[i + 1].threshold : point.threshold;
        best = {(point.threshold + below) / 2, f1,
                static_cast<double>(point.truePositives + negatives - point.falsePositives) /
                    (positives + negatives)};
    }
    return best;
}

} // namespace

bool IsAnomalous(const std::string& truth) {
    return truth != GoodLabel;
}

Figure Ratio(double part, double whole) {
    if (whole == 0)
        return std::nullopt;
    return part / whole;
}

Classification Classify(const std::vector<Outcome>& outcomes,
                        const std::vector<std::string>& firstLabels) {
    Classification result;
    result.labels = LabelsOf(outcomes, firstLabels);
    result.confusion.assign(result.labels.size(), std::vector<int>(result.labels.size(), 0));
    for (const Outcome& outcome : outcomes)
        ++result.confusion[IndexOf(result.labels, outcome.truth)]
                          [IndexOf(result.labels, outcome.answer)];
    result.total = static_cast<int>(outcomes.size());
    for (std::size_t i = 0; i < result.labels.size(); ++i)
        result.correct += result.confusion[i][i];
    return result;
}

std::vector<ClassFigures> Classification::PerClass() const {
    std::vector<ClassFigures> figures;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const int truePositives = confusion[i][i];
        int answered = 0;
        int support = 0;
        for (std::size_t j = 0; j < labels.size(); ++j) {
            answered += confusion[j][i];
            support += confusion[i][j];
        }
        figures.push_back({labels[i], Ratio(truePositives, answered), Ratio(truePositives, support),
                           F1(truePositives, answered - truePositives, support - truePositives),
                           support});
    }
    return figures;
}

std::vector<OperatingPoint> OperatingPoints(const std::vector<Outcome>& outcomes) {
    std::vector<const Outcome*> ranked;
    for (const Outcome& outcome : outcomes)
        ranked.push_back(&outcome);
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const Outcome* a, const Outcome* b) { return a->score > b->score; });
    std::vector<OperatingPoint> points;
    int truePositives = 0;
    int falsePositives = 0;
    for (std::size_t i = 0; i < ranked.size(); ++i) {
        (IsAnomalous(ranked[i]->truth) ? truePositives : falsePositives) += 1;
        // Images of equal score are decided together.
        if (i + 1 == ranked.size() || ranked[i + 1]->score != ranked[i]->score)
            points.push_back({ranked[i]->score, truePositives, falsePositives});
    }
    return points;
}

AnomalyDetection DetectAnomalies(const std::vector<Outcome>& outcomes) {
    AnomalyDetection result;
    std::vector<Outcome> answers;
    for (const Outcome& outcome : outcomes) {
        const bool anomalous = IsAnomalous(outcome.truth);
        (anomalous ? result.anomalousScores : result.goodScores).push_back(outcome.score);
        answers.push_back({anomalous ? AnomalyLabel : GoodLabel, outcome.answer, outcome.score});
    }
    result.answers = Classify(answers, {GoodLabel, AnomalyLabel});
    result.good = static_cast<int>(result.goodScores.size());
    result.anomalous = static_cast<int>(result.anomalousScores.size());
    if (result.anomalous == 0)
        return result;
    const std::vector<OperatingPoint> points = OperatingPoints(outcomes);
    result.averagePrecision = AveragePrecision(points, result.anomalous);
    result.bestF1 = BestF1(points, result.anomalous, result.good);
    if (result.good == 0)
        return result;
    result.roc = RocCurve(points, result.anomalous, result.good);
    result.auroc = AreaUnder(result.roc);
    return result;
}

std::size_t EditDistance(const std::string& from, const std::string& to) {
    const std::vector<std::string> a = Characters(from);
    const std::vector<std::string> b = Characters(to);
    // One row of the table at a time: row[j] edits turn the first i of a into the first j of b.
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t substitution = diagonal + (a[i - 1] != b[j - 1]);
            diagonal = row[j];
            row[j] = std::min({substitution, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

Reading Read(const std::vector<Outcome>& outcomes) {
    Reading result;
    for (const Outcome& outcome : outcomes) {
        ++result.rows;
        result.exact += outcome.answer == outcome.truth;
        result.characters += Characters(outcome.truth).size();
        result.edits += EditDistance(outcome.truth, outcome.answer);
    }
    return result;
}

} // namespace TavrinCli
