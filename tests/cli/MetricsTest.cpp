// The figures of eval on small cases worked out by hand.
#include <gtest/gtest.h>

#include "Metrics.h"

namespace MetricsTesting {

using namespace TavrinCli;

constexpr double Close = 1e-12;

void ExpectFigure(const Figure& figure, const Figure& expected, const std::string& what) {
    ASSERT_EQ(figure.has_value(), expected.has_value()) << what;
    if (expected) {
        EXPECT_NEAR(*figure, *expected, Close) << what;
    }
}

std::vector<Outcome> Scored(const std::vector<double>& good, const std::vector<double>& anomalous) {
    std::vector<Outcome> outcomes;
    for (const double score : good)
        outcomes.push_back({GoodLabel, GoodLabel, score});
    for (const double score : anomalous)
        outcomes.push_back({"bad", AnomalyLabel, score});
    return outcomes;
}

TEST(Metrics, ConfusionAndPerClassFiguresCountEveryTruthAndAnswer) {
    // An empty answer (no class at all) is a label of its own.
    const Classification result =
        Classify({{"a", "a"}, {"a", "b"}, {"b", "b"}, {"b", "b"}, {"c", "a"}, {"a", ""}});
    EXPECT_EQ(result.labels, (std::vector<std::string>{"", "a", "b", "c"}));
    EXPECT_EQ(result.confusion, (std::vector<std::vector<int>>{
                                    {0, 0, 0, 0}, {1, 1, 1, 0}, {0, 0, 2, 0}, {0, 1, 0, 0}}));
    EXPECT_EQ(result.correct, 3);
    ExpectFigure(result.Accuracy(), 0.5, "accuracy");

    const struct {
        Figure precision, recall, f1;
        int support;
    } expected[] = {{0.0, std::nullopt, 0.0, 0},
                    {0.5, 1.0 / 3, 0.4, 3},
                    {2.0 / 3, 1.0, 0.8, 2},
                    {std::nullopt, 0.0, 0.0, 1}};
    const auto figures = result.PerClass();
    ASSERT_EQ(figures.size(), 4u);
    for (std::size_t i = 0; i < figures.size(); ++i) {
        const std::string what = "class '" + figures[i].label + "'";
        ExpectFigure(figures[i].precision, expected[i].precision, what + " precision");
        ExpectFigure(figures[i].recall, expected[i].recall, what + " recall");
        ExpectFigure(figures[i].f1, expected[i].f1, what + " F1");
        EXPECT_EQ(figures[i].support, expected[i].support) << what;
    }
}

TEST(Metrics, LabelsNamedFirstKeepTheirOrderAndAbsentOnesAreLeftOut) {
    const auto result = Classify({{"b", "a"}, {"c", "b"}}, {"z", "b"});
    EXPECT_EQ(result.labels, (std::vector<std::string>{"b", "a", "c"}));
    EXPECT_EQ(result.confusion, (std::vector<std::vector<int>>{{0, 1, 0}, {0, 0, 0}, {1, 0, 0}}));
    ExpectFigure(Classify({}).Accuracy(), std::nullopt, "accuracy of nothing");
}

TEST(Metrics, AnomalyAnswersCountAsGoodOrAnomalyWhateverTheKindOfDefect) {
    const AnomalyDetection result = DetectAnomalies({{"good", "good", 0.1},
                                                     {"bad", "anomaly", 0.9},
                                                     {"scratch", "good", 0.4},
                                                     {"good", "anomaly", 0.6}});
    EXPECT_EQ(result.answers.labels, (std::vector<std::string>{"good", "anomaly"}));
    EXPECT_EQ(result.answers.confusion, (std::vector<std::vector<int>>{{1, 1}, {1, 1}}));
    EXPECT_EQ(result.good, 2);
    EXPECT_EQ(result.anomalous, 2);
    EXPECT_EQ(result.anomalousScores, (std::vector<double>{0.9, 0.4}));
}

TEST(Metrics, RankingFiguresOfKnownScores) {
    const struct {
        const char* name;
        std::vector<double> good, anomalous;
        Figure auroc, averagePrecision;
    } cases[] = {
        // Of nine pairs, 0.5 against 0.5 counts half: 7.5 ranked right. Precision at each new
        // anomaly found: 1, 2/3 (the tie enters together), 3/4.
        {"ties", {0.5, 0.2, 0.1}, {0.9, 0.5, 0.3}, 7.5 / 9, (1 + 2.0 / 3 + 3.0 / 4) / 3},
        {"apart", {0.1, 0.2}, {0.3, 0.8}, 1.0, 1.0},
        {"reversed", {0.8, 0.9}, {0.1, 0.2}, 0.0, (1.0 / 3 + 2.0 / 4) / 2},
        {"all tied", {0.4, 0.4}, {0.4, 0.4}, 0.5, 0.5},
        {"no anomaly", {0.1, 0.2}, {}, std::nullopt, std::nullopt},
        {"no good image", {}, {0.3, 0.3}, std::nullopt, 1.0},
    };
    for (const auto& c : cases) {
        const AnomalyDetection result = DetectAnomalies(Scored(c.good, c.anomalous));
        ExpectFigure(result.auroc, c.auroc, std::string(c.name) + " AUROC");
        ExpectFigure(result.averagePrecision, c.averagePrecision,
                     std::string(c.name) + " average precision");
    }
}

TEST(Metrics, RocStepsDiagonallyOverTiesAndEndsInTheCorner) {
    const auto roc = DetectAnomalies(Scored({0.5, 0.2, 0.1}, {0.9, 0.5, 0.3})).roc;
    const std::vector<std::pair<double, double>> expected = {
        {0, 0}, {0, 1.0 / 3}, {1.0 / 3, 2.0 / 3}, {1.0 / 3, 1}, {2.0 / 3, 1}, {1, 1}};
    ASSERT_EQ(roc.size(), expected.size());
    for (std::size_t i = 0; i < roc.size(); ++i) {
        EXPECT_NEAR(roc[i].falsePositiveRate, expected[i].first, Close) << i;
        EXPECT_NEAR(roc[i].truePositiveRate, expected[i].second, Close) << i;
    }
}

TEST(Metrics, BestF1ThresholdLiesHalfwayToTheNextLowerScore) {
    const struct {
        const char* name;
        std::vector<double> good, anomalous;
        double threshold, f1, accuracy;
    } cases[] = {
        // Anomalous from 0.3 on: 3 found, 1 good taken, F1 6/7, 5 of 6 right.
        {"ties", {0.5, 0.2, 0.1}, {0.9, 0.5, 0.3}, 0.25, 6.0 / 7, 5.0 / 6},
        // Anomalous from 0.9 on and from 0.1 on both give F1 2/3: the higher is told.
        {"tied F1", {0.5, 0.4}, {0.9, 0.1}, 0.7, 2.0 / 3, 0.75},
        {"lowest score", {}, {0.3, 0.7}, 0.3, 1, 1},
    };
    for (const auto& c : cases) {
        const auto best = DetectAnomalies(Scored(c.good, c.anomalous)).bestF1;
        ASSERT_TRUE(best) << c.name;
        EXPECT_NEAR(best->threshold, c.threshold, Close) << c.name;
        EXPECT_NEAR(best->f1, c.f1, Close) << c.name;
        EXPECT_NEAR(best->accuracy, c.accuracy, Close) << c.name;
    }
    EXPECT_FALSE(DetectAnomalies(Scored({0.2}, {})).bestF1);
}

TEST(Metrics, EditDistancesCountCharactersNotBytes) {
    const struct {
        const char* from;
        const char* to;
        std::size_t edits;
    } cases[] = {
        {"", "", 0},           {"00433", "", 5},         {"", "00433", 5},
        {"00433", "00433", 0}, {"00433", "00483", 1},    {"12345", "1245", 1},
        {"12", "21", 2},       {"kitten", "sitting", 3}, {"flaw", "lawn", 2},
        {"é", "e", 1},         {"日本語", "日語", 1},    {"ab", "abé", 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(EditDistance(c.from, c.to), c.edits) << c.from << " -> " << c.to;
        EXPECT_EQ(EditDistance(c.to, c.from), c.edits) << c.to << " -> " << c.from;
    }
}

TEST(Metrics, ReadingCountsExactRowsAndEditsOverTheTruthsCharacters) {
    const Reading reading = Read({{"00433", "00433"}, {"12345", "1245"}, {"777", ""}});
    EXPECT_EQ(reading.rows, 3);
    EXPECT_EQ(reading.exact, 1);
    EXPECT_EQ(reading.characters, 13u);
    EXPECT_EQ(reading.edits, 4u);
    ExpectFigure(reading.ExactRate(), 1.0 / 3, "exact rows");
    ExpectFigure(reading.CharacterErrorRate(), 4.0 / 13, "character error rate");
    ExpectFigure(Read({{"", "1"}}).CharacterErrorRate(), std::nullopt, "no characters");
}

} // namespace MetricsTesting
