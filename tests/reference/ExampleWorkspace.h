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

// The example workspace: training images and images held out for analysis under folder, the
// workspace file beside them. allTypes holds its streams and, trained from the same images,
// "anomaly2" (red_sua), "classify2" (green_sua) and "read2" (blue). Tests write only under
// scratch, a folder of their process's own.
struct Example {
    std::filesystem::path folder;
    std::string workspace;
    std::string allTypes;
    std::filesystem::path scratch;

    std::filesystem::path Analyse(const std::string& kind, const std::string& file) const {
        return folder / "unseen" / kind / file;
    }
    cv::Mat Grey(const std::string& kind, const std::string& file) const {
        return cv::imread(Analyse(kind, file).string(), cv::IMREAD_GRAYSCALE);
    }
};

inline Example ExampleIn(const std::filesystem::path& folder,
                         const std::filesystem::path& scratch) {
    return {folder, (folder / "digits.yml").string(), (folder / "all-types.yml").string(), scratch};
}

// Cuts the example images out of the digits sheet and trains both workspace files into folder.
inline void TrainExample(const std::filesystem::path& folder) {
    using namespace KeloReference;
    const Example made = ExampleIn(folder, folder);
    WriteDigitsExample(KELO_DIGITS_SHEET, folder.string(), ExampleCounts{});
    const std::string training = (folder / "training").string();
    Workspace workspace = TrainWorkspace(training, {});
    WriteWorkspace(workspace, made.workspace);
    for (Stream& stream : TrainWorkspace(training, {"red_sua", "green_sua", "blue"}).streams) {
        stream.id += "2";
        workspace.streams.push_back(std::move(stream));
    }
    WriteWorkspace(workspace, made.allTypes);
}

// Under CTest the example is trained once for every test process, into KELO_TEST_EXAMPLE_DIR (the
// ReferenceExample fixture); a test binary run by hand before that trains its own.
inline const Example& TrainedExample() {
    static const ScratchFolder scratch;
    static const Example example = [] {
        const Example shared = ExampleIn(KELO_TEST_EXAMPLE_DIR, scratch.path);
        if (std::filesystem::exists(shared.allTypes))
            return shared;
        TrainExample(scratch.path);
        return ExampleIn(scratch.path, scratch.path);
    }();
    return example;
}

} // namespace ReferenceTests
