#include "Report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <sstream>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "AtomicFile.h"
#include "Failure.h"
#include "Plots.h"
#include "ReportPage.h"

namespace TavrinCli {
namespace {

using nlohmann::json;

// Thumbnails fit in a square of this side, small enough for a page of thousands of them.
constexpr int ThumbnailSide = 160;

// The pictures of a card are named by its number, so that no name from outside ends up in a
// link of the page or in a file name of the report.
std::string Numbered(std::size_t index) {
    char name[32];
    std::snprintf(name, sizeof name, "%06zu.png", index + 1);
    return name;
}

std::vector<unsigned char> Thumbnail(const std::vector<unsigned char>& overlayPng) {
    const cv::Mat overlay = cv::imdecode(overlayPng, cv::IMREAD_COLOR);
    const double scale =
        std::min(1.0, double(ThumbnailSide) / std::max(overlay.cols, overlay.rows));
    const cv::Size size(std::max(1, static_cast<int>(std::lround(overlay.cols * scale))),
                        std::max(1, static_cast<int>(std::lround(overlay.rows * scale))));
    cv::Mat small;
    cv::resize(overlay, small, size, 0, 0, cv::INTER_AREA);
    std::vector<unsigned char> png;
    if (!cv::imencode(".png", small, png))
        throw CommandError("cannot encode a thumbnail");
    return png;
}

json AnswerJson(const Answer& answer) {
    return {{"tool", answer.tool}, {"answer", answer.answer}, {"score", answer.score}};
}

// The answer a card shows: the measured tool's for eval, else the first tool's.
std::optional<Answer> ShownAnswer(const ImageOutcome& outcome) {
    if (!outcome.toolAnswer.tool.empty())
        return outcome.toolAnswer;
    if (outcome.answers.empty())
        return std::nullopt;
    return outcome.answers.front();
}

} // namespace

Report::Report(std::filesystem::path folder, ReportSubject subject)
    : folder_(std::move(folder))
    , subject_(std::move(subject))
    , start_(std::chrono::steady_clock::now()) {
    std::filesystem::create_directories(folder_ / "overlays");
    std::filesystem::create_directories(folder_ / "thumbnails");
}

void Report::Add(const std::filesystem::path& image, const ImageOutcome& outcome,
                 const std::optional<Expectation>& expectation) {
    json card = {{"name", image.filename().string()}, {"path", image.string()}};
    const std::optional<Answer> shown = outcome.error ? std::nullopt : ShownAnswer(outcome);
    if (outcome.error) {
        card["error"] = *outcome.error;
    } else {
        const std::string picture = Numbered(cards_.size());
        WriteFileAtomically(folder_ / "overlays" / picture, outcome.overlay);
        WriteFileAtomically(folder_ / "thumbnails" / picture, Thumbnail(outcome.overlay));
        card["overlay"] = "overlays/" + picture;
        card["thumbnail"] = "thumbnails/" + picture;
        card["answers"] = json::array();
        for (const Answer& answer : outcome.answers)
            card["answers"].push_back(AnswerJson(answer));
        card["result"] = json::parse(outcome.jsonLine);
    }
    if (shown) {
        card["answer"] = shown->answer;
        card["score"] = shown->score;
    }
    if (expectation) {
        card["truth"] = expectation->truth;
        card["expected"] = expectation->expected;
        card["right"] = shown && shown->answer == expectation->expected;
    }
    cards_.push_back(std::move(card));
}

void Report::AddFigures(const Evaluation& evaluation) {
    std::ostringstream text;
    PrintEvaluation(evaluation, text);
    json plots = json::array();
    for (const auto& plot : WritePlots(evaluation, folder_ / "plots"))
        plots.push_back("plots/" + plot.filename().string());
    figures_ = {{"text", text.str()}, {"plots", plots}};
}

std::filesystem::path Report::Write() {
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    json data = {{"command", subject_.command}, {"workspace", subject_.workspace},
                 {"stream", subject_.stream},   {"jobs", subject_.jobs},
                 {"seconds", seconds},          {"cards", cards_}};
    if (!figures_.is_null())
        data["figures"] = figures_;
    const std::filesystem::path page = folder_ / "index.html";
    AtomicFile file(page);
    file.Stream() << ReportPage(data);
    file.Commit();
    return page;
}

std::optional<Report> ReportFor(const Options& options, const std::string& command,
                                const std::string& stream, std::size_t jobs) {
    if (!options.report)
        return std::nullopt;
    return Report(*options.report, {command, options.workspace, stream, jobs});
}

void FinishReport(std::optional<Report>& report) {
    if (report)
        std::cerr << "report: " << report->Write().string() << '\n';
}

} // namespace TavrinCli
