#pragma once

#include <memory>
#include <string>

#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// A text at an anchor point, drawn in the graphic's colour over its own background colour.
class GraphicLabel : public GraphicInteractiveBase {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfXYText = sf0_;
    static constexpr long long SfAlignment = sf0_ << 1;
    static constexpr long long SfBackgroundColor = sf0_ << 2;
    static constexpr long long SfRotation = sf0_ << 3;
    static constexpr long long sfNextSf_ = sf0_ << 4;

    explicit GraphicLabel(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(GraphicLabel)

    void SetXYText(double x, double y, std::string const& text);
    double X() const { return x_; }
    double Y() const { return y_; }
    std::string const& Text() const { return text_; }

    GraphicLabelAlignmentConstants Alignment() const { return alignment_; }
    void setAlignment(GraphicLabelAlignmentConstants alignment);
    // Transparent by default.
    Color32 BackgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(Color32 color);
    // Radians; the text turns about its anchor.
    double Rotation() const { return rotation_; }
    void setRotation(double rotation);

    // The background colour counts as a decoration of the look.
    std::shared_ptr<GraphicLabel> Copy(CopyShapeConstants mode) const;

private:
    GraphicLabel() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double x_ = 0;
    double y_ = 0;
    std::string text_;
    GraphicLabelAlignmentConstants alignment_ = GraphicLabelAlignmentConstants_TopLeft;
    Color32 backgroundColor_ = 0x00000000;
    double rotation_ = 0;

    RTTR_ENABLE(GraphicInteractiveBase)
};

using GraphicLabelPtr = std::shared_ptr<GraphicLabel>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::GraphicLabel, 1)
