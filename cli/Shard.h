#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Analysis.h"
#include "Arguments.h"

namespace TavrinCli {

// The K-th share of N of a batch, counted from 1.
struct Shard {
    std::size_t index = 1;
    std::size_t count = 1;
};

// "K/N" with 1 <= K <= N; nothing for any other text.
std::optional<Shard> ParseShard(const std::string& text);

// The images of one share: a block of consecutive images of the whole list, in its order, so
// that the shards' outputs joined in shard order are the output of one run. The whole list is
// the same on every machine given the same inputs (folders listed by name), so the split is too.
struct ShareOfImages {
    std::vector<std::filesystem::path> files;
    std::size_t total = 0;
    // Of the whole list, for merge to tell shards of other images apart.
    std::string digest;
};

// Every image when no shard is asked for.
ShareOfImages ShareOf(const std::vector<std::filesystem::path>& images,
                      const std::optional<std::string>& shard);

// What a shard's output file carries beside it, for merge to check that shards fit together:
// which batch it is a share of, and which share.
struct ShardManifest {
    std::string command;
    std::string format;
    std::string workspace;
    std::string workspaceDigest;
    std::vector<std::string> parameters;
    BatchSetup setup;
    std::size_t images = 0;
    std::string imagesDigest;
    Shard shard;
    std::size_t shareImages = 0;
    std::size_t withoutAnswer = 0;
};

// The formats of the files a shard writes.
inline const std::string CsvFormat = "csv";
inline const std::string JsonLinesFormat = "json lines";
inline const std::string EvaluationRowsFormat = "evaluation rows";

// The file beside an output that names its shard.
std::filesystem::path ManifestOf(const std::filesystem::path& output);

// UsageError when a shard is asked for but the command writes no file for merge to join, or
// writes figures of its share alone.
void CheckShardOutputs(const Options& options);

// Writes beside each output of the command the manifest of its share; without a shard, removes
// a stale one, so that a later merge cannot take the output for a shard.
void WriteManifests(const Options& options, const BatchSetup& setup, const ShareOfImages& share,
                    std::size_t withoutAnswer);

// CommandError when the file has no readable manifest beside it.
ShardManifest ReadManifest(const std::filesystem::path& output);

// Whether two manifests are shares of the same batch, whatever share and format; the first
// difference found, as a phrase, otherwise.
std::optional<std::string> DifferenceOfBatch(const ShardManifest& a, const ShardManifest& b);

} // namespace TavrinCli
