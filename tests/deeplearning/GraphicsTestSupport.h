#pragma once

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <Vision/Core/Ellipse.h>
#include <Vision/Core/GraphicCollection.h>
#include <Vision/Core/GraphicLabel.h>
#include <Vision/Core/LineSegment.h>
#include <Vision/Core/PointMarker.h>
#include <Vision/Core/Polygon.h>
#include <Vision/Core/RectangleAffine.h>

// Graphics as short texts, so that a test compares a whole drawing in one expectation: each
// graphic's kind, geometry to three decimals and look.
namespace GraphicTexts {

using namespace Tavrin::Vision;
using Texts = std::vector<std::string>;

inline std::string Number(double value) {
    double const rounded = std::round(value * 1000) / 1000;
    std::ostringstream text;
    text << (rounded == 0 ? 0.0 : rounded);
    return text.str();
}
inline std::string At(double x, double y) {
    return Number(x) + "," + Number(y);
}
inline std::string Hex(Color32 color) {
    std::ostringstream text;
    text << std::hex << color.Value();
    return text.str();
}
inline std::string Look(IGraphic const& graphic) {
    return " " + Hex(graphic.Color()) + " w" + std::to_string(graphic.LineWidthInScreenPixels());
}

inline std::string Describe(IGraphicPtr const& graphic) {
    if (auto s = std::dynamic_pointer_cast<LineSegment>(graphic))
        return "segment " + At(s->StartX(), s->StartY()) + " " + At(s->EndX(), s->EndY()) +
               (s->EndPointAdornment() == LineSegmentAdornmentConstants_Arrow ? " arrow" : "") +
               Look(*s);
    if (auto e = std::dynamic_pointer_cast<Ellipse>(graphic))
        return "ellipse " + At(e->CenterX(), e->CenterY()) + " " + At(e->RadiusX(), e->RadiusY()) +
               " " + Number(e->Rotation()) + Look(*e);
    if (auto m = std::dynamic_pointer_cast<PointMarker>(graphic))
        return "marker " + At(m->X(), m->Y()) + " " + Number(m->Rotation()) + " size" +
               std::to_string(m->SizeInScreenPixels()) + Look(*m);
    if (auto p = std::dynamic_pointer_cast<Polygon>(graphic)) {
        std::string text = "polygon";
        for (int index = 0; index < p->VertexCount(); ++index)
            text += " " + At(p->Vertex(index)->X(), p->Vertex(index)->Y());
        return text + " style" + std::to_string(p->LineStyle()) + Look(*p);
    }
    if (auto r = std::dynamic_pointer_cast<RectangleAffine>(graphic))
        return "rect " + At(r->CornerOriginX(), r->CornerOriginY()) + " " +
               At(r->CornerXX(), r->CornerXY()) + " " + At(r->CornerYX(), r->CornerYY()) + Look(*r);
    auto l = std::dynamic_pointer_cast<GraphicLabel>(graphic);
    return "label '" + l->Text() + "' " + At(l->X(), l->Y()) + " " + Number(l->Rotation()) +
           " align" + std::to_string(l->Alignment()) + " " + Hex(l->Color()) + " on " +
           Hex(l->BackgroundColor());
}

inline Texts Described(GraphicCollection const& graphics) {
    Texts texts;
    for (auto const& graphic : graphics)
        texts.push_back(Describe(graphic));
    return texts;
}

// The kinds in drawing order, labels by their text.
inline std::string Sketched(GraphicCollection const& graphics) {
    std::string sketch;
    for (auto const& graphic : graphics) {
        std::string const description = Describe(graphic);
        auto label = std::dynamic_pointer_cast<GraphicLabel>(graphic);
        sketch +=
            (label ? "'" + label->Text() + "' " : description.substr(0, description.find(' ') + 1));
    }
    return sketch;
}

} // namespace GraphicTexts
