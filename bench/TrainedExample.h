#pragma once

#include <unistd.h>

#include <filesystem>
#include <string>

#include "ExampleData.h"
#include "Training.h"

namespace Bench {

// The example workspace (digits.yml) trained from OpenCV's handwritten digits into a fresh
// folder of this process, with the images held out of training under unseen/<kind>.
inline std::filesystem::path TrainExample(std::string const& name) {
    std::filesystem::path const folder = std::filesystem::temp_directory_path() /
                                         ("tavrin-" + name + "-" + std::to_string(getpid()));
    KeloReference::WriteDigitsExample(KELO_DIGITS_SHEET, folder.string(),
                                      KeloReference::ExampleCounts{});
    KeloReference::WriteWorkspace(KeloReference::TrainWorkspace((folder / "training").string(), {}),
                                  (folder / "digits.yml").string());
    return folder;
}

} // namespace Bench
