#include "Merge.h"

#include <fstream>
#include <iostream>
#include <map>

#include "AtomicFile.h"
#include "EvaluationRows.h"
#include "Failure.h"
#include "Shard.h"

namespace TavrinCli {
namespace {

struct ShardFile {
    std::filesystem::path file;
    ShardManifest manifest;
};

// The files of one format, by share: the files of shard K at K - 1.
using SharesOfFormat = std::vector<const ShardFile*>;

std::string ShareName(std::size_t index, std::size_t count) {
    return std::to_string(index + 1) + "/" + std::to_string(count);
}

std::vector<ShardFile> ReadShards(const std::vector<std::string>& files) {
    std::vector<ShardFile> shards;
    for (const std::string& file : files)
        shards.push_back({file, ReadManifest(file)});
    for (const ShardFile& shard : shards)
        if (const auto difference = DifferenceOfBatch(shards.front().manifest, shard.manifest))
            throw UsageError(shard.file.string() + " does not fit " + shards.front().file.string() +
                             ": it is a shard " + *difference);
    return shards;
}

// Every share once, for each format given.
std::map<std::string, SharesOfFormat> SharesByFormat(const std::vector<ShardFile>& shards) {
    const std::size_t count = shards.front().manifest.shard.count;
    std::map<std::string, SharesOfFormat> formats;
    for (const ShardFile& shard : shards) {
        auto& shares = formats[shard.manifest.format];
        shares.resize(count);
        const std::size_t index = shard.manifest.shard.index - 1;
        if (shares[index])
            throw UsageError(
                "shard " + ShareName(index, count) + " of the " + shard.manifest.format +
                " is given twice: " + shares[index]->file.string() + " and " + shard.file.string());
        shares[index] = &shard;
    }
    for (const auto& [format, shares] : formats) {
        std::string missing;
        for (std::size_t index = 0; index < count; ++index)
            if (!shares[index])
                missing += " " + ShareName(index, count);
        if (!missing.empty())
            throw UsageError("shards of the " + format + " missing:" + missing);
    }
    return formats;
}

// The output each format of the shards goes to; UsageError when an output has no shards or
// shards have no output.
std::map<std::string, std::filesystem::path> MergedOutputs(const Options& options,
                                                           const std::string& command) {
    const bool eval = command == "eval";
    const std::pair<const char*, std::optional<std::filesystem::path>> refused[] = {
        {"--csv", eval ? options.csv : std::nullopt},
        {"--plots", eval ? std::nullopt : options.plots},
        {"--rows", eval ? std::nullopt : options.rows}};
    for (const auto& [option, output] : refused)
        if (output)
            throw UsageError(option + std::string(" does not fit shards of ") + command);
    std::map<std::string, std::filesystem::path> outputs;
    if (eval && options.rows)
        outputs.emplace(EvaluationRowsFormat, *options.rows);
    if (!eval && options.json)
        outputs.emplace(JsonLinesFormat, *options.json);
    if (!eval && options.csv)
        outputs.emplace(CsvFormat, *options.csv);
    return outputs;
}

// Eval's rows need no output: its figures are measured from them.
void CheckOutputsFitShards(const std::map<std::string, std::filesystem::path>& outputs,
                           const std::map<std::string, SharesOfFormat>& formats) {
    for (const auto& [format, output] : outputs)
        if (!formats.count(format))
            throw UsageError("no shards of the " + format + " to merge into " + output.string());
    for (const auto& [format, shares] : formats)
        if (!outputs.count(format) && format != EvaluationRowsFormat)
            throw UsageError("the shards of the " + format + " need an output to merge into");
}

std::ifstream Opened(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw CommandError("cannot read " + file.string());
    return in;
}

// The shards' files one after the other; the header line of a CSV once.
void Join(const SharesOfFormat& shares, const std::string& format,
          const std::filesystem::path& output) {
    AtomicFile merged(output);
    for (const ShardFile* shard : shares) {
        std::ifstream in = Opened(shard->file);
        std::string header;
        if (format == CsvFormat && std::getline(in, header) && shard == shares.front())
            merged.Stream() << header << '\n';
        // Streaming the buffer of an empty share would mark the output failed.
        if (in.peek() != std::ifstream::traits_type::eof())
            merged.Stream() << in.rdbuf();
    }
    merged.Commit();
    std::cerr << format << ": " << output.string() << '\n';
}

std::vector<EvaluationRow> JoinedRows(const SharesOfFormat& shares) {
    std::vector<EvaluationRow> rows;
    for (const ShardFile* shard : shares) {
        const auto share = ReadEvaluationRows(shard->file);
        rows.insert(rows.end(), share.begin(), share.end());
    }
    return rows;
}

std::size_t WithoutAnswer(const SharesOfFormat& shares) {
    std::size_t failed = 0;
    for (const ShardFile* shard : shares)
        failed += shard->manifest.withoutAnswer;
    return failed;
}

} // namespace

int Merge(const Options& options) {
    const std::vector<ShardFile> shards = ReadShards(options.inputs);
    const ShardManifest& batch = shards.front().manifest;
    const auto formats = SharesByFormat(shards);
    const auto outputs = MergedOutputs(options, batch.command);
    CheckOutputsFitShards(outputs, formats);

    const SharesOfFormat& shares = formats.begin()->second;
    // Eval's figures are measured again over all the rows, and checked before anything is
    // written.
    std::optional<Evaluation> evaluation;
    if (batch.command == "eval")
        evaluation = EvaluateRows(JoinedRows(shares), SubjectOf(batch.workspace, batch.setup));
    for (const auto& [format, output] : outputs)
        Join(formats.at(format), format, output);
    if (evaluation) {
        PrintEvaluation(*evaluation, std::cout);
        WriteFigures(options, *evaluation);
    }
    const std::size_t failed = WithoutAnswer(shares);
    std::cerr << batch.shard.count << " shards of " << batch.images << " images through stream "
              << batch.setup.stream << " merged";
    if (failed)
        std::cerr << ", " << failed << " of them without an answer";
    std::cerr << '\n';
    return failed ? SomeImagesFailed : 0;
}

} // namespace TavrinCli
