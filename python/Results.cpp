#include <pybind11/stl.h>

#include <nlohmann/json.hpp>

#include "Bindings.h"
#include "Images.h"
#include "ResultWriters.h"

namespace py = pybind11;

namespace TavrinPython {
namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;

// Every list of the tree as a Python list; an absent collection is an empty list.
template <class Collection> auto ListOf(const std::shared_ptr<Collection>& collection) {
    using Element = typename std::decay_t<decltype(*collection->begin())>;
    return collection ? std::vector<Element>(collection->begin(), collection->end())
                      : std::vector<Element>();
}

py::tuple PointOf(const Vect2& point) {
    return py::make_tuple(point.X(), point.Y());
}

template <class Result> auto ResourcesOf(const Result& result) {
    return ListOf(result.ResultResources());
}

void BindGeometry(py::module_& module) {
    py::class_<Transform2DLinear, std::shared_ptr<Transform2DLinear>>(
        module, "Pose", "A linear map of the plane: x' = a x + b y + tx, y' = c x + d y + ty.")
        .def_property_readonly("matrix", [](const Transform2DLinear& pose) {
            return py::make_tuple(py::make_tuple(pose.A(), pose.B(), pose.TX()),
                                  py::make_tuple(pose.C(), pose.D(), pose.TY()));
        });
    py::class_<RectangleAffine, std::shared_ptr<RectangleAffine>>(
        module, "Box", "A rotated, skewed rectangle in image pixels.")
        .def_property_readonly(
            "center",
            [](const RectangleAffine& box) { return py::make_tuple(box.CenterX(), box.CenterY()); })
        .def_property_readonly("size",
                               [](const RectangleAffine& box) {
                                   return py::make_tuple(box.SideXLength(), box.SideYLength());
                               })
        .def_property_readonly("rotation", &RectangleAffine::Rotation)
        .def_property_readonly("skew", &RectangleAffine::Skew)
        .def_property_readonly("corners", [](const RectangleAffine& box) {
            return py::make_tuple(py::make_tuple(box.CornerOriginX(), box.CornerOriginY()),
                                  py::make_tuple(box.CornerXX(), box.CornerXY()),
                                  py::make_tuple(box.CornerOppositeX(), box.CornerOppositeY()),
                                  py::make_tuple(box.CornerYX(), box.CornerYY()));
        });
}

void BindResources(py::module_& module) {
    py::class_<DLResultResource, std::shared_ptr<DLResultResource>>(
        module, "Resource", "An image a tool attached to its answer, such as a heat map.")
        .def_property_readonly("name", &DLResultResource::Name)
        .def_property_readonly("type", &DLResultResource::Type)
        .def_property_readonly("uuid", &DLResultResource::UUID)
        .def_property_readonly("scale", &DLResultResource::Scale)
        .def_property_readonly(
            "image",
            [](const DLResultResource& resource) -> py::object {
                const auto image = resource.Image();
                if (!image)
                    return py::none();
                return ToArray(TavrinCli::FromVisionImage(*image, TavrinCli::ChannelOrder::Rgb));
            },
            "The pels as a new array (grey HxW, colour HxWx3 in RGB), or None.");
}

void BindRed(py::module_& module) {
    py::class_<DLResultRedRegion, std::shared_ptr<DLResultRedRegion>>(module, "RedRegion")
        .def_property_readonly("name", &DLResultRedRegion::Name)
        .def_property_readonly("score", &DLResultRedRegion::Score)
        .def_property_readonly("area", &DLResultRedRegion::Area)
        .def_property_readonly("perimeter", &DLResultRedRegion::Perimeter)
        .def_property_readonly("center",
                               [](const DLResultRedRegion& region) -> py::object {
                                   if (const auto center = region.Center())
                                       return PointOf(*center);
                                   return py::none();
                               })
        .def_property_readonly("covers", &DLResultRedRegion::Covers)
        .def_property_readonly("coverage", &DLResultRedRegion::Coverage)
        .def_property_readonly("points", [](const DLResultRedRegion& region) {
            py::list points;
            for (const auto& point : ListOf(region.Points()))
                points.append(PointOf(*point));
            return points;
        });
    py::class_<DLResultScore, std::shared_ptr<DLResultScore>>(module, "Score")
        .def_property_readonly("name", &DLResultScore::Name)
        .def_property_readonly("score", &DLResultScore::Score);
    py::class_<DLResultRed, std::shared_ptr<DLResultRed>>(module, "RedResult")
        .def_property_readonly("score", &DLResultRed::Score)
        .def_property_readonly("filtered_score", &DLResultRed::FilteredScore)
        .def_property_readonly("thresholds", &DLResultRed::Thresholds)
        .def_property_readonly("supervised_mode", &DLResultRed::SupervisedMode)
        .def_property_readonly("overall", &DLResultRed::ResultScore)
        .def_property_readonly("resources", &ResourcesOf<DLResultRed>)
        .def_property_readonly("anomalous",
                               [](const DLResultRed& red) {
                                   return red.ResultRegions() && red.ResultRegions()->Count() > 0;
                               })
        .def_property_readonly("regions",
                               [](const DLResultRed& red) { return ListOf(red.ResultRegions()); });
}

void BindGreen(py::module_& module) {
    py::class_<DLResultTag, std::shared_ptr<DLResultTag>>(module, "Tag")
        .def_property_readonly("name", &DLResultTag::Name)
        .def_property_readonly("score", &DLResultTag::Score)
        .def("__repr__", [](const DLResultTag& tag) {
            return "Tag(" + tag.Name() + ", " + std::to_string(tag.Score()) + ")";
        });
    py::class_<DLResultGreen, std::shared_ptr<DLResultGreen>>(module, "GreenResult")
        .def_property_readonly("tags",
                               [](const DLResultGreen& green) { return ListOf(green.Tags()); })
        .def_property_readonly("best_tag", &DLResultGreen::BestTag)
        .def_property_readonly("threshold", &DLResultGreen::Threshold)
        .def_property_readonly("exclusive", &DLResultGreen::Exclusive)
        .def_property_readonly("similarity_reference", &DLResultGreen::SimilarityReference)
        .def_property_readonly("resources", &ResourcesOf<DLResultGreen>)
        .def_property_readonly("uncertainty", &DLResultGreen::Uncertainty);
}

// What the string, regex and node matches have alike.
template <class Match, class Bound> void BindReadMatch(Bound& bound) {
    bound.def_property_readonly("pose", &Match::Pose)
        .def_property_readonly("features",
                               [](const Match& match) { return ListOf(match.Features()); });
}

void BindBlue(py::module_& module) {
    py::class_<DLBlueFeature, std::shared_ptr<DLBlueFeature>>(module, "Feature")
        .def_property_readonly("name", &DLBlueFeature::Id)
        .def_property_readonly("score", &DLBlueFeature::Score)
        .def_property_readonly("box", &DLBlueFeature::Rectangle)
        .def_property_readonly("covers", &DLBlueFeature::Covers);
    py::class_<DLResultMatch, std::shared_ptr<DLResultMatch>>(module, "Match")
        .def_property_readonly("model", &DLResultMatch::ModelID)
        .def_property_readonly("type", &DLResultMatch::ModelType)
        .def_property_readonly("score", &DLResultMatch::Score);
    py::class_<DLResultMatchString, DLResultMatch, std::shared_ptr<DLResultMatchString>> string(
        module, "StringMatch");
    string.def_property_readonly("text", &DLResultMatchString::MatchString);
    BindReadMatch<DLResultMatchString>(string);
    py::class_<DLResultMatchRegex, DLResultMatch, std::shared_ptr<DLResultMatchRegex>> regex(
        module, "RegexMatch");
    regex.def_property_readonly("text", &DLResultMatchRegex::String)
        .def_property_readonly("prettified", &DLResultMatchRegex::PrettifiedString);
    BindReadMatch<DLResultMatchRegex>(regex);
    py::class_<DLResultMatchNode, DLResultMatch, std::shared_ptr<DLResultMatchNode>> node(
        module, "NodeMatch");
    node.def_property_readonly("text", &DLResultMatchNode::String)
        .def_property_readonly("prettified", &DLResultMatchNode::PrettifiedString)
        .def_property_readonly("node_coords", &DLResultMatchNode::NodeCoords)
        .def_property_readonly("covers", &DLResultMatchNode::Covers);
    BindReadMatch<DLResultMatchNode>(node);
    py::class_<DLResultBlueMatchRegion, std::shared_ptr<DLResultBlueMatchRegion>>(
        module, "LayoutRegion", "A region of a layout match and the features found in it.")
        .def_property_readonly("name", &DLResultBlueMatchRegion::Name)
        .def_property_readonly("box", &DLResultBlueMatchRegion::Rectangle)
        .def_property_readonly("occurrences", &DLResultBlueMatchRegion::Occurrences)
        .def_property_readonly("features", [](const DLResultBlueMatchRegion& region) {
            return ListOf(region.Features());
        });
    py::class_<DLResultMatchLayout, DLResultMatch, std::shared_ptr<DLResultMatchLayout>>(
        module, "LayoutMatch")
        .def_property_readonly("covers", &DLResultMatchLayout::Covers)
        .def_property_readonly("regions", [](const DLResultMatchLayout& layout) {
            return ListOf(layout.Regions());
        });
    py::class_<DLResultBlue, std::shared_ptr<DLResultBlue>>(module, "BlueResult")
        .def_property_readonly("oriented", &DLResultBlue::Oriented)
        .def_property_readonly("scaled", &DLResultBlue::Scaled)
        .def_property_readonly("aspected", &DLResultBlue::Aspected)
        .def_property_readonly("features",
                               [](const DLResultBlue& blue) { return ListOf(blue.Features()); })
        .def_property_readonly("matches",
                               [](const DLResultBlue& blue) { return ListOf(blue.Matches()); });
}

void BindTree(py::module_& module) {
    py::class_<DLResultView, std::shared_ptr<DLResultView>>(
        module, "View", "One region of the image with at most one result of each kind.")
        .def_property_readonly("region", &DLResultView::Region)
        .def_property_readonly("pose", &DLResultView::Pose)
        .def_property_readonly("ref_pose", &DLResultView::RefPose)
        .def_property_readonly("resources",
                               [](const DLResultView& view) { return ListOf(view.Resources()); })
        .def_property_readonly("red", &DLResultView::ResultRed)
        .def_property_readonly("green", &DLResultView::ResultGreen)
        .def_property_readonly("blue", &DLResultView::ResultBlue);
    py::class_<DLResultImageInfo, std::shared_ptr<DLResultImageInfo>>(
        module, "ImageInfo", "The image as the engine saw it.")
        .def_property_readonly("width", &DLResultImageInfo::ImageWidth)
        .def_property_readonly("height", &DLResultImageInfo::ImageHeight)
        .def_property_readonly("channels", &DLResultImageInfo::Channels)
        .def_property_readonly("depth", &DLResultImageInfo::Depth);
    py::class_<DLResultMarking, std::shared_ptr<DLResultMarking>>(
        module, "Marking", "What one tool found in the image.")
        .def_property_readonly("tool", &DLResultMarking::Tool)
        .def_property_readonly("duration_ms", &DLResultMarking::Duration)
        .def_property_readonly("process_ms", &DLResultMarking::DurationProcessOnly)
        .def_property_readonly("post_process_ms", &DLResultMarking::DurationPostProcess)
        .def_property_readonly("processed_device", &DLResultMarking::ProcessedDevice)
        .def_property_readonly("processed_at", &DLResultMarking::ProcessedAt)
        .def_property_readonly("image_info", &DLResultMarking::ImageInfo)
        .def_property_readonly(
            "views", [](const DLResultMarking& marking) { return ListOf(marking.ResultViews()); });
    py::class_<RunResult>(module, "Result", "The result of one run of a stream on an image.")
        .def_property_readonly("image", [](const RunResult& run) { return run.image; })
        .def_property_readonly("stream", [](const RunResult& run) { return run.stream; })
        .def_property_readonly("markings",
                               [](const RunResult& run) {
                                   const auto image = run.result->ResultImage();
                                   return image ? ListOf(image->ResultMarking())
                                                : std::vector<std::shared_ptr<DLResultMarking>>();
                               })
        .def_property_readonly("answers",
                               [](const RunResult& run) {
                                   py::dict answers;
                                   for (const auto& answer : TavrinCli::AnswersOf(*run.result))
                                       answers[py::str(answer.tool)] =
                                           py::make_tuple(answer.answer, answer.score);
                                   return answers;
                               })
        .def(
            "to_dict",
            [](const RunResult& run) {
                const std::string line =
                    TavrinCli::ResultJson(run.image, run.stream, *run.result).dump();
                return py::module_::import("json").attr("loads")(line);
            },
            "The run's JSON line of tavrin-dl run, as a dict.");
}

} // namespace

void BindResults(py::module_& module) {
    BindGeometry(module);
    BindResources(module);
    BindRed(module);
    BindGreen(module);
    BindBlue(module);
    BindTree(module);
}

} // namespace TavrinPython
