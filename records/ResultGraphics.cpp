#include "records/ResultGraphics.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <Vision/Core/Polygon.h>
#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>
#include <Vision/Core/Vect2.h>

#include "Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLHdmRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLQuickGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLQuickRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLResult.h"
#include "Vision/DeepLearning/DLResultGreen.h"
#include "Vision/DeepLearning/DLResultMarking.h"
#include "Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultRed.h"
#include "Vision/DeepLearning/DLResultRedRegionReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultTagReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultView.h"
#include "Vision/DeepLearning/DLResultViewReadOnlyCollection.h"
#include "records/BlueGraphics.h"
#include "records/GraphicLooks.h"

namespace Tavrin::Vision::DeepLearning::Records {

namespace {

constexpr std::size_t GreenLabelTagLimit = 3;

// Drawn twice, solid black under broken grey, so the outline shows on light and dark images.
void AddRegionGraphics(GraphicList& graphics, DLResultView const& view) {
    auto const solid = view.Region()->Copy(CopyShapeConstants_GeometryOnly);
    AddStyled(graphics, solid, Palette::Black);
    AddStyled(graphics, solid->Copy(CopyShapeConstants_All), Palette::Grey,
              LineStyleConstants_Dash);
}

void AddRedRegionGraphics(GraphicList& graphics, DLResultRedRegion const& region) {
    auto polygon = Brnt::CreateObject<Polygon>();
    for (auto const& point : *region.Points())
        polygon->AddVertex(point->X(), point->Y(), -1);
    AddStyled(graphics, std::move(polygon), Palette::Red, LineStyleConstants_Dash);
}

std::string Percent(double score) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", score * 100.0);
    return text;
}

// "Marked: " and the best three tags with their scores in percent, best first.
std::string GreenLabelText(DLResultGreen const& green) {
    std::vector<DLResultTagPtr> tags;
    if (auto const all = green.Tags())
        tags.assign(all->begin(), all->end());
    std::sort(tags.begin(), tags.end(),
              [](auto const& left, auto const& right) { return left->Score() > right->Score(); });
    std::string text = "Marked: ";
    std::size_t const shown = std::min(tags.size(), GreenLabelTagLimit);
    for (std::size_t i = 0; i < shown; ++i) {
        text += tags[i]->Name() + " " + Percent(tags[i]->Score()) + "%";
        if (i + 1 < shown)
            text += ", ";
    }
    return text;
}

// The label sits at the region's corner on its Y side, turned with the view.
void AddGreenLabel(GraphicList& graphics, DLResultView const& view) {
    auto const green = view.ResultGreen();
    if (!green)
        return;
    auto const& pose = *view.Pose();
    auto const local = view.Region()->MapLinear(*pose.Invert(), CopyShapeConstants_GeometryOnly);
    double x = 0;
    double y = 0;
    pose.MapPoint(0, local->SideYLength(), &x, &y);
    AddLabel(graphics, x, y, GreenLabelText(*green),
             {GraphicLabelAlignmentConstants_CenterLeft, Palette::Black, Palette::Yellow},
             pose.Rotation());
}

template <class Tool> bool ShowsGraphics(DLToolRuntimeParams const& tool) {
    return dynamic_cast<Tool const&>(tool).ShowGraphics();
}

template <class Tool>
void DrawRed(GraphicList& graphics, DLResultView const& view, DLToolRuntimeParams const& tool) {
    if (!ShowsGraphics<Tool>(tool))
        return;
    auto const red = view.ResultRed();
    if (!red || !red->ResultRegions())
        return;
    for (auto const& region : *red->ResultRegions())
        AddRedRegionGraphics(graphics, *region);
}

template <class Tool>
void DrawGreen(GraphicList& graphics, DLResultView const& view, DLToolRuntimeParams const& tool) {
    if (ShowsGraphics<Tool>(tool))
        AddGreenLabel(graphics, view);
}

template <bool IsRead>
void DrawBlue(GraphicList& graphics, DLResultView const& view, DLToolRuntimeParams const& tool) {
    AddBlueGraphics(graphics, view, IsRead, tool);
}

using DrawFamily = void (*)(GraphicList&, DLResultView const&, DLToolRuntimeParams const&);

struct FamilyDrawing {
    char const* type;
    DrawFamily draw;
};

// A tool type outside this table draws nothing beyond its region.
constexpr FamilyDrawing FamilyDrawings[] = {
    {"blue", &DrawBlue<false>},
    {"blue_read", &DrawBlue<true>},
    {"red", &DrawRed<DLFocusedModeRedToolRuntimeParams>},
    {"red_sua", &DrawRed<DLHdmRedToolRuntimeParams>},
    {"red_quick", &DrawRed<DLQuickRedToolRuntimeParams>},
    {"green", &DrawGreen<DLFocusedModeGreenToolRuntimeParams>},
    {"green_sua", &DrawGreen<DLHdmGreenToolRuntimeParams>},
    {"green_quick", &DrawGreen<DLQuickGreenToolRuntimeParams>},
};

void AddViewGraphics(GraphicList& graphics, DLResultView const& view,
                     DLToolRuntimeParams const& tool) {
    if (tool.ShowRegion())
        AddRegionGraphics(graphics, view);
    std::string const type = tool.Type();
    for (auto const& family : FamilyDrawings)
        if (type == family.type)
            return family.draw(graphics, view, tool);
}

} // namespace

std::shared_ptr<GraphicCollection> BuildResultGraphics(DLResult const& result) {
    GraphicList graphics;
    for (auto const& marking : *result.ResultImage()->ResultMarking()) {
        auto const tool = marking->Tool();
        if (!tool)
            continue;
        for (auto const& view : *marking->ResultViews())
            AddViewGraphics(graphics, *view, *tool);
    }
    return Brnt::CreateObject<GraphicCollection>(std::move(graphics));
}

} // namespace Tavrin::Vision::DeepLearning::Records
