// Trains a reference engine workspace from a folder of labelled images.
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "Failure.h"
#include "Training.h"

namespace {

const char* const Usage =
    "usage: kelo_train [--red-type TYPE] [--green-type TYPE] [--blue-type TYPE] FOLDER WORKSPACE\n"
    "Trains from FOLDER/red/{good,bad}, FOLDER/green/<class> and FOLDER/blue/<text>_<n>.png\n"
    "and writes the workspace file WORKSPACE (YAML).\n";

void PrintTools(const std::vector<KeloReference::Tool>& tools) {
    for (const KeloReference::Tool& tool : tools) {
        std::printf("  tool %s (%s)", tool.id.c_str(), tool.type.c_str());
        if (!tool.anomaly.mean.empty())
            std::printf(": anomaly model of %dx%d", tool.anomaly.mean.cols, tool.anomaly.mean.rows);
        if (!tool.classifier.samples.empty())
            std::printf(": %d samples of %zu classes, %d support vectors",
                        tool.classifier.samples.rows, tool.classifier.classes.size(),
                        tool.classifier.machine->getSupportVectors().rows);
        for (const KeloReference::Model& model : tool.models)
            std::printf(", model %s (%s)", model.id.c_str(), model.type.c_str());
        std::printf("\n");
        PrintTools(tool.children);
    }
}

} // namespace

int main(int argc, char** argv) {
    KeloReference::TrainingOptions options;
    const std::map<std::string, std::string*> typeOptions = {{"--red-type", &options.redType},
                                                             {"--green-type", &options.greenType},
                                                             {"--blue-type", &options.blueType}};
    std::vector<std::string> positional;
    for (int index = 1; index < argc; ++index) {
        const auto option = typeOptions.find(argv[index]);
        if (option != typeOptions.end() && index + 1 < argc)
            *option->second = argv[++index];
        else
            positional.emplace_back(argv[index]);
    }
    if (positional.size() != 2 || positional[0].rfind("-", 0) == 0) {
        std::fputs(Usage, stderr);
        return 2;
    }
    try {
        const KeloReference::Workspace workspace =
            KeloReference::TrainWorkspace(positional[0], options);
        KeloReference::WriteWorkspace(workspace, positional[1]);
        std::printf("workspace %s\n", positional[1].c_str());
        for (const KeloReference::Stream& stream : workspace.streams) {
            std::printf(" stream %s\n", stream.id.c_str());
            PrintTools(stream.tools);
        }
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "kelo_train: %s\n", failure.what());
        return 1;
    }
}
