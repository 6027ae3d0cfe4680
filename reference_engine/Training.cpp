#include "Training.h"

#include "Failure.h"
#include "Features.h"
#include "Parameters.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include <opencv2/imgcodecs.hpp>

namespace KeloReference {
namespace {

namespace fs = std::filesystem;

const double PartPrecision = 0.5;

std::vector<fs::path> ImageFiles(const fs::path& folder) {
    static const std::set<std::string> extensions = {".png", ".jpg", ".jpeg", ".bmp",
                                                     ".pgm", ".tif", ".tiff"};
    std::vector<fs::path> files;
    if (fs::is_directory(folder))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
            if (entry.is_regular_file() && extensions.count(entry.path().extension().string()))
                files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

cv::Mat ReadGrey(const fs::path& file) {
    cv::Mat image = cv::imread(file.string(), cv::IMREAD_GRAYSCALE);
    if (image.empty())
        Refuse("cannot read image '" + file.string() + "'");
    return image;
}

double Percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

double PeakScore(const AnomalyModel& model, const cv::Mat& grey) {
    double peak = 0;
    cv::minMaxLoc(AnomalyScoreMap(model, grey, 1), nullptr, &peak);
    return peak;
}

Tool NewTool(const char* id, const std::string& type) {
    Tool tool;
    tool.id = id;
    tool.uuid = NewUuid();
    tool.type = type;
    ToolParameterRules(type); // refuses an unknown type
    return tool;
}

std::string PathOf(const std::string& type, Role role) {
    for (const ParameterRule& rule : ToolParameterRules(type))
        if (rule.role == role)
            return rule.path;
    return {};
}

// The good images' scores as new good images would get them: each from a model trained without
// it, in five folds.
std::vector<double> CrossValidatedScores(const std::vector<cv::Mat>& good, cv::Size size) {
    const std::size_t folds = std::min<std::size_t>(5, good.size());
    std::vector<double> scores(good.size());
    for (std::size_t fold = 0; fold < folds; ++fold) {
        std::vector<cv::Mat> others;
        for (std::size_t index = 0; index < good.size(); ++index)
            if (folds < 2 || index % folds != fold)
                others.push_back(good[index]);
        const AnomalyModel model = TrainAnomalyModel(others, size);
        for (std::size_t index = fold; index < good.size(); index += folds)
            scores[index] = PeakScore(model, good[index]);
    }
    return scores;
}

// The threshold that tells good from bad scores best: midway between two neighbouring scores,
// where the mean of the two error rates is least (the lowest such place).
double SeparatingThreshold(std::vector<double> good, std::vector<double> bad) {
    std::sort(good.begin(), good.end());
    std::sort(bad.begin(), bad.end());
    std::vector<double> all = good;
    all.insert(all.end(), bad.begin(), bad.end());
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    std::vector<double> candidates = {all.front() / 2, (all.back() + 1) / 2};
    for (std::size_t index = 1; index < all.size(); ++index)
        candidates.push_back((all[index - 1] + all[index]) / 2);
    std::sort(candidates.begin(), candidates.end());
    const auto errors = [&](double threshold) {
        const auto below = [](const std::vector<double>& scores, double value) {
            return static_cast<double>(std::lower_bound(scores.begin(), scores.end(), value) -
                                       scores.begin());
        };
        return (static_cast<double>(good.size()) - below(good, threshold)) /
                   static_cast<double>(good.size()) +
               below(bad, threshold) / static_cast<double>(bad.size());
    };
    return *std::min_element(candidates.begin(), candidates.end(),
                             [&](double a, double b) { return errors(a) < errors(b); });
}

// The upper threshold separates the good images' cross-validated scores from the bad images'
// where bad images are given, and lies above nearly all good ones otherwise; the lower threshold
// lets regions grow around peaks.
Tool TrainRed(const fs::path& folder, const TrainingOptions& options) {
    std::vector<cv::Mat> good;
    for (const fs::path& file : ImageFiles(folder / "good"))
        good.push_back(ReadGrey(file));
    if (good.empty())
        Refuse("'" + (folder / "good").string() + "' holds no images");
    Tool tool = NewTool("defects", options.redType);
    tool.anomaly = TrainAnomalyModel(good, good.front().size());
    const std::vector<double> goodScores = CrossValidatedScores(good, good.front().size());
    std::vector<double> badScores;
    for (const fs::path& file : ImageFiles(folder / "bad"))
        badScores.push_back(PeakScore(tool.anomaly, ReadGrey(file)));
    const double upper = badScores.empty() ? (Percentile(goodScores, 0.95) + 1) / 2
                                           : SeparatingThreshold(goodScores, badScores);
    tool.parameters[PathOf(tool.type, Role::Thresholds)] =
        cv::format("[%.9g,%.9g]", upper * 0.75, upper);
    return tool;
}

Classifier NewClassifier(const TrainingOptions& options) {
    Classifier classifier;
    classifier.sampleSize = options.sampleSize;
    return classifier;
}

void AddSample(Classifier& classifier, const cv::Mat& sample, int label) {
    classifier.samples.push_back(sample.reshape(1, 1));
    classifier.labels.push_back(label);
}

Tool TrainGreen(const fs::path& folder, const TrainingOptions& options) {
    Tool tool = NewTool("classes", options.greenType);
    tool.classifier = NewClassifier(options);
    std::vector<fs::path> classes;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.is_directory())
            classes.push_back(entry.path());
    std::sort(classes.begin(), classes.end());
    for (const fs::path& classFolder : classes) {
        const int label = static_cast<int>(tool.classifier.classes.size());
        tool.classifier.classes.push_back(classFolder.filename().string());
        for (const fs::path& file : ImageFiles(classFolder))
            AddSample(tool.classifier, WholeSample(ReadGrey(file), options.sampleSize), label);
    }
    if (tool.classifier.samples.empty())
        Refuse("'" + folder.string() + "' holds no class folders with images");
    tool.classifier.machine = TrainMachine(tool.classifier, 1, options.machine);
    return tool;
}

struct ReadExample {
    std::string text;
    std::vector<cv::Rect> parts;
};

std::string RegexClass(const std::set<char>& characters) {
    std::string text = "[";
    for (char c : characters)
        text += std::string(std::isalnum(static_cast<unsigned char>(c)) ? "" : "\\") + c;
    return text + "]";
}

void AddReadModels(Tool& tool, const std::vector<ReadExample>& examples) {
    std::set<char> characters;
    std::size_t shortest = SIZE_MAX, longest = 0;
    for (const ReadExample& example : examples) {
        characters.insert(example.text.begin(), example.text.end());
        shortest = std::min(shortest, example.text.size());
        longest = std::max(longest, example.text.size());
    }
    tool.models.push_back(
        {"text", "string", {{"string/min_string_length", std::to_string(shortest)}}, "", {}});
    tool.models.push_back(
        {"pattern",
         "regex",
         {{"regex/regex", RegexClass(characters) + "{" + std::to_string(shortest) + "," +
                              std::to_string(longest) + "}"}},
         "",
         {}});
    if (shortest != longest)
        return;
    // Texts of one length have fields: the mean box of each position, widened by a quarter.
    Model slots{"slots", "layout", {}, "", {}};
    for (std::size_t position = 0; position < longest; ++position) {
        cv::Rect2d sum;
        for (const ReadExample& example : examples) {
            const cv::Rect& part = example.parts[position];
            sum = cv::Rect2d(sum.x + part.x, sum.y + part.y, sum.width + part.width,
                             sum.height + part.height);
        }
        const double count = static_cast<double>(examples.size());
        const cv::Rect2d mean(sum.x / count, sum.y / count, sum.width / count, sum.height / count);
        slots.regions.push_back({"slot" + std::to_string(position + 1),
                                 cv::Rect2d(mean.x - mean.width / 8, mean.y - mean.height / 8,
                                            mean.width * 1.25, mean.height * 1.25)});
    }
    tool.models.push_back(std::move(slots));
}

// Each image's parts are paired with the characters of its text in reading order; images whose
// part count differs from their text's length teach nothing and are passed over.
Tool TrainBlue(const fs::path& folder, const TrainingOptions& options) {
    Tool tool = NewTool("reader", options.blueType);
    tool.classifier = NewClassifier(options);
    std::vector<ReadExample> examples;
    cv::Size2d sizeSum;
    std::size_t partCount = 0;
    for (const fs::path& file : ImageFiles(folder)) {
        const std::string stem = file.stem().string();
        ReadExample example{stem.substr(0, stem.find('_')), {}};
        const Ink ink = FindInk(ReadGrey(file));
        example.parts = LocateParts(ink.mask, PartPrecision);
        if (example.text.empty() || example.parts.size() != example.text.size())
            continue;
        for (std::size_t index = 0; index < example.parts.size(); ++index) {
            const std::string name(1, example.text[index]);
            auto found =
                std::find(tool.classifier.classes.begin(), tool.classifier.classes.end(), name);
            if (found == tool.classifier.classes.end())
                found = tool.classifier.classes.insert(found, name);
            AddSample(tool.classifier, PartSample(ink, example.parts[index], options.sampleSize),
                      static_cast<int>(found - tool.classifier.classes.begin()));
            sizeSum += cv::Size2d(example.parts[index].size());
            ++partCount;
        }
        examples.push_back(std::move(example));
    }
    if (examples.empty())
        Refuse("'" + folder.string() + "' holds no image whose parts match its text");
    tool.classifier.machine = TrainMachine(tool.classifier, 1, options.machine);
    tool.parameters[PathOf(tool.type, Role::FeatureSize)] =
        cv::format("%fx%f", sizeSum.width / static_cast<double>(partCount),
                   sizeSum.height / static_cast<double>(partCount));
    AddReadModels(tool, examples);
    return tool;
}

} // namespace

Workspace TrainWorkspace(const std::string& folder, const TrainingOptions& options) {
    using Trainer = Tool (*)(const fs::path&, const TrainingOptions&);
    const struct {
        const char* kind;
        const char* stream;
        Trainer train;
    } kinds[] = {{"red", "anomaly", TrainRed},
                 {"green", "classify", TrainGreen},
                 {"blue", "read", TrainBlue}};
    Workspace workspace{NewUuid(), UtcNow(), {}};
    for (const auto& kind : kinds) {
        const fs::path source = fs::path(folder) / kind.kind;
        if (fs::is_directory(source))
            workspace.streams.push_back(
                {kind.stream, NewUuid(), "", {kind.train(source, options)}});
    }
    if (workspace.streams.empty())
        Refuse("'" + folder + "' holds none of the folders red, green and blue");
    return workspace;
}

} // namespace KeloReference
