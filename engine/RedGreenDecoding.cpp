#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <Vision/Core/Transform2D.h>
#include <Vision/Core/Vect2.h>

#include "Vision/DeepLearning/DLResultGreen.h"
#include "Vision/DeepLearning/DLResultRed.h"
#include "Vision/DeepLearning/DLResultRedRegion.h"
#include "Vision/DeepLearning/DLResultScore.h"
#include "Vision/DeepLearning/DLResultTag.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "engine/NumberText.h"
#include "engine/ResultDecoding.h"
#include "engine/VectorText.h"

namespace Tavrin::Vision::DeepLearning::Private {

using tinyxml2::XMLElement;

namespace {

std::shared_ptr<Vect2> MappedPoint(Transform2DLinear const& transform, PointValue const& point) {
    double x = 0;
    double y = 0;
    transform.MapPoint(point.x, point.y, &x, &y);
    return Brnt::CreateObject<Vect2>(x, y);
}

// Center and points come back in the caller's space; area and perimeter stay in view units.
std::shared_ptr<DLResultRedRegion> CreateResultRedRegion(XMLElement const& region,
                                                         Transform2DLinear const& transform) {
    AttributeReader attributes(region);
    double const score = ParseRealStrict(attributes.Required("score"));
    std::string name = attributes.Required("name");
    double const area = ParseRealStrict(attributes.Required("area"));
    double const perimeter = ParseRealStrict(attributes.Required("perimeter"));
    PointValue const center = ReadPoint(attributes.Required("center"), ",");
    char const* covers = attributes.Required("covers");
    char const* coverage = attributes.Required("coverage");
    std::string_view const pointText = attributes.Required("points");

    std::vector<Vect2Ptr> points;
    points.reserve(static_cast<std::size_t>(std::count(pointText.begin(), pointText.end(), ' ')) +
                   1);
    ForEachPoint(pointText, ",", ' ',
                 [&](PointValue const& point) { points.push_back(MappedPoint(transform, point)); });
    return Brnt::CreateObject<DLResultRedRegion>(
        score, std::move(name), area, perimeter, MappedPoint(transform, center), covers,
        Brnt::CreateObject<Vect2Collection>(std::move(points)), coverage);
}

std::shared_ptr<DLResultTag> CreateGreenTag(XMLElement const& tag) {
    char const* name = RequiredAttribute(tag, "name");
    return Brnt::CreateObject<DLResultTag>(name, ParseRealStrict(RequiredAttribute(tag, "score")));
}

} // namespace

std::shared_ptr<DLResultRed> CreateRedResult(XMLElement const& red, ToolPtr const& tool,
                                             bool addImageRecords,
                                             std::shared_ptr<Vect2> const& viewSize,
                                             TransformPtr const& pose) {
    // A score map under red is resampled to the view.
    auto resources = CreateResourcesIf(addImageRecords, red, viewSize);

    XMLElement const& scoreElement = RequiredChild(red, "score");
    char const* scoreName = RequiredAttribute(scoreElement, "name");
    auto scoreObject = Brnt::CreateObject<DLResultScore>(
        scoreName, ParseRealStrict(RequiredAttribute(scoreElement, "score")));

    std::vector<DLResultRedRegionPtr> regions;
    ForEachChild(red, "region", [&](XMLElement const& region) {
        regions.push_back(CreateResultRedRegion(region, *pose));
    });
    auto regionCollection =
        Brnt::CreateObject<DLResultRedRegionReadOnlyCollection>(std::move(regions));

    double const score = ParseRealStrict(RequiredAttribute(red, "score"));
    double const filteredScore = ParseRealStrict(RequiredAttribute(red, "filtered_score"));
    char const* thresholds = RequiredAttribute(red, "threshold");
    // The one attribute of its family that may be missing.
    char const* mode = red.Attribute("mode");
    return Brnt::CreateObject<DLResultRed>(tool->Id(), score, filteredScore, thresholds,
                                           mode ? mode : "", std::move(resources),
                                           std::move(scoreObject), std::move(regionCollection));
}

std::shared_ptr<DLResultGreen> CreateGreenResult(XMLElement const& green, ToolPtr const& tool,
                                                 bool addImageRecords) {
    double const threshold = ParseRealStrict(RequiredAttribute(green, "threshold"));
    bool const exclusive = BoolAttribute(green, "exclusive", false);
    bool const similarityReference = BoolAttribute(green, "similarity_reference", false);
    double const uncertainty = ParseRealStrict(RequiredAttribute(green, "uncertainty"));
    // Nothing under green has a position: its score maps keep the engine's own size.
    auto resources = CreateResourcesIf(addImageRecords, green, nullptr);

    std::vector<DLResultTagPtr> tags;
    ForEachChild(green, "tag", [&](XMLElement const& tag) { tags.push_back(CreateGreenTag(tag)); });
    return Brnt::CreateObject<DLResultGreen>(
        tool->Id(), threshold, exclusive, similarityReference, uncertainty,
        Brnt::CreateObject<DLResultTagReadOnlyCollection>(std::move(tags)), std::move(resources));
}

} // namespace Tavrin::Vision::DeepLearning::Private
