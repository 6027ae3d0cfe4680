#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Metrics.h"

namespace TavrinCli {

// Red tools find anomalies, green tools classify, blue tools read.
enum class Task { Classification, AnomalyDetection, Reading };

// UsageError for any other tool.
Task TaskOf(const std::string& toolType);

// Which tool of which workspace was measured, on how many images.
struct EvaluationSubject {
    std::string workspace;
    std::string stream;
    std::string tool;
    std::string type;
    std::size_t images = 0;
    std::size_t withoutTruth = 0;
    // Images that could not be read or that the engine failed on.
    std::size_t withoutAnswer = 0;
    // The anomaly tool's, as the workspace and the parameters given set it.
    std::optional<double> threshold;
};

// The figures of one tool's answers against the truth, for its task.
struct Evaluation {
    EvaluationSubject subject;
    Task task = Task::Classification;
    std::optional<Classification> classification;
    std::optional<AnomalyDetection> anomaly;
    std::optional<Reading> reading;

    // The confusion of classes, or of good and anomaly; nothing for reading.
    const Classification* Confusion() const;
};

// The answer that is right for an image of that truth.
std::string ExpectedAnswer(Task task, const std::string& truth);

// CommandError when a classification's truth names a class that the tool never named among all
// the tags it gave (namedClasses), since the library does not list a classifier's classes: a
// truth meant for another tool, or a misspelt one.
Evaluation Evaluate(Task task, const EvaluationSubject& subject,
                    const std::vector<Outcome>& outcomes,
                    const std::set<std::string>& namedClasses);

void PrintEvaluation(const Evaluation& evaluation, std::ostream& out);

nlohmann::json EvaluationJson(const Evaluation& evaluation);

} // namespace TavrinCli
