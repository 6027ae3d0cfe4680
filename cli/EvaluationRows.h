#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Analysis.h"
#include "Arguments.h"
#include "Evaluation.h"

namespace TavrinCli {

// One image of an eval: its truth, and the measured tool's answer or the reason there is none.
// An image without a truth is not analysed. The figures of a batch follow from its rows alone,
// so that the rows of its shards, joined, give the figures of the whole batch.
struct EvaluationRow {
    std::string image;
    std::optional<std::string> truth;
    std::optional<std::string> error;
    std::string answer;
    double score = 0;
    // Every tag the tool named on the image, for the check of the truth's classes.
    std::vector<std::string> tags;
};

// One JSON line per row, to a file that appears whole.
void WriteEvaluationRows(const std::filesystem::path& file, const std::vector<EvaluationRow>& rows);

// CommandError when the file cannot be read as rows.
std::vector<EvaluationRow> ReadEvaluationRows(const std::filesystem::path& file);

// The workspace, stream and tool measured, with no image counted yet.
EvaluationSubject SubjectOf(const std::string& workspace, const BatchSetup& setup);

// The figures of the rows' images that have a truth and an answer; the subject's counts of
// images come from the rows. CommandError when none has both.
Evaluation EvaluateRows(const std::vector<EvaluationRow>& rows, EvaluationSubject subject);

// The figures as JSON and the plots, where the options ask for them.
void WriteFigures(const Options& options, const Evaluation& evaluation);

} // namespace TavrinCli
