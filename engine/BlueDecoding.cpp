#include <cstring>
#include <string>
#include <vector>

#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>

#include "Vision/DeepLearning/DLBlueFeature.h"
#include "Vision/DeepLearning/DLResultBlue.h"
#include "Vision/DeepLearning/DLResultBlueMatchRegion.h"
#include "Vision/DeepLearning/DLResultMatchLayout.h"
#include "Vision/DeepLearning/DLResultMatchNode.h"
#include "Vision/DeepLearning/DLResultMatchRegex.h"
#include "Vision/DeepLearning/DLResultMatchString.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/NumberText.h"
#include "engine/ResultDecoding.h"
#include "engine/VectorText.h"

namespace Tavrin::Vision::DeepLearning::Private {

using tinyxml2::XMLElement;

namespace {

using Features = std::vector<DLBlueFeaturePtr>;

// The rectangle of the given center and sides, mapped into the caller's space.
std::shared_ptr<RectangleAffine> MappedRectangle(double centerX, double centerY, PointValue size,
                                                 double rotation, Transform2DLinear const& pose) {
    return RectangleAffine::MapCenterLengthsRotationSkew(pose, centerX, centerY, size.x, size.y,
                                                         rotation, 0);
}

std::shared_ptr<DLBlueFeature> CreateBlueFeature(XMLElement const& feat,
                                                 Transform2DLinear const& pose) {
    AttributeReader attributes(feat);
    std::string id = attributes.Required("id");
    PointValue const location = ReadPoint(attributes.Required("loc"), ",");
    double const angle = ParseRealStrict(attributes.Required("angle"));
    PointValue const size = ReadPoint(attributes.Required("size"), "x");
    double const score = ParseRealStrict(attributes.Required("score"));
    char const* covers = attributes.Required("covers");
    return Brnt::CreateObject<DLBlueFeature>(
        std::move(id), MappedRectangle(location.x, location.y, size, angle, pose), score, covers);
}

// References by number into the element's feature list: the same objects, in the order and
// with the repetitions written. A missing idx selects the first feature.
std::shared_ptr<DLBlueFeatureReadOnlyCollection>
SelectMatchingBlueFeaturesFromList(XMLElement const& element, Features const& features) {
    Features selection;
    ForEachChild(element, "feat", [&](XMLElement const& feat) {
        std::int64_t const index = Int64Attribute(feat, "idx", 0);
        if (index < 0 || index >= static_cast<std::int64_t>(features.size()))
            ThrowBadDocument("a feature index lies outside the feature list");
        selection.push_back(features[static_cast<std::size_t>(index)]);
    });
    return Brnt::CreateObject<DLBlueFeatureReadOnlyCollection>(selection);
}

// A pose written in the match is taken into the caller's space; without one the match has a
// plain identity, not the view's pose.
TransformPtr MatchPose(XMLElement const& match, TransformPtr const& pose) {
    if (auto const* element = match.FirstChildElement("pose"))
        return pose->Compose(*ParseTransform2DLinear(RequiredAttribute(*element, "matrix")));
    return Brnt::CreateObject<Transform2DLinear>();
}

std::shared_ptr<DLResultBlueMatchRegion> CreateBlueMatchRegion(XMLElement const& region,
                                                               Features const& features,
                                                               Transform2DLinear const& pose) {
    std::string name = RequiredAttribute(region, "name");
    PointValue const origin = ReadPoint(RequiredAttribute(region, "origin"), ",");
    PointValue const size = ReadPoint(RequiredAttribute(region, "size"), "x");
    int const occurrences = IntAttribute(region, "occurrences", 0);
    auto selection = SelectMatchingBlueFeaturesFromList(region, features);
    // The engine gives the corner; the rectangle is set from its center.
    return Brnt::CreateObject<DLResultBlueMatchRegion>(
        std::move(name),
        MappedRectangle(origin.x + size.x * 0.5, origin.y + size.y * 0.5, size, 0, pose),
        occurrences, std::move(selection));
}

std::shared_ptr<DLResultMatch> CreateLayoutMatch(XMLElement const& match, Features const& features,
                                                 TransformPtr const& pose, char const* modelId,
                                                 char const* modelType, double score) {
    std::string const covers = RequiredAttribute(match, "covers");
    std::vector<DLResultBlueMatchRegionPtr> regions;
    ForEachChild(match, "region", [&](XMLElement const& region) {
        regions.push_back(CreateBlueMatchRegion(region, features, *pose));
    });
    return Brnt::CreateObject<DLResultMatchLayout>(
        modelId, modelType, score, covers,
        Brnt::CreateObject<DLResultBlueMatchRegionReadOnlyCollection>(std::move(regions)));
}

std::shared_ptr<DLResultMatch> CreateNodeMatch(XMLElement const& match, Features const& features,
                                               TransformPtr const& pose, char const* modelId,
                                               char const* modelType, double score) {
    std::string const covers = RequiredAttribute(match, "covers");
    std::string const nodeCoords = RequiredAttribute(match, "node_coords");
    std::string const string = RequiredAttribute(match, "string");
    std::string const prettified = RequiredAttribute(match, "prettified_string");
    auto matchPose = MatchPose(match, pose);
    return Brnt::CreateObject<DLResultMatchNode>(
        modelId, modelType, score, covers, nodeCoords, string, prettified, std::move(matchPose),
        SelectMatchingBlueFeaturesFromList(match, features));
}

std::shared_ptr<DLResultMatch> CreateRegexMatch(XMLElement const& match, Features const& features,
                                                TransformPtr const& pose, char const* modelId,
                                                char const* modelType, double score) {
    std::string covers = RequiredAttribute(match, "covers");
    std::string string = RequiredAttribute(match, "string");
    std::string prettified = RequiredAttribute(match, "prettified_string");
    auto matchPose = MatchPose(match, pose);
    return Brnt::CreateObject<DLResultMatchRegex>(
        modelId, modelType, score, std::move(covers), std::move(string), std::move(prettified),
        std::move(matchPose), SelectMatchingBlueFeaturesFromList(match, features));
}

std::shared_ptr<DLResultMatch> CreateStringMatch(XMLElement const& match, Features const& features,
                                                 TransformPtr const& pose, char const* modelId,
                                                 char const* modelType, double score) {
    std::string const string = RequiredAttribute(match, "string");
    auto matchPose = MatchPose(match, pose);
    return Brnt::CreateObject<DLResultMatchString>(
        modelId, modelType, score, string, std::move(matchPose),
        SelectMatchingBlueFeaturesFromList(match, features));
}

using MatchDecoder = std::shared_ptr<DLResultMatch> (*)(XMLElement const&, Features const&,
                                                        TransformPtr const&, char const*,
                                                        char const*, double);

struct MatchKind {
    char const* modelType;
    MatchDecoder decode;
};

// Tried in this order; the word must be exactly one of these.
constexpr MatchKind MatchKinds[] = {
    {"layout", &CreateLayoutMatch},
    {"node", &CreateNodeMatch},
    {"regex", &CreateRegexMatch},
    {"string", &CreateStringMatch},
};

std::shared_ptr<DLResultMatch>
CreateResultMatchPtr(XMLElement const& match, Features const& features, TransformPtr const& pose) {
    char const* modelId = RequiredAttribute(match, "model_id");
    char const* modelType = RequiredAttribute(match, "model_type");
    // Unlike the other scores of the document, a bad text here reads as 0.
    double const score = DoubleAttribute(match, "score", 0);
    for (MatchKind const& kind : MatchKinds)
        if (std::strcmp(modelType, kind.modelType) == 0)
            return kind.decode(match, features, pose, modelId, modelType, score);
    throw DeepLearningException(DeepLearningExceptionCodes::CannotParseResult,
                                ExceptionTexts::CannotParseResult);
}

} // namespace

std::shared_ptr<DLResultBlue> CreateBlueResult(XMLElement const& blue, ToolPtr const& tool,
                                               TransformPtr const& pose) {
    bool const oriented = BoolAttribute(blue, "oriented", false);
    bool const scaled = BoolAttribute(blue, "scaled", false);
    bool const aspected = BoolAttribute(blue, "aspected", false);
    bool const showChiclets = BoolAttribute(blue, "show_feature_chiclets", false);
    bool const showRectangular = BoolAttribute(blue, "show_rectangular_features", false);

    // The order of the list gives the numbers that matches refer to.
    Features features;
    ForEachChild(blue, "feat", [&](XMLElement const& feat) {
        features.push_back(CreateBlueFeature(feat, *pose));
    });
    auto featureCollection = Brnt::CreateObject<DLBlueFeatureReadOnlyCollection>(features);

    std::vector<DLResultMatchPtr> matches;
    ForEachChild(blue, "match", [&](XMLElement const& match) {
        matches.push_back(CreateResultMatchPtr(match, features, pose));
    });
    return Brnt::CreateObject<DLResultBlue>(
        tool->Id(), oriented, scaled, aspected, showChiclets, showRectangular,
        std::move(featureCollection),
        Brnt::CreateObject<DLResultMatchReadOnlyCollection>(std::move(matches)));
}

} // namespace Tavrin::Vision::DeepLearning::Private
