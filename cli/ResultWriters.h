#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include <Vision/DeepLearning/DeepLearning.h>

#include "AtomicFile.h"

namespace TavrinCli {

using namespace Tavrin::Vision::DeepLearning;

// What one tool said about one image, in a word: red "good" or "anomaly", green the best tag,
// blue the text read (empty when nothing was read); with the score behind it.
struct Answer {
    std::string tool;
    std::string type;
    std::string answer;
    double score;
};

// How an empty answer shows in summaries.
inline const std::string NoAnswer = "(none)";

std::vector<Answer> AnswersOf(const DLResult& result);

// The answer of the tool of that name for the whole image, as its JSON line gives it: that of
// its last view. Empty when the tool gave none.
Answer ToolAnswerOf(const DLResult& result, const std::string& tool);

// The names of all the tags of the green tool of that name, whatever their score.
std::vector<std::string> TagNamesOf(const DLResult& result, const std::string& tool);

// One image's line: the image, the stream and, per tool, the answer with everything found.
nlohmann::json ResultJson(const std::string& image, const std::string& stream,
                          const DLResult& result);

// A CSV field, quoted when it must be.
std::string CsvField(const std::string& text);

// The JSON lines and CSV rows of a run, each to a file that appears whole when the run ends, or
// to a stream given (stdout). An image without answers gets a failed row: a JSON line with its
// "error" and no tools, a CSV row with only the image, the stream and the error; the error field
// of the others stays empty.
class ResultWriters {
public:
    ResultWriters(const std::optional<std::filesystem::path>& jsonFile,
                  const std::optional<std::filesystem::path>& csvFile, std::ostream* jsonStream);

    void Write(const std::string& jsonLine, const std::string& image, const std::string& stream,
               const std::vector<Answer>& answers);
    void WriteFailure(const std::string& image, const std::string& stream,
                      const std::string& reason);
    void Commit();

private:
    std::optional<AtomicFile> jsonFile_;
    std::optional<AtomicFile> csvFile_;
    std::ostream* json_ = nullptr;
};

// How often each tool gave each answer, for the summary of a run.
class AnswerCounts {
public:
    void Add(const std::vector<Answer>& answers);
    void Print(std::ostream& out) const;

private:
    std::map<std::string, std::map<std::string, int>> counts_;
    std::vector<std::string> tools_;
};

} // namespace TavrinCli
