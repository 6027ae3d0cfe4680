#pragma once

#include <filesystem>
#include <string>

#include <unistd.h>

#include <opencv2/imgcodecs.hpp>

#include "ExampleData.h"
#include "Training.h"

namespace ReferenceTests {

// A folder of this process's own, since CTest runs the tests of one binary in parallel
// processes; it goes when the process ends.
struct ScratchFolder {
    std::filesystem::path path =
        std::filesystem::path(KELO_TEST_WORK_DIR) / std::to_string(getpid());
    ScratchFolder() { std::filesystem::create_directories(path); }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

// The example workspace, trained once per process from the digits sheet: training images and
// images held out for analysis under folder, the workspace file beside them. allTypes holds its
// streams and, trained from the same images, "anomaly2" (red_sua), "classify2" (green_sua) and
// "read2" (blue).
struct Example {
    std::filesystem::path folder;
    std::string workspace;
    std::string allTypes;

    std::filesystem::path Analyse(const std::string& kind, const std::string& file) const {
        return folder / "unseen" / kind / file;
    }
    cv::Mat Grey(const std::string& kind, const std::string& file) const {
        return cv::imread(Analyse(kind, file).string(), cv::IMREAD_GRAYSCALE);
    }
};

inline const Example& TrainedExample() {
    static const Example example = [] {
        using namespace KeloReference;
        static const ScratchFolder scratch;
        Example made{scratch.path, (scratch.path / "digits.yml").string(),
                     (scratch.path / "all-types.yml").string()};
        WriteDigitsExample(KELO_DIGITS_SHEET, made.folder.string(), ExampleCounts{});
        const std::string training = (made.folder / "training").string();
        Workspace workspace = TrainWorkspace(training, {});
        WriteWorkspace(workspace, made.workspace);
        for (Stream& stream : TrainWorkspace(training, {"red_sua", "green_sua", "blue"}).streams) {
            stream.id += "2";
            workspace.streams.push_back(std::move(stream));
        }
        WriteWorkspace(workspace, made.allTypes);
        return made;
    }();
    return example;
}

} // namespace ReferenceTests
