#include "Evaluation.h"

#include <algorithm>
#include <cstdio>
#include <iomanip>

#include "Failure.h"
#include "ResultWriters.h"

namespace TavrinCli {
namespace {

using nlohmann::json;

const char* TaskName(Task task) {
    switch (task) {
    case Task::Classification:
        return "classification";
    case Task::AnomalyDetection:
        return "anomaly detection";
    case Task::Reading:
        return "reading";
    }
    return "";
}

std::string Shown(const std::string& label) {
    return label.empty() ? NoAnswer : label;
}

std::string Formatted(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Percent(const Figure& figure) {
    return figure ? Formatted("%.1f %%", 100 * *figure) : "n/a";
}

std::string Decimal(const Figure& figure) {
    return figure ? Formatted("%.4f", *figure) : "n/a";
}

std::string OutOf(int part, int whole) {
    return "(" + std::to_string(part) + " of " + std::to_string(whole) + ")";
}

void CheckClassesKnown(const std::vector<Outcome>& outcomes, const std::set<std::string>& named,
                       const std::string& tool) {
    std::set<std::string> unknown;
    for (const Outcome& outcome : outcomes)
        if (!named.count(outcome.truth))
            unknown.insert(outcome.truth);
    if (unknown.empty())
        return;
    std::string message =
        "the truth names classes that tool " + tool + " never named on these images:";
    for (const std::string& label : unknown)
        message += " '" + label + "'";
    message += " (it named";
    for (const std::string& label : named)
        message += " '" + label + "'";
    message += named.empty() ? " none)" : ")";
    throw CommandError(message);
}

std::size_t LabelWidth(const Classification& classification, std::size_t least) {
    std::size_t width = least;
    for (const std::string& label : classification.labels)
        width = std::max(width, Shown(label).size());
    return width + 2;
}

void PrintClasses(const Classification& classification, std::ostream& out) {
    const auto width = static_cast<int>(LabelWidth(classification, 5));
    out << "\n  " << std::left << std::setw(width) << "class" << std::right << std::setw(10)
        << "precision" << std::setw(8) << "recall" << std::setw(8) << "F1" << std::setw(8)
        << "images" << '\n';
    for (const ClassFigures& figures : classification.PerClass())
        out << "  " << std::left << std::setw(width) << Shown(figures.label) << std::right
            << std::setw(10) << Decimal(figures.precision) << std::setw(8)
            << Decimal(figures.recall) << std::setw(8) << Decimal(figures.f1) << std::setw(8)
            << figures.support << '\n';
}

void PrintConfusion(const Classification& classification, std::ostream& out) {
    const auto width = static_cast<int>(LabelWidth(classification, 5));
    const auto column = static_cast<int>(LabelWidth(classification, 4));
    out << "\n  confusion: a row per truth, a column per answer\n  " << std::setw(width) << "";
    for (const std::string& label : classification.labels)
        out << std::setw(column) << Shown(label);
    out << '\n';
    for (std::size_t truth = 0; truth < classification.labels.size(); ++truth) {
        out << "  " << std::left << std::setw(width) << Shown(classification.labels[truth])
            << std::right;
        for (const int count : classification.confusion[truth])
            out << std::setw(column) << count;
        out << '\n';
    }
}

void PrintAnomaly(const Evaluation& evaluation, std::ostream& out) {
    const AnomalyDetection& anomaly = *evaluation.anomaly;
    const auto& threshold = evaluation.subject.threshold;
    out << "  " << anomaly.good << " good, " << anomaly.anomalous << " anomalous\n"
        << "  accuracy at the workspace's threshold"
        << (threshold ? " " + Formatted("%.4g", *threshold) : "") << ": "
        << Percent(anomaly.answers.Accuracy()) << "  "
        << OutOf(anomaly.answers.correct, anomaly.answers.total) << '\n'
        << "  AUROC " << Decimal(anomaly.auroc) << ", average precision "
        << Decimal(anomaly.averagePrecision) << '\n';
    if (const auto& best = anomaly.bestF1)
        out << "  best F1 " << Decimal(best->f1) << " at threshold "
            << Formatted("%.4g", best->threshold) << ", accuracy " << Percent(best->accuracy)
            << '\n';
}

void PrintReading(const Reading& reading, std::ostream& out) {
    out << "  rows read exactly: " << Percent(reading.ExactRate()) << "  "
        << OutOf(reading.exact, reading.rows) << '\n'
        << "  character error rate: " << Percent(reading.CharacterErrorRate()) << "  ("
        << reading.edits << " edits for " << reading.characters << " characters)\n";
}

json FigureJson(const Figure& figure) {
    return figure ? json(*figure) : json(nullptr);
}

json ClassificationJson(const Classification& classification) {
    json classes = json::array();
    for (const ClassFigures& figures : classification.PerClass())
        classes.push_back({{"label", figures.label},
                           {"precision", FigureJson(figures.precision)},
                           {"recall", FigureJson(figures.recall)},
                           {"f1", FigureJson(figures.f1)},
                           {"images", figures.support}});
    return {{"accuracy", FigureJson(classification.Accuracy())},
            {"correct", classification.correct},
            {"classes", classes},
            {"labels", classification.labels},
            {"confusion", classification.confusion}};
}

json AnomalyJson(const AnomalyDetection& anomaly, const std::optional<double>& threshold) {
    json figures = ClassificationJson(anomaly.answers);
    figures.update({{"good", anomaly.good},
                    {"anomalous", anomaly.anomalous},
                    {"threshold", FigureJson(threshold)},
                    {"auroc", FigureJson(anomaly.auroc)},
                    {"average_precision", FigureJson(anomaly.averagePrecision)},
                    {"best_f1", nullptr}});
    if (const auto& best = anomaly.bestF1)
        figures["best_f1"] = {
            {"threshold", best->threshold}, {"f1", best->f1}, {"accuracy", best->accuracy}};
    return figures;
}

json ReadingJson(const Reading& reading) {
    return {{"rows", reading.rows},
            {"exact", reading.exact},
            {"exact_rate", FigureJson(reading.ExactRate())},
            {"characters", reading.characters},
            {"edits", reading.edits},
            {"character_error_rate", FigureJson(reading.CharacterErrorRate())}};
}

} // namespace

Task TaskOf(const std::string& toolType) {
    for (const auto& [prefix, task] : {std::pair{"red", Task::AnomalyDetection},
                                       {"green", Task::Classification},
                                       {"blue", Task::Reading}})
        if (toolType.rfind(prefix, 0) == 0)
            return task;
    throw UsageError("eval measures red, green and blue tools, not " + toolType);
}

const Classification* Evaluation::Confusion() const {
    if (classification)
        return &*classification;
    if (anomaly)
        return &anomaly->answers;
    return nullptr;
}

std::string ExpectedAnswer(Task task, const std::string& truth) {
    if (task != Task::AnomalyDetection)
        return truth;
    return IsAnomalous(truth) ? AnomalyLabel : GoodLabel;
}

Evaluation Evaluate(Task task, const EvaluationSubject& subject,
                    const std::vector<Outcome>& outcomes,
                    const std::set<std::string>& namedClasses) {
    Evaluation evaluation{subject, task, {}, {}, {}};
    switch (evaluation.task) {
    case Task::Classification:
        CheckClassesKnown(outcomes, namedClasses, subject.tool);
        evaluation.classification = Classify(outcomes);
        break;
    case Task::AnomalyDetection:
        evaluation.anomaly = DetectAnomalies(outcomes);
        break;
    case Task::Reading:
        evaluation.reading = Read(outcomes);
        break;
    }
    return evaluation;
}

void PrintEvaluation(const Evaluation& evaluation, std::ostream& out) {
    const EvaluationSubject& subject = evaluation.subject;
    out << "stream " << subject.stream << ", tool " << subject.tool << " (" << subject.type
        << "): " << TaskName(evaluation.task) << " of " << subject.images << " images\n";
    if (subject.withoutTruth > 0)
        out << "  images without truth, not measured: " << subject.withoutTruth << '\n';
    if (subject.withoutAnswer > 0)
        out << "  images without an answer, not measured: " << subject.withoutAnswer << '\n';
    if (evaluation.classification)
        out << "  accuracy: " << Percent(evaluation.classification->Accuracy()) << "  "
            << OutOf(evaluation.classification->correct, evaluation.classification->total) << '\n';
    if (evaluation.anomaly)
        PrintAnomaly(evaluation, out);
    if (evaluation.reading)
        PrintReading(*evaluation.reading, out);
    if (const Classification* confusion = evaluation.Confusion()) {
        PrintClasses(*confusion, out);
        PrintConfusion(*confusion, out);
    }
}

json EvaluationJson(const Evaluation& evaluation) {
    const EvaluationSubject& subject = evaluation.subject;
    json figures = {{"workspace", subject.workspace},
                    {"stream", subject.stream},
                    {"tool", subject.tool},
                    {"type", subject.type},
                    {"task", TaskName(evaluation.task)},
                    {"images", subject.images},
                    {"without_truth", subject.withoutTruth},
                    {"without_answer", subject.withoutAnswer}};
    if (evaluation.classification)
        figures.update(ClassificationJson(*evaluation.classification));
    if (evaluation.anomaly)
        figures.update(AnomalyJson(*evaluation.anomaly, subject.threshold));
    if (evaluation.reading)
        figures.update(ReadingJson(*evaluation.reading));
    return figures;
}

} // namespace TavrinCli
