// The command-line tool end to end: a process of its own on the trained example, finding the
// reference engine by the loader's search as a user's shell would.
#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

#include <sys/wait.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "ExampleWorkspace.h"

namespace {

namespace fs = std::filesystem;
using ReferenceTests::TrainedExample;

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

std::string Contents(const fs::path& file) {
    std::ifstream in(file);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

fs::path Scratch(const std::string& name) {
    const fs::path folder = TrainedExample().scratch / "cli" / name;
    fs::remove_all(folder);
    fs::create_directories(folder);
    return folder;
}

// Runs the tool with arguments in which WS stands for the example workspace and UNSEEN for the
// folder of images held out of training.
Outcome Cli(std::string arguments) {
    for (auto [mark, path] :
         {std::pair{std::string("WS"), TrainedExample().workspace},
          {std::string("UNSEEN"), (TrainedExample().folder / "unseen").string()}})
        for (auto at = arguments.find(mark); at != std::string::npos; at = arguments.find(mark))
            arguments.replace(at, mark.size(), path);
    const fs::path folder = Scratch("streams");
    const int status = std::system((std::string("'") + TAVRIN_CLI + "' " + arguments + " >" +
                                    (folder / "out").string() + " 2>" + (folder / "err").string())
                                       .c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Contents(folder / "out"),
            Contents(folder / "err")};
}

TEST(CommandLine, InfoShowsEveryToolModelAndParameterAsSet) {
    const Outcome info =
        Cli("info WS --param classes.Threshold=0.45 -p reader.text.MinimumLength=4");
    ASSERT_EQ(info.status, 0) << info.err;
    for (const char* expected :
         {"stream anomaly\n  tool defects (red, DLFocusedModeRedToolRuntimeParams)\n",
          "    Iterations = 0\n", "    MinimumSamplingDensity = 0.2 (read-only)\n",
          "stream classify\n  tool classes (green, ", "    Threshold = 0.45\n",
          "stream read\n  tool reader (blue_read, ", "    FeatureFilter = \n",
          "    model text (DLBlueStringModel)\n      Enable = true\n", "      MinimumLength = 4\n",
          "    model slots (DLBlueLayoutModel)\n"})
        EXPECT_NE(info.out.find(expected), std::string::npos) << expected;

    const Outcome set = Cli("set WS reader.FeatureSize=12x14.5 classes.ShowGraphics=false");
    ASSERT_EQ(set.status, 0) << set.err;
    EXPECT_NE(set.out.find("-> 12x14.5\nclasses.ShowGraphics: true -> false\n"), std::string::npos)
        << set.out;
}

TEST(CommandLine, RefusalsAndMissingThingsEndWithAStatusAndTheReason) {
    const struct {
        const char* arguments;
        int status;
        const char* message;
    } cases[] = {
        {"set WS reader.Precision=1.5", 2,
         "tavrin-dl: Precision must be between 0.000000 and 1.000000\n"},
        {"run WS -p classes.Threshold=high UNSEEN/green", 2, "'high' is not a number"},
        {"set WS reader.MinimumPrecision=0.1", 2, "parameter MinimumPrecision is read-only"},
        {"info WS -p nobody.Threshold=1", 2, "unknown tool nobody"},
        {"info WS -p reader.nobody.Threshold=1", 2, "tool reader has no model nobody"},
        {"info WS -p classes.Sharpness=1", 2, "unknown parameter Sharpness"},
        {"run WS -s nowhere UNSEEN/red", 2, "unknown stream nowhere"},
        {"run WS", 2, "images is required"},
        {"info WS/missing.yml", 1, "no such workspace file"},
        {"run WS UNSEEN/red/missing.png", 1, "no such file or folder"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = Cli(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.arguments;
        EXPECT_NE(outcome.err.find(c.message), std::string::npos)
            << c.arguments << ": " << outcome.err;
    }
}

TEST(CommandLine, AnUnreadableImageStopsTheRunWithNothingWritten) {
    const fs::path out = Scratch("unreadable");
    const Outcome run = Cli("run WS UNSEEN/red/bad_0000.png WS --json " +
                            (out / "r.jsonl").string() + " --csv " + (out / "r.csv").string());
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("cannot read image " + TrainedExample().workspace), std::string::npos)
        << run.err;
    EXPECT_TRUE(fs::is_empty(out));
}

TEST(CommandLine, RunWritesALineARowAndAnOverlayPerImage) {
    const fs::path out = Scratch("green");
    const Outcome run =
        Cli("run WS -s classify UNSEEN/green --json " + (out / "r.jsonl").string() + " --csv " +
            (out / "r.csv").string() + " --overlay " + (out / "overlays").string());
    ASSERT_EQ(run.status, 0) << run.err;
    const fs::path unseen = TrainedExample().folder / "unseen" / "green";
    const auto images = static_cast<std::size_t>(
        std::distance(fs::directory_iterator(unseen), fs::directory_iterator()));
    ASSERT_GT(images, 0u);

    const auto lines = Lines(Contents(out / "r.jsonl"));
    ASSERT_EQ(lines.size(), images);
    const auto csv = Lines(Contents(out / "r.csv"));
    ASSERT_EQ(csv.size(), images + 1);
    EXPECT_EQ(csv[0], "image,stream,tool,type,answer,score");
    std::size_t right = 0;
    for (std::size_t i = 0; i < images; ++i) {
        const nlohmann::json line = nlohmann::json::parse(lines[i]);
        const fs::path image = line["image"].get<std::string>();
        const auto& tool = line["tools"].at(0);
        EXPECT_EQ(line["stream"], "classify");
        EXPECT_EQ(tool["tool"], "classes");
        const std::string answer = tool["answer"];
        const std::string row = image.string() + ",classify,classes,green," + answer + ",";
        EXPECT_EQ(csv[i + 1].rfind(row, 0), 0u) << csv[i + 1];
        // The example's images are named after their digit.
        right += image.filename().string().substr(0, 1) == answer;

        const cv::Mat overlay = cv::imread((out / "overlays" / image.filename()).string());
        EXPECT_GT(overlay.cols, 20) << image;
        EXPECT_EQ(overlay.channels(), 3);
    }
    EXPECT_GE(right, images * 8 / 10);
}

TEST(CommandLine, CsvQuotesANameWithACommaAndOverlayNamesStayApart) {
    const fs::path out = Scratch("quoted");
    for (const char* folder : {"a", "b"}) {
        fs::create_directories(out / folder);
        fs::copy_file(TrainedExample().Analyse("green", "5_0000.png"), out / folder / "five,5.png");
    }
    const Outcome run =
        Cli("run WS -s classify " + (out / "a").string() + " " + (out / "b").string() + " --csv " +
            (out / "r.csv").string() + " --overlay " + (out / "overlays").string());
    ASSERT_EQ(run.status, 0) << run.err;
    const auto csv = Lines(Contents(out / "r.csv"));
    ASSERT_EQ(csv.size(), 3u);
    EXPECT_EQ(csv[1].rfind(
                  "\"" + (out / "a" / "five,5.png").string() + "\",classify,classes,green,5,", 0),
              0u)
        << csv[1];
    EXPECT_TRUE(fs::exists(out / "overlays" / "five,5.png"));
    EXPECT_TRUE(fs::exists(out / "overlays" / "five,5-2.png"));
}

TEST(CommandLine, ParametersChangeTheAnswers) {
    for (auto [arguments, answer] :
         {std::pair{"UNSEEN/red/bad_0003.png", "anomaly"},
          {"-p defects.UpperThreshold=1 UNSEEN/red/bad_0003.png", "good"},
          {"-s read UNSEEN/blue/40342_0012.png", "40342"},
          {"-s read -p reader.text.MinimumLength=6 UNSEEN/blue/40342_0012.png", ""}}) {
        const Outcome run = Cli(std::string("run WS ") + arguments);
        EXPECT_EQ(nlohmann::json::parse(Lines(run.out).at(0))["tools"][0]["answer"], answer)
            << arguments;
    }
}

TEST(CommandLine, BenchReportsTheRateAndTheEnginesShare) {
    const Outcome bench = Cli("bench WS -s classify --seconds 0.2 UNSEEN/green");
    ASSERT_EQ(bench.status, 0) << bench.err;
    const std::regex report(R"(^\d+ runs of stream classify on \d+ images in [0-9.]+ s: [0-9.]+ )"
                            R"(images/s\nengine analysis [0-9.]+ %, library and calls [0-9.]+ % )"
                            R"(of the time\n$)");
    EXPECT_TRUE(std::regex_match(bench.out, report)) << bench.out;
}

} // namespace
