#include "Shard.h"

#include <cinttypes>
#include <cstdio>
#include <fstream>

#include "AtomicFile.h"
#include "Failure.h"

namespace TavrinCli {
namespace {

using nlohmann::json;

// FNV-1a: a stable digest, the same on every machine, to tell files and lists apart (not to
// guard against forgery).
class Digest {
public:
    void Add(const char* bytes, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            value_ = (value_ ^ static_cast<unsigned char>(bytes[i])) * 0x100000001b3ULL;
    }
    // The text and its end, so that ("ab", "c") and ("a", "bc") differ.
    void AddText(const std::string& text) { Add(text.c_str(), text.size() + 1); }
    std::string Hex() const {
        char text[17];
        std::snprintf(text, sizeof text, "%016" PRIx64, value_);
        return text;
    }

private:
    std::uint64_t value_ = 0xcbf29ce484222325ULL;
};

std::string DigestOfList(const std::vector<std::filesystem::path>& images) {
    Digest digest;
    for (const auto& image : images)
        digest.AddText(image.string());
    return digest.Hex();
}

std::string DigestOfFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    Digest digest;
    char block[1 << 16];
    while (in.read(block, sizeof block) || in.gcount() > 0)
        digest.Add(block, static_cast<std::size_t>(in.gcount()));
    return digest.Hex();
}

json ManifestJson(const ShardManifest& manifest) {
    return {{"command", manifest.command},
            {"format", manifest.format},
            {"workspace", manifest.workspace},
            {"workspace_digest", manifest.workspaceDigest},
            {"parameters", manifest.parameters},
            {"stream", manifest.setup.stream},
            {"tool", manifest.setup.tool},
            {"type", manifest.setup.toolType},
            {"threshold", manifest.setup.threshold ? json(*manifest.setup.threshold) : json()},
            {"images", manifest.images},
            {"images_digest", manifest.imagesDigest},
            {"shard", manifest.shard.index},
            {"shards", manifest.shard.count},
            {"share_images", manifest.shareImages},
            {"without_answer", manifest.withoutAnswer}};
}

ShardManifest ManifestFromJson(const json& text) {
    ShardManifest manifest;
    manifest.command = text.at("command");
    manifest.format = text.at("format");
    manifest.workspace = text.at("workspace");
    manifest.workspaceDigest = text.at("workspace_digest");
    manifest.parameters = text.at("parameters").get<std::vector<std::string>>();
    manifest.setup.stream = text.at("stream");
    manifest.setup.tool = text.at("tool");
    manifest.setup.toolType = text.at("type");
    if (!text.at("threshold").is_null())
        manifest.setup.threshold = text.at("threshold").get<double>();
    manifest.images = text.at("images");
    manifest.imagesDigest = text.at("images_digest");
    manifest.shard = {text.at("shard"), text.at("shards")};
    manifest.shareImages = text.at("share_images");
    manifest.withoutAnswer = text.at("without_answer");
    return manifest;
}

ShardManifest ManifestFor(const Options& options, const BatchSetup& setup,
                          const ShareOfImages& share, std::size_t withoutAnswer) {
    ShardManifest manifest;
    manifest.command = options.command == Command::Eval ? "eval" : "run";
    manifest.workspace = options.workspace;
    manifest.workspaceDigest = DigestOfFile(options.workspace);
    manifest.parameters = options.assignments;
    manifest.setup = setup;
    manifest.images = share.total;
    manifest.imagesDigest = share.digest;
    manifest.shard = *ParseShard(*options.shard);
    manifest.shareImages = share.files.size();
    manifest.withoutAnswer = withoutAnswer;
    return manifest;
}

// The files the command writes, with their formats.
std::vector<std::pair<std::filesystem::path, std::string>> OutputsOf(const Options& options) {
    std::vector<std::pair<std::filesystem::path, std::string>> outputs;
    if (options.command == Command::Eval) {
        if (options.rows)
            outputs.emplace_back(*options.rows, EvaluationRowsFormat);
        return outputs;
    }
    if (options.json)
        outputs.emplace_back(*options.json, JsonLinesFormat);
    if (options.csv)
        outputs.emplace_back(*options.csv, CsvFormat);
    return outputs;
}

} // namespace

std::optional<Shard> ParseShard(const std::string& text) {
    unsigned long index = 0;
    unsigned long count = 0;
    int end = 0;
    if (std::sscanf(text.c_str(), "%lu/%lu%n", &index, &count, &end) != 2 ||
        end != static_cast<int>(text.size()) || index < 1 || index > count)
        return std::nullopt;
    return Shard{index, count};
}

ShareOfImages ShareOf(const std::vector<std::filesystem::path>& images,
                      const std::optional<std::string>& shard) {
    ShareOfImages share{images, images.size(), DigestOfList(images)};
    if (!shard)
        return share;
    const Shard place = *ParseShard(*shard);
    const std::size_t first = (place.index - 1) * images.size() / place.count;
    const std::size_t end = place.index * images.size() / place.count;
    share.files.assign(images.begin() + static_cast<std::ptrdiff_t>(first),
                       images.begin() + static_cast<std::ptrdiff_t>(end));
    return share;
}

std::filesystem::path ManifestOf(const std::filesystem::path& output) {
    return output.string() + ".shard.json";
}

void CheckShardOutputs(const Options& options) {
    if (!options.shard)
        return;
    if (options.command == Command::Eval &&
        (options.json || options.plots || options.report || !options.rows))
        throw UsageError("eval --shard writes only --rows F, the rows that merge measures: the "
                         "figures of one share are not those of the batch");
    if (OutputsOf(options).empty())
        throw UsageError("run --shard needs --json or --csv, the files that merge joins");
}

void WriteManifests(const Options& options, const BatchSetup& setup, const ShareOfImages& share,
                    std::size_t withoutAnswer) {
    std::optional<ShardManifest> manifest;
    if (options.shard)
        manifest = ManifestFor(options, setup, share, withoutAnswer);
    for (const auto& [output, format] : OutputsOf(options)) {
        if (!manifest) {
            std::error_code ignored;
            std::filesystem::remove(ManifestOf(output), ignored);
            continue;
        }
        manifest->format = format;
        AtomicFile file(ManifestOf(output));
        file.Stream() << ManifestJson(*manifest).dump(2) << '\n';
        file.Commit();
    }
}

ShardManifest ReadManifest(const std::filesystem::path& output) {
    const std::filesystem::path file = ManifestOf(output);
    std::ifstream in(file);
    if (!in)
        throw CommandError(output.string() + " is not the output of a shard: " + file.string() +
                           " is missing");
    try {
        return ManifestFromJson(json::parse(in));
    } catch (const json::exception& error) {
        throw CommandError("cannot read " + file.string() + ": " + error.what());
    }
}

std::optional<std::string> DifferenceOfBatch(const ShardManifest& a, const ShardManifest& b) {
    if (a.command != b.command)
        return "of " + b.command + " rather than " + a.command;
    if (a.workspaceDigest != b.workspaceDigest)
        return "of another workspace (" + b.workspace + " rather than " + a.workspace + ")";
    if (a.setup.stream != b.setup.stream)
        return "of stream " + b.setup.stream + " rather than " + a.setup.stream;
    if (a.setup.tool != b.setup.tool)
        return "of tool " + b.setup.tool + " rather than " + a.setup.tool;
    if (a.parameters != b.parameters)
        return std::string("of a run with other parameters");
    if (a.imagesDigest != b.imagesDigest)
        return "of another list of images (" + std::to_string(b.images) + " of them, against " +
               std::to_string(a.images) + ")";
    if (a.shard.count != b.shard.count)
        return "of a split into " + std::to_string(b.shard.count) + " rather than " +
               std::to_string(a.shard.count);
    return std::nullopt;
}

} // namespace TavrinCli
