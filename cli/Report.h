#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "Analysis.h"
#include "Evaluation.h"

namespace TavrinCli {

// What a report covers: the command that made it, on which workspace and stream, by how many
// jobs.
struct ReportSubject {
    std::string command;
    std::string workspace;
    std::string stream;
    std::size_t jobs = 1;
};

// What an image should have been answered, when its truth is known.
struct Expectation {
    std::string truth;
    std::string expected;
};

// A folder a person opens in a browser to review a batch: index.html, self-contained, with one
// card per image, and beside it the overlays at full size and their thumbnails. The page is built
// from the outcomes in input order, so it is the same whatever the number of jobs, but for the
// times measured. Every text from outside goes into the page as data that its script shows as
// text only.
class Report {
public:
    // Makes the folder; the time per image counts from here.
    Report(std::filesystem::path folder, ReportSubject subject);

    // Writes the image's overlay and its thumbnail, and keeps its card for the page.
    void Add(const std::filesystem::path& image, const ImageOutcome& outcome,
             const std::optional<Expectation>& expectation = std::nullopt);

    // The figures of eval, as it prints them, and its plots, written into the report's folder.
    void AddFigures(const Evaluation& evaluation);

    // Writes index.html and gives its path.
    std::filesystem::path Write();

private:
    std::filesystem::path folder_;
    ReportSubject subject_;
    std::chrono::steady_clock::time_point start_;
    nlohmann::json cards_ = nlohmann::json::array();
    nlohmann::json figures_;
};

// The report the options ask for, if any, of the command on the stream by that many jobs.
std::optional<Report> ReportFor(const Options& options, const std::string& command,
                                const std::string& stream, std::size_t jobs);

// Writes the report, if any, and names its page on standard error.
void FinishReport(std::optional<Report>& report);

} // namespace TavrinCli
