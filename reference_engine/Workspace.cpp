#include "Workspace.h"

#include "Failure.h"

#include <ctime>
#include <fstream>
#include <random>

namespace KeloReference {
namespace {

const char* const FormatName = "kelo-reference-workspace";
const int FormatVersion = 1;

[[noreturn]] void FileFailure(const std::string& text) {
    throw Failure(StatusFileFailure, text);
}

// Hand-written files may leave numbers unquoted; a parameter is a text all the same.
std::string Text(const cv::FileNode& node) {
    if (node.isInt())
        return std::to_string(static_cast<int>(node));
    if (node.isReal())
        return cv::format("%g", static_cast<double>(node));
    return node.isString() ? static_cast<std::string>(node) : std::string();
}

std::string Required(const cv::FileNode& node, const char* key) {
    const cv::FileNode value = node[key];
    if (value.empty())
        FileFailure(std::string("'") + key + "' is missing");
    return Text(value);
}

// Texts that begin with a bracket would open a structure if streamed with <<.
void WriteText(cv::FileStorage& file, const char* key, const std::string& text) {
    file.write(key, text);
}

Parameters ReadParameters(const cv::FileNode& node) {
    Parameters parameters;
    for (const cv::FileNode& entry : node)
        parameters[Required(entry, "path")] = Text(entry["value"]);
    return parameters;
}

void WriteParameters(cv::FileStorage& file, const Parameters& parameters) {
    file << "parameters"
         << "[";
    for (const auto& [path, value] : parameters) {
        file << "{";
        WriteText(file, "path", path);
        WriteText(file, "value", value);
        file << "}";
    }
    file << "]";
}

Model ReadModel(const cv::FileNode& node) {
    Model model{Required(node, "id"),
                Required(node, "type"),
                ReadParameters(node["parameters"]),
                Text(node["class"]),
                {}};
    for (const cv::FileNode& region : node["regions"]) {
        std::vector<double> box;
        region["box"] >> box;
        if (box.size() != 4)
            FileFailure("layout region box of model '" + model.id + "' needs four numbers");
        model.regions.push_back(
            {Required(region, "name"), cv::Rect2d(box[0], box[1], box[2], box[3])});
    }
    return model;
}

void WriteModel(cv::FileStorage& file, const Model& model) {
    file << "{";
    WriteText(file, "id", model.id);
    WriteText(file, "type", model.type);
    WriteParameters(file, model.parameters);
    if (!model.nodeClass.empty())
        WriteText(file, "class", model.nodeClass);
    if (!model.regions.empty()) {
        file << "regions"
             << "[";
        for (const LayoutRegion& region : model.regions) {
            file << "{";
            WriteText(file, "name", region.name);
            file << "box"
                 << std::vector<double>{region.box.x, region.box.y, region.box.width,
                                        region.box.height};
            file << "}";
        }
        file << "]";
    }
    file << "}";
}

Classifier ReadClassifier(const cv::FileNode& node) {
    Classifier classifier;
    node["sample_size"] >> classifier.sampleSize;
    node["classes"] >> classifier.classes;
    node["samples"] >> classifier.samples;
    node["labels"] >> classifier.labels;
    if (classifier.samples.rows != classifier.labels.rows ||
        classifier.samples.cols != classifier.sampleSize.area())
        FileFailure("classifier samples do not match their labels and sample size");
    if (node["machine"].empty())
        FileFailure("the classifier has no trained machine");
    classifier.machine = cv::ml::SVM::create();
    classifier.machine->read(node["machine"]);
    return classifier;
}

void WriteClassifier(cv::FileStorage& file, const Classifier& classifier) {
    if (!classifier.machine)
        FileFailure("a classifier is written with its trained machine");
    file << "classifier"
         << "{";
    file << "sample_size" << classifier.sampleSize;
    file << "classes"
         << "[";
    for (const std::string& name : classifier.classes)
        file.write("", name);
    file << "]";
    file << "samples" << classifier.samples << "labels" << classifier.labels;
    file << "machine"
         << "{";
    classifier.machine->write(file);
    file << "}"
         << "}";
}

Tool ReadTool(const cv::FileNode& node) {
    Tool tool{Required(node, "id"),
              Required(node, "uuid"),
              Required(node, "type"),
              ReadParameters(node["parameters"]),
              {},
              {},
              {},
              {}};
    if (!node["anomaly"].empty()) {
        const cv::FileNode anomaly = node["anomaly"];
        anomaly["mean"] >> tool.anomaly.mean;
        anomaly["spread"] >> tool.anomaly.spread;
        anomaly["modes"] >> tool.anomaly.modes;
        if (tool.anomaly.mean.size() != tool.anomaly.spread.size())
            FileFailure("anomaly model of tool '" + tool.id + "' has mean and spread of two sizes");
        if (!tool.anomaly.modes.empty() &&
            (tool.anomaly.modes.cols != static_cast<int>(tool.anomaly.mean.total()) ||
             tool.anomaly.modes.type() != CV_32F))
            FileFailure("anomaly modes of tool '" + tool.id + "' do not match its mean");
    }
    if (!node["classifier"].empty())
        tool.classifier = ReadClassifier(node["classifier"]);
    for (const cv::FileNode& model : node["models"])
        tool.models.push_back(ReadModel(model));
    for (const cv::FileNode& child : node["tools"])
        tool.children.push_back(ReadTool(child));
    return tool;
}

void WriteTools(cv::FileStorage& file, const std::vector<Tool>& tools) {
    file << "tools"
         << "[";
    for (const Tool& tool : tools) {
        file << "{";
        WriteText(file, "id", tool.id);
        WriteText(file, "uuid", tool.uuid);
        WriteText(file, "type", tool.type);
        WriteParameters(file, tool.parameters);
        if (!tool.anomaly.mean.empty())
            file << "anomaly"
                 << "{"
                 << "mean" << tool.anomaly.mean << "spread" << tool.anomaly.spread << "modes"
                 << tool.anomaly.modes << "}";
        if (!tool.classifier.samples.empty())
            WriteClassifier(file, tool.classifier);
        if (!tool.models.empty()) {
            file << "models"
                 << "[";
            for (const Model& model : tool.models)
                WriteModel(file, model);
            file << "]";
        }
        if (!tool.children.empty())
            WriteTools(file, tool.children);
        file << "}";
    }
    file << "]";
}

} // namespace

Workspace ReadWorkspace(const std::string& path) {
    // FileStorage reports a missing file on the console; the engine answers with a status only.
    if (!std::ifstream(path))
        FileFailure("cannot read workspace file '" + path + "'");
    try {
        cv::FileStorage file(path, cv::FileStorage::READ | cv::FileStorage::FORMAT_YAML);
        if (Text(file["format"]) != FormatName ||
            static_cast<int>(file["version"]) != FormatVersion)
            FileFailure("'" + path + "' is no workspace file of version " +
                        std::to_string(FormatVersion));
        Workspace workspace{Required(file.root(), "uuid"), Text(file["last_modified"]), {}};
        for (const cv::FileNode& node : file["streams"]) {
            Stream stream{
                Required(node, "id"), Required(node, "uuid"), Text(node["frame_window"]), {}};
            for (const cv::FileNode& tool : node["tools"])
                stream.tools.push_back(ReadTool(tool));
            workspace.streams.push_back(std::move(stream));
        }
        return workspace;
    } catch (const cv::Exception& failure) {
        FileFailure("workspace file '" + path + "' does not parse: " + failure.err);
    } catch (const Failure& failure) {
        FileFailure("workspace file '" + path + "': " + failure.what());
    }
}

void WriteWorkspace(const Workspace& workspace, const std::string& path) {
    try {
        cv::FileStorage file(path, cv::FileStorage::WRITE | cv::FileStorage::FORMAT_YAML |
                                       cv::FileStorage::BASE64);
        if (!file.isOpened())
            FileFailure("cannot write workspace file '" + path + "'");
        WriteText(file, "format", FormatName);
        file << "version" << FormatVersion;
        WriteText(file, "uuid", workspace.uuid);
        WriteText(file, "last_modified", workspace.lastModified);
        file << "streams"
             << "[";
        for (const Stream& stream : workspace.streams) {
            file << "{";
            WriteText(file, "id", stream.id);
            WriteText(file, "uuid", stream.uuid);
            WriteText(file, "frame_window", stream.frameWindow);
            WriteTools(file, stream.tools);
            file << "}";
        }
        file << "]";
    } catch (const cv::Exception& failure) {
        FileFailure("cannot write workspace file '" + path + "': " + failure.err);
    }
}

std::string UtcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

// A version 4 UUID: random hex digits in groups of 8-4-4-4-12, the version nibble 4 and the
// variant nibble one of 8 to b.
std::string NewUuid() {
    thread_local std::mt19937_64 generator{std::random_device{}()};
    std::uniform_int_distribution<unsigned> digit(0, 15);
    constexpr char Hex[] = "0123456789abcdef";
    constexpr int GroupEnds[] = {8, 12, 16, 20, 32};
    std::string text;
    for (int index = 0, group = 0; index < 32; ++index) {
        unsigned value = digit(generator);
        if (index == 12)
            value = 4;
        else if (index == 16)
            value = 8 + value % 4;
        text += Hex[value];
        if (index + 1 == GroupEnds[group] && ++group < 5)
            text += '-';
    }
    return text;
}

} // namespace KeloReference
