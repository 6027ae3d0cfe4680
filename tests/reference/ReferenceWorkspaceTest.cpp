// Workspace files, parameter texts and training of the reference engine, below its C interface.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "ExampleWorkspace.h"
#include "Failure.h"
#include "Features.h"
#include "Parameters.h"
#include "Workspace.h"

namespace {

using namespace KeloReference;
using ReferenceTests::TrainedExample;
namespace fs = std::filesystem;

std::string Refusal(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "accepted";
}

fs::path WorkFile(const std::string& name) {
    return TrainedExample().scratch / name;
}

TEST(WorkspaceFile, KeepsEverythingThroughAWriteAndARead) {
    const Workspace example = ReadWorkspace(TrainedExample().workspace);
    const Classifier& trained = example.streams.at(1).tools.at(0).classifier;
    const AnomalyModel& anomaly = example.streams.at(0).tools.at(0).anomaly;
    Tool child{"child", "child-uuid", "green_quick", {}, {}, trained, {}, {}};
    child.parameters["runtime_parameters/heat_map_on"] = "true";
    Tool blue{"reader", "reader-uuid", "blue", {}, {}, {}, {}, {child}};
    blue.parameters["sampling/feature_size"] = "[not checked here]";
    blue.models.push_back({"zeros", "node", {{"occurrences", "2"}}, "0", {}});
    blue.models.push_back({"slots", "layout", {}, "", {{"slot1", cv::Rect2d(1.5, 2, 10, 12.25)}}});
    const Tool red{"defects", "red-uuid", "red", {}, anomaly, {}, {}, {}};
    const Workspace written{
        "file-uuid", "2024-06-01T12:00:00Z", {{"read", "read-uuid", "0,0,100,20", {blue, red}}}};
    WriteWorkspace(written, WorkFile("roundtrip.yml").string());
    const Workspace read = ReadWorkspace(WorkFile("roundtrip.yml").string());

    EXPECT_EQ(read.uuid, "file-uuid");
    EXPECT_EQ(read.lastModified, "2024-06-01T12:00:00Z");
    ASSERT_EQ(read.streams.size(), 1u);
    EXPECT_EQ(read.streams[0].frameWindow, "0,0,100,20");
    const Tool& tool = read.streams[0].tools.at(0);
    EXPECT_EQ(tool.parameters, blue.parameters);
    ASSERT_EQ(tool.models.size(), 2u);
    EXPECT_EQ(tool.models[0].nodeClass, "0");
    EXPECT_EQ(tool.models[0].parameters.at("occurrences"), "2");
    EXPECT_EQ(tool.models[1].regions.at(0).box, cv::Rect2d(1.5, 2, 10, 12.25));
    const Tool& readChild = tool.children.at(0);
    EXPECT_EQ(readChild.type, "green_quick");
    EXPECT_EQ(readChild.classifier.classes, child.classifier.classes);
    EXPECT_EQ(cv::norm(readChild.classifier.samples, child.classifier.samples, cv::NORM_INF), 0);
    const AnomalyModel& readAnomaly = read.streams[0].tools.at(1).anomaly;
    ASSERT_EQ(readAnomaly.modes.size(), cv::Size(20 * 20, 2));
    EXPECT_EQ(cv::norm(readAnomaly.modes, anomaly.modes, cv::NORM_INF), 0);
    EXPECT_EQ(cv::norm(readAnomaly.spread, anomaly.spread, cv::NORM_INF), 0);
    // The machine comes back exactly: the same scores to the last bit.
    const cv::Mat digit = TrainedExample().Grey("green", "7_0000.png");
    EXPECT_EQ(SupportVectorClassifier(readChild.classifier, 1).Scores(digit),
              SupportVectorClassifier(child.classifier, 1).Scores(digit));
}

TEST(WorkspaceFile, RefusesFilesItCannotUse) {
    const struct {
        const char* content;
        const char* because;
    } cases[] = {
        {"%YAML:1.0\n---\nformat: other\nversion: 1\n", "is no workspace file of version 1"},
        {"%YAML:1.0\n---\nformat: kelo-reference-workspace\nversion: 1\nstreams:\n"
         "  - { id: s }\n",
         "'uuid' is missing"},
        {"%YAML:1.0\n---\nformat: kelo-reference-workspace\nversion: 1\nuuid: u\nstreams:\n"
         "  - { id: s, uuid: v, tools: [ { id: t, uuid: w, type: blue, models: [ { id: m, "
         "type: layout, regions: [ { name: r, box: [ 1, 2 ] } ] } ] } ] }\n",
         "layout region box of model 'm' needs four numbers"},
        {"%YAML:1.0\n---\nformat: kelo-reference-workspace\nversion: 1\nuuid: u\nstreams:\n"
         "  - { id: s, uuid: v, tools: [ { id: t, uuid: w, type: green, classifier: { classes: "
         "[ a, b ] } } ] }\n",
         "the classifier has no trained machine"},
        {nullptr, "cannot read workspace file"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.because);
        const fs::path file = WorkFile(c.content ? "bad.yml" : "absent.yml");
        if (c.content)
            std::ofstream(file) << c.content;
        const std::string refusal = Refusal([&] { ReadWorkspace(file.string()); });
        EXPECT_NE(refusal.find(c.because), std::string::npos) << refusal;
    }
}

TEST(ParameterText, ToolsGetTheirTypesDefaultsAndRefuseForeignPaths) {
    Tool tool{"t", "u", "red_sua", {}, {}, {}, {{"m", "string", {}, "", {}}}, {}};
    tool.parameters["post_process_parameters/red/threshold"] = "[0.1,0.2]";
    const Parameters complete = CompleteParameters(tool);
    EXPECT_EQ(complete.at("post_process_parameters/red/threshold"), "[0.1,0.2]");
    EXPECT_EQ(complete.at("runtime_parameters/max_downsampling_size"), "0");
    EXPECT_EQ(complete.at("models/m/string/min_string_length"), "1");
    EXPECT_EQ(complete.count("processing/sampling_density"), 0u);

    tool.parameters["processing/sampling_density"] = "1";
    EXPECT_EQ(Refusal([&] { CompleteParameters(tool); }),
              "tool 't' has no parameter 'processing/sampling_density'");
    tool.type = "red_fast";
    EXPECT_EQ(Refusal([&] { CompleteParameters(tool); }), "'red_fast' is no tool type");
}

TEST(ParameterText, ParsesTheFormsThatItWrites) {
    EXPECT_EQ(ParsePair(" [0.250000, 0.75] "), std::make_pair(0.25, 0.75));
    EXPECT_EQ(ParseSize("16.000000x24.000000"), cv::Size2d(16, 24));
    EXPECT_EQ(ParseSize("8"), cv::Size2d(8, 8));
    EXPECT_EQ(ParseNames(" 4, ,3 "), (std::vector<std::string>{"4", "3"}));
    const std::vector<RegionCondition> filter = ParseRegionFilter("area >= 4;score<0.9;");
    ASSERT_EQ(filter.size(), 2u);
    EXPECT_TRUE(filter[0].Holds(4));
    EXPECT_FALSE(filter[1].Holds(0.9));
    for (const char* bad : {"1,5", "[1]", "[1,x]", "1e999"})
        EXPECT_NE(Refusal([&] { ParsePair(bad); }), "accepted") << bad;
    EXPECT_EQ(Refusal([] { ParseInteger("3000000000"); }), "'3000000000' is out of range");
    EXPECT_EQ(Refusal([] { ParseSize("-1x2"); }), "'-1x2' is a negative size");
}

TEST(Training, LearnsEachDigitOnceAndThePatternOfTheRows) {
    const Workspace trained = ReadWorkspace(TrainedExample().workspace);
    const Tool& blue = trained.streams.at(2).tools.at(0);
    EXPECT_EQ(blue.classifier.classes.size(), 10u);
    EXPECT_EQ(blue.models.at(1).parameters.at("regex/regex"), "[0123456789]{5,5}");
}

TEST(Training, RefusesFoldersWithoutUsableImages) {
    const fs::path seven = TrainedExample().Analyse("green", "7_0000.png");
    const struct {
        const char* folder;
        const char* image; // a copy of the seven, or none
        std::string because;
    } cases[] = {
        {"nothing", nullptr, "' holds none of the folders red, green and blue"},
        {"unmatched", "blue/12_0.png", "/blue' holds no image whose parts match its text"},
        {"one-class", "green/7/a.png", "a classifier needs samples of two classes at least"},
    };
    for (const auto& c : cases) {
        const fs::path folder = WorkFile(c.folder);
        if (c.image) {
            fs::create_directories((folder / c.image).parent_path());
            fs::copy_file(seven, folder / c.image, fs::copy_options::overwrite_existing);
        }
        const std::string refusal = Refusal([&] { TrainWorkspace(folder.string(), {}); });
        EXPECT_NE(refusal.find(c.because), std::string::npos) << refusal;
    }
}

} // namespace
