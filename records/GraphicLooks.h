#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <Vision/Core/Color32.h>
#include <Vision/Core/GraphicCollection.h>
#include <Vision/Core/GraphicLabel.h>
#include <Vision/Core/Object.h>

namespace Tavrin::Vision::DeepLearning::Records {

// The fixed palette of run graphics; nothing of it is configurable.
namespace Palette {
inline constexpr Color32 Blue = 0xff0000ff;
inline constexpr Color32 Black = 0xff000000;
inline constexpr Color32 Red = 0xffff0000;
inline constexpr Color32 Yellow = 0xffffff00;
inline constexpr Color32 Grey = 0xff808080;
inline constexpr Color32 NodeLink = 0xff00cece;
} // namespace Palette

inline constexpr int RunLineWidth = 2;

// A run's graphics are gathered in a plain list and handed to their collection in one piece,
// sparing each graphic the collection's insertion events.
using GraphicList = std::vector<IGraphicPtr>;

// Sets the look and lists the graphic, in that order, so the list only ever holds finished
// graphics.
template <class Graphic>
void AddStyled(GraphicList& graphics, std::shared_ptr<Graphic> graphic, Color32 color,
               int lineStyle = LineStyleConstants_Solid, int lineWidth = RunLineWidth) {
    graphic->setColor(color);
    graphic->setLineStyle(lineStyle);
    graphic->setLineWidthInScreenPixels(lineWidth);
    graphics.emplace_back(std::move(graphic));
}

struct LabelLook {
    GraphicLabelAlignmentConstants alignment;
    Color32 background;
    Color32 text;
};

inline void AddLabel(GraphicList& graphics, double x, double y, std::string const& text,
                     LabelLook const& look, double rotation) {
    auto label = Brnt::CreateObject<GraphicLabel>();
    label->SetXYText(x, y, text);
    label->setAlignment(look.alignment);
    label->setBackgroundColor(look.background);
    label->setColor(look.text);
    label->setRotation(rotation);
    graphics.emplace_back(std::move(label));
}

} // namespace Tavrin::Vision::DeepLearning::Records
