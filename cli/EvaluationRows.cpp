#include "EvaluationRows.h"

#include <fstream>
#include <iostream>
#include <set>

#include <nlohmann/json.hpp>

#include "AtomicFile.h"
#include "Failure.h"
#include "Plots.h"

namespace TavrinCli {
namespace {

using nlohmann::json;

json Optional(const std::optional<std::string>& text) {
    return text ? json(*text) : json();
}

std::optional<std::string> OptionalText(const json& line, const char* key) {
    const auto found = line.find(key);
    if (found == line.end() || found->is_null())
        return std::nullopt;
    return found->get<std::string>();
}

json RowJson(const EvaluationRow& row) {
    json line = {{"image", row.image}, {"truth", Optional(row.truth)}};
    if (row.error)
        line["error"] = *row.error;
    else if (row.truth)
        line.update({{"answer", row.answer}, {"score", row.score}, {"tags", row.tags}});
    return line;
}

EvaluationRow RowFromJson(const json& line) {
    EvaluationRow row;
    row.image = line.at("image");
    row.truth = OptionalText(line, "truth");
    row.error = OptionalText(line, "error");
    row.answer = line.value("answer", "");
    row.score = line.value("score", 0.0);
    row.tags = line.value("tags", std::vector<std::string>());
    return row;
}

} // namespace

void WriteEvaluationRows(const std::filesystem::path& file,
                         const std::vector<EvaluationRow>& rows) {
    AtomicFile out(file);
    for (const EvaluationRow& row : rows)
        out.Stream() << RowJson(row).dump() << '\n';
    out.Commit();
}

std::vector<EvaluationRow> ReadEvaluationRows(const std::filesystem::path& file) {
    std::ifstream in(file);
    if (!in)
        throw CommandError("cannot read " + file.string());
    std::vector<EvaluationRow> rows;
    std::size_t number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        try {
            rows.push_back(RowFromJson(json::parse(line)));
        } catch (const json::exception& error) {
            throw CommandError(file.string() + ":" + std::to_string(number) +
                               ": not a row of eval: " + error.what());
        }
    }
    return rows;
}

EvaluationSubject SubjectOf(const std::string& workspace, const BatchSetup& setup) {
    return {workspace, setup.stream, setup.tool, setup.toolType, 0, 0, 0, setup.threshold};
}

Evaluation EvaluateRows(const std::vector<EvaluationRow>& rows, EvaluationSubject subject) {
    std::vector<Outcome> outcomes;
    std::set<std::string> namedClasses;
    subject.withoutTruth = subject.withoutAnswer = 0;
    for (const EvaluationRow& row : rows) {
        if (!row.truth) {
            ++subject.withoutTruth;
        } else if (row.error) {
            ++subject.withoutAnswer;
        } else {
            outcomes.push_back({*row.truth, row.answer, row.score});
            namedClasses.insert(row.tags.begin(), row.tags.end());
        }
    }
    if (outcomes.empty())
        throw CommandError("none of the " + std::to_string(subject.withoutAnswer) +
                           " images with a truth gave an answer");
    subject.images = outcomes.size();
    return Evaluate(TaskOf(subject.type), subject, outcomes, namedClasses);
}

void WriteFigures(const Options& options, const Evaluation& evaluation) {
    if (options.json) {
        AtomicFile file(*options.json);
        file.Stream() << EvaluationJson(evaluation).dump(2) << '\n';
        file.Commit();
        std::cerr << "figures: " << options.json->string() << '\n';
    }
    if (options.plots)
        for (const auto& plot : WritePlots(evaluation, *options.plots))
            std::cerr << "plot: " << plot.string() << '\n';
}

} // namespace TavrinCli
