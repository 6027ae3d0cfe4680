#include "Truth.h"

#include <fstream>

#include "Failure.h"

namespace TavrinCli {
namespace {

// Paths of one image written differently, as ./a.png and a.png, meet on this key.
std::filesystem::path ImageKey(const std::filesystem::path& image) {
    return std::filesystem::weakly_canonical(image);
}

bool IsFolderName(const std::string& name) {
    return !name.empty() && name != "." && name != "..";
}

// Where a row stands, for messages.
std::string LineOf(const std::filesystem::path& file, int number) {
    return "truth file " + file.string() + " line " + std::to_string(number);
}

std::vector<std::string> RowOf(const std::string& where, const std::string& line) {
    const auto fields = CsvFields(line);
    if (!fields)
        throw CommandError(where + ": a quote is not closed");
    if (fields->size() != 2)
        throw CommandError(where + ": image,truth needs 2 fields, not " +
                           std::to_string(fields->size()));
    if (fields->front().empty())
        throw CommandError(where + ": no image named");
    return *fields;
}

// Spreadsheets may start the file with a byte order mark.
std::string WithoutByteOrderMark(const std::string& line) {
    const std::string mark = "\xEF\xBB\xBF";
    return line.rfind(mark, 0) == 0 ? line.substr(mark.size()) : line;
}

} // namespace

Truths::Truths(const std::filesystem::path& file)
    : table_(std::in_place) {
    std::ifstream in(file);
    if (!std::filesystem::is_regular_file(file) || !in)
        throw CommandError("cannot read truth file " + file.string());
    std::map<std::filesystem::path, int> firstLine;
    bool headed = false;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty()) // editors leave blank lines at the end
            continue;
        if (!headed) {
            if (CsvFields(WithoutByteOrderMark(line)) != std::vector<std::string>{"image", "truth"})
                throw CommandError(LineOf(file, number) +
                                   ": the header image,truth must come first");
            headed = true;
            continue;
        }
        const auto row = RowOf(LineOf(file, number), line);
        const auto key = ImageKey(file.parent_path() / row[0]);
        if (const auto [first, fresh] = firstLine.emplace(key, number); !fresh)
            throw CommandError("truth file " + file.string() + " names " + row[0] +
                               " twice, on lines " + std::to_string(first->second) + " and " +
                               std::to_string(number));
        if (!row[1].empty())
            table_->emplace(key, row[1]);
    }
    if (!headed)
        throw CommandError("truth file " + file.string() + " is empty");
}

std::optional<std::string> Truths::Of(const std::filesystem::path& image) const {
    if (!table_)
        return TruthFromName(image);
    const auto found = table_->find(ImageKey(image));
    if (found == table_->end())
        return std::nullopt;
    return found->second;
}

std::optional<std::string> TruthFromName(const std::filesystem::path& image) {
    const std::string name = image.filename().string();
    if (const auto underscore = name.find('_'); underscore != std::string::npos && underscore > 0)
        return name.substr(0, underscore);
    const std::string folder = image.lexically_normal().parent_path().filename().string();
    if (IsFolderName(folder))
        return folder;
    return std::nullopt;
}

std::optional<std::vector<std::string>> CsvFields(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quoted && c == '"' && i + 1 < line.size() && line[i + 1] == '"')
            fields.back() += line[++i];
        else if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += c;
    }
    if (quoted)
        return std::nullopt;
    return fields;
}

} // namespace TavrinCli
