#include "Overlay.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "AtomicFile.h"
#include "Failure.h"

namespace TavrinCli {
namespace {

using namespace Tavrin::Vision;

// Small images are enlarged until their shorter side has about this many pixels, within a
// longest side of LargestSide.
constexpr int LegibleSide = 240;
constexpr int LargestSide = 1600;
// Labels may stand beside the image: the canvas has a margin all round.
constexpr int Margin = 32;

// Draws in image coordinates on a canvas enlarged by a whole factor.
class Canvas {
public:
    Canvas(cv::Mat pixels, int scale)
        : pixels_(std::move(pixels))
        , scale_(scale) {}

    cv::Mat Pixels() const { return pixels_; }

    void Line(double x0, double y0, double x1, double y1, const IGraphic& look) {
        const cv::Point2d from = At(x0, y0);
        const cv::Point2d to = At(x1, y1);
        if (look.LineStyle() == LineStyleConstants_Solid) {
            Segment(from, to, look);
            return;
        }
        // OpenCV draws solid lines only: broken styles are drawn piece by piece.
        const double length = cv::norm(to - from);
        const double dash = look.LineStyle() == LineStyleConstants_Dot ? 2 : 8;
        for (double start = 0; start < length; start += 2 * dash) {
            const double end = std::min(start + dash, length);
            Segment(from + (to - from) * (start / length), from + (to - from) * (end / length),
                    look);
        }
    }

    void Polyline(const std::vector<cv::Point2d>& points, bool closed, const IGraphic& look) {
        for (std::size_t i = 0; i + 1 < points.size(); ++i)
            Line(points[i].x, points[i].y, points[i + 1].x, points[i + 1].y, look);
        if (closed && points.size() > 2)
            Line(points.back().x, points.back().y, points.front().x, points.front().y, look);
    }

    void Marker(double x, double y, int size, const IGraphic& look) {
        cv::drawMarker(pixels_, At(x, y), Colour(look.Color()), cv::MARKER_CROSS, size,
                       Width(look));
    }

    // Labels are drawn upright: OpenCV writes horizontal text only.
    void Text(const GraphicLabel& label) {
        constexpr double FontScale = 0.5;
        int baseline = 0;
        const cv::Size size =
            cv::getTextSize(label.Text(), cv::FONT_HERSHEY_SIMPLEX, FontScale, 1, &baseline);
        // Alignment counts columns left to right, then rows top to bottom.
        const int column = label.Alignment() % 3;
        const int row = label.Alignment() / 3;
        const cv::Point2d anchor = At(label.X(), label.Y());
        const cv::Point topLeft(static_cast<int>(anchor.x - column * size.width / 2.0),
                                static_cast<int>(anchor.y - row * (size.height + baseline) / 2.0));
        if (label.BackgroundColor().A() != 0)
            cv::rectangle(pixels_, cv::Rect(topLeft, cv::Size(size.width, size.height + baseline)),
                          Colour(label.BackgroundColor()), cv::FILLED);
        cv::putText(pixels_, label.Text(), topLeft + cv::Point(0, size.height),
                    cv::FONT_HERSHEY_SIMPLEX, FontScale, Colour(label.Color()), 1, cv::LINE_AA);
    }

private:
    static cv::Scalar Colour(Color32 colour) {
        return {double(colour.B()), double(colour.G()), double(colour.R())};
    }
    static int Width(const IGraphic& look) { return std::max(1, look.LineWidthInScreenPixels()); }

    // Results measure from the image's outer corner, so a view of the whole image is its border.
    cv::Point2d At(double x, double y) const { return {Margin + x * scale_, Margin + y * scale_}; }

    void Segment(cv::Point2d from, cv::Point2d to, const IGraphic& look) {
        cv::line(pixels_, from, to, Colour(look.Color()), Width(look), cv::LINE_AA);
    }

    cv::Mat pixels_;
    int scale_;
};

std::vector<cv::Point2d> Corners(const RectangleAffine& box) {
    return {{box.CornerOriginX(), box.CornerOriginY()},
            {box.CornerXX(), box.CornerXY()},
            {box.CornerOppositeX(), box.CornerOppositeY()},
            {box.CornerYX(), box.CornerYY()}};
}

std::vector<cv::Point2d> Outline(const Ellipse& ellipse) {
    constexpr int Steps = 64;
    std::vector<cv::Point2d> points;
    const double c = std::cos(ellipse.Rotation());
    const double s = std::sin(ellipse.Rotation());
    for (int i = 0; i < Steps; ++i) {
        const double t = 2 * CV_PI * i / Steps;
        const double x = ellipse.RadiusX() * std::cos(t);
        const double y = ellipse.RadiusY() * std::sin(t);
        points.emplace_back(ellipse.CenterX() + c * x - s * y, ellipse.CenterY() + s * x + c * y);
    }
    return points;
}

std::vector<cv::Point2d> Vertices(const Polygon& polygon) {
    std::vector<cv::Point2d> points;
    for (int i = 0; i < polygon.VertexCount(); ++i)
        points.emplace_back(polygon.Vertex(i)->X(), polygon.Vertex(i)->Y());
    return points;
}

void Draw(Canvas& canvas, const IGraphicPtr& graphic) {
    if (const auto box = std::dynamic_pointer_cast<RectangleAffine>(graphic))
        canvas.Polyline(Corners(*box), true, *graphic);
    else if (const auto polygon = std::dynamic_pointer_cast<Polygon>(graphic))
        canvas.Polyline(Vertices(*polygon), true, *graphic);
    else if (const auto ellipse = std::dynamic_pointer_cast<Ellipse>(graphic))
        canvas.Polyline(Outline(*ellipse), true, *graphic);
    else if (const auto line = std::dynamic_pointer_cast<LineSegment>(graphic))
        canvas.Line(line->StartX(), line->StartY(), line->EndX(), line->EndY(), *graphic);
    else if (const auto marker = std::dynamic_pointer_cast<PointMarker>(graphic))
        canvas.Marker(marker->X(), marker->Y(), marker->SizeInScreenPixels(), *graphic);
    else if (const auto label = std::dynamic_pointer_cast<GraphicLabel>(graphic))
        canvas.Text(*label);
}

cv::Mat ColourEightBits(const cv::Mat& image) {
    cv::Mat eight = image;
    if (image.depth() != CV_8U)
        image.convertTo(eight, CV_8U, 1.0 / 257);
    cv::Mat colour;
    if (eight.channels() == 1)
        cv::cvtColor(eight, colour, cv::COLOR_GRAY2BGR);
    else if (eight.channels() == 4)
        cv::cvtColor(eight, colour, cv::COLOR_BGRA2BGR);
    else
        colour = eight.clone();
    return colour;
}

} // namespace

std::vector<IGraphicPtr> GraphicsOf(Record& record) {
    std::vector<IGraphicPtr> graphics;
    if (record.ValueType() == rttr::type::get<GraphicCollection>()) {
        if (const auto content = record.Content().get_value<std::shared_ptr<GraphicCollection>>())
            graphics.assign(content->begin(), content->end());
    }
    const auto subRecords = record.SubRecords();
    if (!subRecords)
        return graphics;
    for (const auto& sub : *subRecords) {
        const auto below = GraphicsOf(*sub);
        graphics.insert(graphics.end(), below.begin(), below.end());
    }
    return graphics;
}

cv::Mat DrawOverlay(const cv::Mat& image, const std::vector<IGraphicPtr>& graphics) {
    const int scale = std::max(1, std::min(LegibleSide / std::min(image.cols, image.rows),
                                           LargestSide / std::max(image.cols, image.rows)));
    cv::Mat enlarged;
    cv::resize(ColourEightBits(image), enlarged, cv::Size(), scale, scale, cv::INTER_NEAREST);
    cv::copyMakeBorder(enlarged, enlarged, Margin, Margin, Margin, Margin, cv::BORDER_CONSTANT,
                       cv::Scalar(64, 64, 64));
    Canvas canvas(enlarged, scale);
    for (const auto& graphic : graphics)
        Draw(canvas, graphic);
    return canvas.Pixels();
}

std::vector<unsigned char> OverlayPng(const cv::Mat& image, Record& record) {
    std::vector<unsigned char> png;
    if (!cv::imencode(".png", DrawOverlay(image, GraphicsOf(record)), png))
        throw CommandError("cannot encode the overlay");
    return png;
}

void WriteOverlay(const std::filesystem::path& file, const cv::Mat& image, Record& record) {
    WriteFileAtomically(file, OverlayPng(image, record));
}

} // namespace TavrinCli
