#include "Analysis.h"

#include "Failure.h"
#include "Parameters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <map>
#include <numeric>
#include <regex>

#include <opencv2/imgproc.hpp>
#include <tinyxml2.h>

namespace KeloReference {
namespace {

using tinyxml2::XMLElement;
using Clock = std::chrono::steady_clock;

const char* const Identity = "1,0,0,1,0,0";

// The fewest digits that read back as the same double: rounding would tie scores near 1 that the
// computation tells apart, and rankings of them would lose their order.
std::string Number(double value) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::string(text.data(), end);
}

std::string PointText(cv::Point2d point) {
    return Number(point.x) + "," + Number(point.y);
}

std::string SizeText(cv::Size2d size) {
    return Number(size.width) + "x" + Number(size.height);
}

double Milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

// Builds elements under a parent with their attributes in the order given.
class Node {
public:
    explicit Node(XMLElement* element)
        : element_(element) {}

    Node Add(const char* name) const {
        XMLElement* child = element_->GetDocument()->NewElement(name);
        element_->InsertEndChild(child);
        return Node(child);
    }
    const Node& Set(const char* name, const std::string& value) const {
        element_->SetAttribute(name, value.c_str());
        return *this;
    }
    const Node& Set(const char* name, double value) const { return Set(name, Number(value)); }

private:
    XMLElement* element_;
};

// What one tool's analysis reads and where it writes.
struct Context {
    RunningTool& tool;
    const cv::Mat& grey;
    const Node& view;
    std::vector<ResourceImage>& resources;

    ParameterReader Reader() const {
        return {ToolParameterRules(tool.definition.type), tool.values};
    }

    double RealOr(Role role, double fallback) const {
        const ParameterReader reader = Reader();
        return reader.Has(role) ? reader.Real(role) : fallback;
    }

    const SupportVectorClassifier& Classifier(double density) const {
        if (!tool.classifier || tool.classifier->Density() != density)
            tool.classifier =
                std::make_unique<SupportVectorClassifier>(tool.definition.classifier, density);
        return *tool.classifier;
    }

    void AddResource(const Node& parent, const char* name, const cv::Mat& scores, double scale) {
        ResourceImage resource{NewUuid(), {}};
        scores.convertTo(resource.pixels, CV_8U, 255);
        parent.Add("resource")
            .Set("name", name)
            .Set("type", "heat_map")
            .Set("uuid", resource.uuid)
            .Set("scale", scale);
        resources.push_back(std::move(resource));
    }
};

struct Region {
    double score;
    double area;
    double perimeter;
    cv::Point2d center;
    cv::Rect2d box;
    std::vector<cv::Point2d> points;

    double Measure(const std::string& name) const {
        static const std::map<std::string, double Region::*> measures = {
            {"area", &Region::area}, {"perimeter", &Region::perimeter}, {"score", &Region::score}};
        if (name == "width" || name == "height")
            return name == "width" ? box.width : box.height;
        return this->*measures.at(name);
    }
};

// Connected areas of scores at or above the lower threshold whose peak reaches the upper one
// (hysteresis), measured in view units.
std::vector<Region> AnomalyRegions(const cv::Mat& scores, double lower, double upper, int openings,
                                   cv::Size2d viewScale) {
    cv::Mat mask = scores >= lower;
    if (openings > 0)
        cv::morphologyEx(mask, mask, cv::MORPH_OPEN, cv::Mat(), cv::Point(-1, -1), openings);
    std::vector<std::vector<cv::Point>> contours;
    cv::findContours(mask, contours, cv::RETR_EXTERNAL, cv::CHAIN_APPROX_SIMPLE);
    std::vector<Region> regions;
    for (std::size_t index = 0; index < contours.size(); ++index) {
        cv::Mat inside = cv::Mat::zeros(scores.size(), CV_8U);
        cv::drawContours(inside, contours, static_cast<int>(index), 255, cv::FILLED);
        double peak = 0;
        cv::minMaxLoc(scores, nullptr, &peak, nullptr, nullptr, inside);
        if (peak < upper)
            continue;
        const cv::Moments moments = cv::moments(inside, true);
        const auto toView = [&](cv::Point2d p) {
            return cv::Point2d(p.x * viewScale.width, p.y * viewScale.height);
        };
        std::vector<cv::Point> outline;
        cv::approxPolyDP(contours[index], outline, 0.5, true);
        Region region{peak,
                      moments.m00 * viewScale.area(),
                      cv::arcLength(contours[index], true) * (viewScale.width + viewScale.height) /
                          2,
                      toView({moments.m10 / moments.m00 + 0.5, moments.m01 / moments.m00 + 0.5}),
                      {},
                      {}};
        for (const cv::Point& point : outline)
            region.points.push_back(toView({point.x + 0.5, point.y + 0.5}));
        const cv::Rect box = cv::boundingRect(contours[index]);
        region.box = cv::Rect2d(box.x * viewScale.width, box.y * viewScale.height,
                                box.width * viewScale.width, box.height * viewScale.height);
        regions.push_back(std::move(region));
    }
    return regions;
}

void AnalyseRed(Context& context) {
    const ParameterReader reader = context.Reader();
    const AnomalyModel& model = context.tool.definition.anomaly;
    double scale = context.RealOr(Role::SamplingDensity, 1);
    if (reader.Has(Role::DownsamplingSize) && reader.Integer(Role::DownsamplingSize) > 0)
        scale =
            std::min(scale, reader.Integer(Role::DownsamplingSize) /
                                static_cast<double>(std::max(model.mean.cols, model.mean.rows)));
    const cv::Mat scores = AnomalyScoreMap(model, context.grey, scale);
    const auto [lower, upper] = ParsePair(reader.Text(Role::Thresholds));
    const int openings = reader.Has(Role::Iterations) ? reader.Integer(Role::Iterations) : 0;
    const cv::Size2d viewScale(context.grey.cols / static_cast<double>(scores.cols),
                               context.grey.rows / static_cast<double>(scores.rows));
    std::vector<Region> regions = AnomalyRegions(scores, lower, upper, openings, viewScale);
    const std::vector<RegionCondition> filter = ParseRegionFilter(reader.Text(Role::RegionFilter));
    regions.erase(std::remove_if(regions.begin(), regions.end(),
                                 [&](const Region& region) {
                                     return std::any_of(filter.begin(), filter.end(),
                                                        [&](const RegionCondition& condition) {
                                                            return !condition.Holds(
                                                                region.Measure(condition.measure));
                                                        });
                                 }),
                  regions.end());
    double score = 0;
    cv::minMaxLoc(scores, nullptr, &score);
    double filtered = 0;
    for (const Region& region : regions)
        filtered = std::max(filtered, region.score);

    const Node red = context.view.Add("red");
    red.Set("score", score)
        .Set("filtered_score", filtered)
        .Set("threshold", reader.Text(Role::Thresholds))
        .Set("mode", "unsupervised");
    red.Add("score").Set("score", score).Set("name", "anomaly");
    const double viewArea = static_cast<double>(context.grey.total());
    for (std::size_t index = 0; index < regions.size(); ++index) {
        const Region& region = regions[index];
        std::string points;
        for (const cv::Point2d& point : region.points)
            points += (points.empty() ? "" : " ") + PointText(point);
        red.Add("region")
            .Set("score", region.score)
            .Set("name", "r" + std::to_string(index))
            .Set("area", region.area)
            .Set("perimeter", region.perimeter)
            .Set("center", PointText(region.center))
            .Set("covers", "anomaly")
            .Set("coverage", Number(region.area / viewArea))
            .Set("points", points);
    }
    context.AddResource(red, "score_map", scores, scale);
}

// Occlusion sensitivity: how much the best class loses when a cell of the sample is hidden.
cv::Mat OcclusionMap(const SupportVectorClassifier& classifier, const cv::Mat& sample,
                     std::size_t best) {
    const int cells = 4;
    const double baseline = classifier.Scores(sample)[best];
    const cv::Scalar fill = cv::mean(sample);
    cv::Mat map(cells, cells, CV_32F);
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            cv::Mat hidden = sample.clone();
            hidden(cv::Rect(column * sample.cols / cells, row * sample.rows / cells,
                            sample.cols / cells, sample.rows / cells))
                .setTo(fill);
            map.at<float>(row, column) =
                static_cast<float>(std::max(0.0, baseline - classifier.Scores(hidden)[best]));
        }
    }
    return map;
}

void AnalyseGreen(Context& context) {
    const ParameterReader reader = context.Reader();
    const Classifier& trained = context.tool.definition.classifier;
    const SupportVectorClassifier& classifier =
        context.Classifier(context.RealOr(Role::SamplingDensity, 1));
    const cv::Mat sample = WholeSample(context.grey, trained.sampleSize);
    const std::vector<double> scores = classifier.Scores(sample);
    std::vector<std::size_t> order(scores.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return scores[a] > scores[b]; });
    const double threshold = reader.Real(Role::Threshold);

    const Node green = context.view.Add("green");
    green.Set("threshold", reader.Text(Role::Threshold))
        .Set("exclusive", "true")
        .Set("similarity_reference", "false")
        .Set("uncertainty", 1 - scores[order.front()]);
    for (std::size_t index : order)
        if (scores[index] > 0 && scores[index] >= threshold)
            green.Add("tag").Set("name", trained.classes[index]).Set("score", scores[index]);
    if (reader.Has(Role::Heatmap) && reader.Flag(Role::Heatmap)) {
        cv::Mat map;
        cv::resize(OcclusionMap(classifier, sample, order.front()), map, context.grey.size(), 0, 0,
                   cv::INTER_NEAREST);
        context.AddResource(green, "heat_map", map, 1);
    }
}

struct Feature {
    std::string name;
    cv::Rect2d box;
    double score;
};

std::vector<Feature> LocateFeatures(Context& context) {
    const ParameterReader reader = context.Reader();
    const double density = context.RealOr(Role::SamplingDensity, 1);
    cv::Mat grey = context.grey;
    if (density != 1)
        cv::resize(context.grey, grey, cv::Size(), density, density, cv::INTER_AREA);
    const Ink ink = FindInk(grey);
    const cv::Size2d featureSize = ParseSize(reader.Text(Role::FeatureSize));
    const std::vector<std::string> kept = ParseNames(reader.Text(Role::FeatureFilter));
    const double threshold = reader.Real(Role::Threshold);
    const Classifier& trained = context.tool.definition.classifier;
    const SupportVectorClassifier& classifier = context.Classifier(1);

    std::vector<Feature> features;
    for (const cv::Rect& part : LocateParts(ink.mask, reader.Real(Role::Precision))) {
        const cv::Rect2d box(part.x / density, part.y / density, part.width / density,
                             part.height / density);
        if (featureSize.height > 0 &&
            (box.height < featureSize.height / 2 || box.height > featureSize.height * 2))
            continue;
        if (featureSize.width > 0 && box.width > featureSize.width * 2)
            continue;
        const std::vector<double> scores =
            classifier.Scores(PartSample(ink, part, trained.sampleSize));
        const auto best = std::max_element(scores.begin(), scores.end()) - scores.begin();
        Feature feature{trained.classes[static_cast<std::size_t>(best)], box,
                        scores[static_cast<std::size_t>(best)]};
        if (feature.score < threshold ||
            (!kept.empty() && std::find(kept.begin(), kept.end(), feature.name) == kept.end()))
            continue;
        features.push_back(std::move(feature));
    }
    return features;
}

// The features that a model takes, by index, in reading order.
using Selection = std::vector<std::size_t>;

Selection AtLeast(const std::vector<Feature>& features, double threshold) {
    Selection selection;
    for (std::size_t index = 0; index < features.size(); ++index)
        if (features[index].score >= threshold)
            selection.push_back(index);
    return selection;
}

std::string Read(const std::vector<Feature>& features, const Selection& selection) {
    std::string text;
    for (std::size_t index : selection)
        text += features[index].name;
    return text;
}

double MeanScore(const std::vector<Feature>& features, const Selection& selection) {
    double sum = 0;
    for (std::size_t index : selection)
        sum += features[index].score;
    return selection.empty() ? 0 : sum / static_cast<double>(selection.size());
}

void AddFeatureReferences(const Node& parent, const std::vector<Feature>& features,
                          const Selection& selection, bool withPose) {
    if (withPose && !selection.empty()) {
        const cv::Point2d origin = features[selection.front()].box.tl();
        parent.Add("pose").Set("matrix", cv::format("1,0,0,1,%s,%s", Number(origin.x).c_str(),
                                                    Number(origin.y).c_str()));
    }
    for (std::size_t index : selection)
        parent.Add("feat").Set("idx", static_cast<double>(index));
}

Node AddMatch(const Node& blue, const Model& model, double score) {
    return blue.Add("match")
        .Set("model_id", model.id)
        .Set("model_type", model.type)
        .Set("score", score);
}

void MatchModel(const Node& blue, const Model& model, const ParameterReader& reader,
                const std::vector<Feature>& features) {
    if (model.type == "layout") {
        int filled = 0;
        std::vector<Selection> inside(model.regions.size());
        for (std::size_t region = 0; region < model.regions.size(); ++region) {
            for (std::size_t index = 0; index < features.size(); ++index) {
                const cv::Rect2d& box = features[index].box;
                if (model.regions[region].box.contains((box.tl() + box.br()) * 0.5))
                    inside[region].push_back(index);
            }
            filled += inside[region].size() == 1 ? 1 : 0;
        }
        const double share = model.regions.empty() ? 0 : filled / double(model.regions.size());
        const Node match = AddMatch(blue, model, share);
        match.Set("covers", std::to_string(filled) + "/" + std::to_string(model.regions.size()));
        for (std::size_t region = 0; region < model.regions.size(); ++region) {
            const Node element =
                match.Add("region")
                    .Set("name", model.regions[region].name)
                    .Set("origin", PointText(model.regions[region].box.tl()))
                    .Set("size", SizeText(model.regions[region].box.size()))
                    .Set("occurrences", static_cast<double>(inside[region].size()));
            AddFeatureReferences(element, features, inside[region], false);
        }
        return;
    }
    Selection selection = AtLeast(features, reader.Real(Role::Threshold));
    if (model.type == "string") {
        if (selection.empty() ||
            selection.size() < static_cast<std::size_t>(reader.Integer(Role::MinimumLength)))
            return;
        const Node match = AddMatch(blue, model, MeanScore(features, selection));
        match.Set("string", Read(features, selection));
        AddFeatureReferences(match, features, selection, true);
    } else if (model.type == "regex") {
        const std::string text = Read(features, selection);
        std::smatch found;
        if (!std::regex_search(text, found, std::regex(reader.Text(Role::Regex))) ||
            found.length(0) == 0)
            return;
        selection = Selection(selection.begin() + found.position(0),
                              selection.begin() + found.position(0) + found.length(0));
        const Node match = AddMatch(blue, model, MeanScore(features, selection));
        match
            .Set("covers", std::to_string(found.position(0)) + ":" +
                               std::to_string(found.position(0) + found.length(0)))
            .Set("string", found.str(0))
            .Set("prettified_string", found.str(0));
        AddFeatureReferences(match, features, selection, true);
    } else if (model.type == "node") {
        selection.erase(std::remove_if(selection.begin(), selection.end(),
                                       [&](std::size_t index) {
                                           return features[index].name != model.nodeClass;
                                       }),
                        selection.end());
        if (selection.empty() ||
            static_cast<int>(selection.size()) < reader.Integer(Role::Occurrences))
            return;
        std::string coordinates;
        for (std::size_t index : selection) {
            const cv::Rect2d& box = features[index].box;
            coordinates +=
                (coordinates.empty() ? "" : " ") + PointText((box.tl() + box.br()) * 0.5);
        }
        const Node match = AddMatch(blue, model, MeanScore(features, selection));
        match.Set("covers", std::to_string(selection.size()))
            .Set("node_coords", coordinates)
            .Set("string", model.nodeClass)
            .Set("prettified_string", model.nodeClass + " x" + std::to_string(selection.size()));
        AddFeatureReferences(match, features, selection, true);
    }
}

void AnalyseBlue(Context& context) {
    const std::vector<Feature> features = LocateFeatures(context);
    const Node blue =
        context.view.Add(context.tool.definition.type == "blue_read" ? "blue_read" : "blue");
    blue.Set("oriented", "false")
        .Set("scaled", "false")
        .Set("aspected", "false")
        .Set("show_feature_chiclets", "true")
        .Set("show_rectangular_features", "true");
    for (const Feature& feature : features) {
        blue.Add("feat")
            .Set("id", feature.name)
            .Set("loc", PointText((feature.box.tl() + feature.box.br()) * 0.5))
            .Set("angle", 0.0)
            .Set("size", SizeText(feature.box.size()))
            .Set("score", feature.score)
            .Set("covers", feature.name);
    }
    for (const Model& model : context.tool.definition.models) {
        const ParameterReader reader(ModelParameterRules(model.type), context.tool.values,
                                     ModelPath(model.id, ""));
        if (reader.Flag(Role::Enabled))
            MatchModel(blue, model, reader, features);
    }
}

void AnalyseTool(RunningTool& tool, const cv::Mat& image, const cv::Mat& grey, const Node& root,
                 std::vector<ResourceImage>& resources) {
    using Analyser = void (*)(Context&);
    static const std::map<std::string, Analyser> analysers = {
        {"red", AnalyseRed},     {"red_sua", AnalyseRed},     {"red_quick", AnalyseRed},
        {"green", AnalyseGreen}, {"green_sua", AnalyseGreen}, {"green_quick", AnalyseGreen},
        {"blue", AnalyseBlue},   {"blue_read", AnalyseBlue}};
    const Clock::time_point start = Clock::now();
    const Node marking = root.Add("marking");
    marking.Set("tool_uuid", tool.definition.uuid);
    marking.Add("image_info")
        .Set("size", std::to_string(image.cols) + "x" + std::to_string(image.rows))
        .Set("channels", image.channels())
        .Set("depth", image.depth() == CV_16U ? 16 : 8);
    const Node view = marking.Add("view");
    view.Set("size", SizeText(image.size()))
        .Set("ref_pose", Identity)
        .Set("pose", Identity)
        .Set("group", "");
    Context context{tool, grey, view, resources};
    const Clock::time_point setUp = Clock::now();
    analysers.at(tool.definition.type)(context);
    const Clock::time_point end = Clock::now();
    // The methods write their answer as they go, so their time is all processing; what comes
    // before them is the marking's own setting up.
    marking.Set("duration", Milliseconds(end - start))
        .Set("duration_process_only", Milliseconds(end - setUp))
        .Set("duration_post_process", Milliseconds(setUp - start))
        .Set("processed", UtcNow())
        .Set("processed_device", "cpu");
    for (RunningTool& child : tool.children)
        AnalyseTool(child, image, grey, root, resources);
}

} // namespace

RunningTool::RunningTool(Tool tool)
    : definition(std::move(tool))
    , values(CompleteParameters(definition)) {
    for (const Tool& child : definition.children)
        children.emplace_back(child);
    const bool red = definition.type.rfind("red", 0) == 0;
    if (red ? definition.anomaly.mean.empty() : definition.classifier.samples.empty())
        Refuse("tool '" + definition.id + "' holds no trained data");
}

Analysis Analyse(std::vector<RunningTool>& tools, const cv::Mat& image) {
    tinyxml2::XMLDocument document;
    XMLElement* rootElement = document.NewElement("result");
    document.InsertEndChild(rootElement);
    const Node root(rootElement);
    root.Add("tool").Set("uuid", tools.empty() ? std::string() : tools.front().definition.uuid);
    const Node image_ = root.Add("image");
    const cv::Mat grey = ToGrey8(image);
    Analysis analysis;
    for (RunningTool& tool : tools)
        AnalyseTool(tool, image, grey, image_, analysis.resources);
    tinyxml2::XMLPrinter printer(nullptr, true);
    document.Print(&printer);
    analysis.document = printer.CStr();
    return analysis;
}

} // namespace KeloReference
