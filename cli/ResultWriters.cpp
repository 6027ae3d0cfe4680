#include "ResultWriters.h"

#include <algorithm>

#include "Metrics.h"

namespace TavrinCli {
namespace {

using nlohmann::json;

std::shared_ptr<DLResultMatchString> ReadString(const DLResultBlue& blue) {
    for (const auto& match : *blue.Matches())
        if (auto read = std::dynamic_pointer_cast<DLResultMatchString>(match))
            return read;
    return nullptr;
}

// The text of a match of any kind; a layout match has none.
std::string MatchText(const DLResultMatch& match) {
    if (auto read = dynamic_cast<const DLResultMatchString*>(&match))
        return read->MatchString();
    if (auto regex = dynamic_cast<const DLResultMatchRegex*>(&match))
        return regex->String();
    if (auto node = dynamic_cast<const DLResultMatchNode*>(&match))
        return node->String();
    return "";
}

Answer AnswerOf(const DLToolRuntimeParams& tool, const DLResultView& view) {
    Answer answer{tool.Name(), tool.Type(), "", 0};
    if (const auto red = view.ResultRed()) {
        answer.answer = red->ResultRegions()->Count() > 0 ? AnomalyLabel : GoodLabel;
        answer.score = red->Score();
    } else if (const auto green = view.ResultGreen()) {
        if (const auto best = green->BestTag()) {
            answer.answer = best->Name();
            answer.score = best->Score();
        }
    } else if (const auto blue = view.ResultBlue()) {
        if (const auto read = ReadString(*blue)) {
            answer.answer = read->MatchString();
            answer.score = read->Score();
        }
    }
    return answer;
}

json BoxJson(const Tavrin::Vision::RectangleAffine& box) {
    return {{"center", {box.CenterX(), box.CenterY()}},
            {"size", {box.SideXLength(), box.SideYLength()}},
            {"rotation", box.Rotation()}};
}

json RedJson(const DLResultRed& red) {
    json regions = json::array();
    for (const auto& region : *red.ResultRegions())
        regions.push_back({{"score", region->Score()},
                           {"area", region->Area()},
                           {"perimeter", region->Perimeter()}});
    return {{"score", red.Score()}, {"filtered_score", red.FilteredScore()}, {"regions", regions}};
}

json GreenJson(const DLResultGreen& green) {
    json tags = json::array();
    for (const auto& tag : *green.Tags())
        tags.push_back({{"name", tag->Name()}, {"score", tag->Score()}});
    return {{"tags", tags}, {"uncertainty", green.Uncertainty()}};
}

json BlueJson(const DLResultBlue& blue) {
    json features = json::array();
    for (const auto& feature : *blue.Features())
        features.push_back({{"name", feature->Id()},
                            {"score", feature->Score()},
                            {"box", BoxJson(*feature->Rectangle())}});
    json matches = json::array();
    for (const auto& match : *blue.Matches())
        matches.push_back({{"model", match->ModelID()},
                           {"type", match->ModelType()},
                           {"score", match->Score()},
                           {"text", MatchText(*match)}});
    return {{"features", features}, {"matches", matches}};
}

json ViewJson(const DLResultView& view) {
    json found = {{"region", BoxJson(*view.Region())}};
    if (const auto red = view.ResultRed())
        found["red"] = RedJson(*red);
    if (const auto green = view.ResultGreen())
        found["green"] = GreenJson(*green);
    if (const auto blue = view.ResultBlue())
        found["blue"] = BlueJson(*blue);
    return found;
}

// Every marking with its tool; markings whose tool has gone are passed over.
template <class Visit> void ForEachMarking(const DLResult& result, Visit&& visit) {
    if (!result.ResultImage() || !result.ResultImage()->ResultMarking())
        return;
    for (const auto& marking : *result.ResultImage()->ResultMarking())
        if (const auto tool = marking->Tool())
            visit(*tool, *marking);
}

Answer MarkingAnswer(const DLToolRuntimeParams& tool, const DLResultMarking& marking) {
    Answer answer{tool.Name(), tool.Type(), "", 0};
    for (const auto& view : *marking.ResultViews())
        answer = AnswerOf(tool, *view);
    return answer;
}

} // namespace

std::vector<Answer> AnswersOf(const DLResult& result) {
    std::vector<Answer> answers;
    ForEachMarking(result, [&](const DLToolRuntimeParams& tool, const DLResultMarking& marking) {
        for (const auto& view : *marking.ResultViews())
            answers.push_back(AnswerOf(tool, *view));
    });
    return answers;
}

json ResultJson(const std::string& image, const std::string& stream, const DLResult& result) {
    json tools = json::array();
    ForEachMarking(result, [&](const DLToolRuntimeParams& tool, const DLResultMarking& marking) {
        json views = json::array();
        for (const auto& view : *marking.ResultViews())
            views.push_back(ViewJson(*view));
        const Answer answer = MarkingAnswer(tool, marking);
        tools.push_back({{"tool", tool.Name()},
                         {"type", tool.Type()},
                         {"answer", answer.answer},
                         {"score", answer.score},
                         {"duration_ms", marking.Duration()},
                         {"views", views}});
    });
    return {{"image", image}, {"stream", stream}, {"tools", tools}};
}

Answer ToolAnswerOf(const DLResult& result, const std::string& tool) {
    Answer answer{tool, "", "", 0};
    ForEachMarking(result, [&](const DLToolRuntimeParams& marked, const DLResultMarking& marking) {
        if (marked.Name() == tool)
            answer = MarkingAnswer(marked, marking);
    });
    return answer;
}

std::vector<std::string> TagNamesOf(const DLResult& result, const std::string& tool) {
    std::vector<std::string> names;
    ForEachMarking(result, [&](const DLToolRuntimeParams& marked, const DLResultMarking& marking) {
        if (marked.Name() != tool)
            return;
        for (const auto& view : *marking.ResultViews())
            if (const auto green = view->ResultGreen())
                for (const auto& tag : *green->Tags())
                    names.push_back(tag->Name());
    });
    return names;
}

std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\n\r") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

ResultWriters::ResultWriters(const std::optional<std::filesystem::path>& jsonFile,
                             const std::optional<std::filesystem::path>& csvFile,
                             std::ostream* jsonStream)
    : json_(jsonStream) {
    if (jsonFile) {
        jsonFile_.emplace(*jsonFile);
        json_ = &jsonFile_->Stream();
    }
    if (csvFile) {
        csvFile_.emplace(*csvFile);
        csvFile_->Stream() << "image,stream,tool,type,answer,score,error\n";
    }
}

void ResultWriters::Write(const std::string& jsonLine, const std::string& image,
                          const std::string& stream, const std::vector<Answer>& answers) {
    if (json_)
        *json_ << jsonLine << '\n';
    if (!csvFile_)
        return;
    for (const Answer& answer : answers)
        csvFile_->Stream() << CsvField(image) << ',' << CsvField(stream) << ','
                           << CsvField(answer.tool) << ',' << CsvField(answer.type) << ','
                           << CsvField(answer.answer) << ',' << answer.score << ",\n";
}

void ResultWriters::WriteFailure(const std::string& image, const std::string& stream,
                                 const std::string& reason) {
    if (json_)
        *json_ << json{{"image", image},
                       {"stream", stream},
                       {"tools", json::array()},
                       {"error", reason}}
                      .dump()
               << '\n';
    if (csvFile_)
        csvFile_->Stream() << CsvField(image) << ',' << CsvField(stream) << ",,,,,"
                           << CsvField(reason) << '\n';
}

void ResultWriters::Commit() {
    if (jsonFile_)
        jsonFile_->Commit();
    if (csvFile_)
        csvFile_->Commit();
}

void AnswerCounts::Add(const std::vector<Answer>& answers) {
    for (const Answer& answer : answers) {
        if (!counts_.count(answer.tool))
            tools_.push_back(answer.tool);
        ++counts_[answer.tool][answer.answer.empty() ? NoAnswer : answer.answer];
    }
}

// The most frequent answers first. A tool that reads texts gives nearly one answer per image,
// so beyond a dozen only their number is told, and how many images got none.
void AnswerCounts::Print(std::ostream& out) const {
    constexpr std::size_t Listed = 12;
    for (const std::string& tool : tools_) {
        const auto& counts = counts_.at(tool);
        out << "  " << tool << ":";
        if (counts.size() > Listed) {
            const auto none = counts.find(NoAnswer);
            const bool someNone = none != counts.end();
            out << ' ' << counts.size() - someNone << " different answers, " << NoAnswer << ' '
                << (someNone ? none->second : 0) << '\n';
            continue;
        }
        std::vector<std::pair<std::string, int>> answers(counts.begin(), counts.end());
        std::stable_sort(answers.begin(), answers.end(),
                         [](const auto& a, const auto& b) { return a.second > b.second; });
        for (std::size_t i = 0; i < answers.size(); ++i)
            out << (i ? ", " : " ") << answers[i].first << ' ' << answers[i].second;
        out << '\n';
    }
}

} // namespace TavrinCli
