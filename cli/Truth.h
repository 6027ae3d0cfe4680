#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TavrinCli {

// What each image truly shows, for eval. From a truth file when one is given, and only from it:
// a CSV file with the header image,truth and a row per image, its path relative to the file's
// folder; an image it does not name, or names with an empty truth, has none. Without a file, the
// image's file name before its first '_' (5_0001.png is a 5), else the name of the folder it
// was given in (cats/0001.png is a cat).
class Truths {
public:
    Truths() = default;
    // CommandError when the file is missing, is no image,truth table, or names an image twice.
    explicit Truths(const std::filesystem::path& file);

    std::optional<std::string> Of(const std::filesystem::path& image) const;

private:
    std::optional<std::map<std::filesystem::path, std::string>> table_;
};

std::optional<std::string> TruthFromName(const std::filesystem::path& image);

// The fields of a CSV line, quoted or not; nothing when a quote is left open.
std::optional<std::vector<std::string>> CsvFields(const std::string& line);

} // namespace TavrinCli
