#pragma once

namespace Tavrin::Vision {

// What a copy of a graphic carries besides its geometry, which every copy carries. The bits
// combine; a part that is not carried stays at the default of a new graphic.
enum CopyShapeConstants : int {
    CopyShapeConstants_GeometryOnly = 0,
    CopyShapeConstants_Color = 0x1,
    CopyShapeConstants_LineStyle = 0x2,
    CopyShapeConstants_LineWidth = 0x4,
    CopyShapeConstants_SelectedSpaceName = 0x8,
    // The interactive flag and the tip text.
    CopyShapeConstants_Interaction = 0x10,
    // The end marks of a segment and the background of a label.
    CopyShapeConstants_Decorations = 0x20,
    CopyShapeConstants_All = -1,
};

// The point of the text's box that sits on the label's anchor.
enum GraphicLabelAlignmentConstants : int {
    GraphicLabelAlignmentConstants_TopLeft = 0,
    GraphicLabelAlignmentConstants_TopCenter = 1,
    GraphicLabelAlignmentConstants_TopRight = 2,
    GraphicLabelAlignmentConstants_CenterLeft = 3,
    GraphicLabelAlignmentConstants_Center = 4,
    GraphicLabelAlignmentConstants_CenterRight = 5,
    GraphicLabelAlignmentConstants_BottomLeft = 6,
    GraphicLabelAlignmentConstants_BottomCenter = 7,
    GraphicLabelAlignmentConstants_BottomRight = 8,
};

// The mark drawn at an end of a line segment; an arrow head points away from the segment.
enum LineSegmentAdornmentConstants : int {
    LineSegmentAdornmentConstants_None = 0,
    LineSegmentAdornmentConstants_Arrow = 1,
};

// The values that setLineStyle accepts.
enum LineStyleConstants : int {
    LineStyleConstants_Solid = 0,
    LineStyleConstants_Dash = 1,
    LineStyleConstants_Dot = 2,
    LineStyleConstants_DashDot = 3,
};

} // namespace Tavrin::Vision
