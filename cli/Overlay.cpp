#include "Overlay.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

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
// Shapes may reach past the image: the canvas has a margin all round.
constexpr int Margin = 32;
const cv::Scalar Backdrop(64, 64, 64);
const cv::Scalar LegendText(255, 255, 255);
constexpr int Font = cv::FONT_HERSHEY_SIMPLEX;

cv::Scalar Colour(Color32 colour) {
    return {double(colour.B()), double(colour.G()), double(colour.R())};
}

// Text and lines grow with the enlarged image, so that they read alike on small and large ones.
struct Sizes {
    double fontScale;
    int textThickness;
    int lineScale;
    int gap;
};

Sizes SizesFor(const cv::Size& enlarged) {
    const int shorter = std::min(enlarged.width, enlarged.height);
    const double fontScale = std::clamp(shorter / 400.0, 0.55, 2.0);
    return {fontScale, std::max(1, static_cast<int>(std::lround(fontScale * 1.5))),
            std::max(1, shorter / 250), std::max(4, static_cast<int>(8 * fontScale))};
}

// A piece of text with the box it takes, including the part below the baseline, and the height
// above the baseline, where the text is written from.
struct TextBox {
    std::string text;
    cv::Size size;
    int ascent;
    cv::Scalar colour;
    cv::Scalar background;
    bool filled;
};

TextBox Measured(const std::string& text, const Sizes& sizes, cv::Scalar colour,
                 cv::Scalar background = Backdrop, bool filled = false) {
    int baseline = 0;
    const cv::Size size =
        cv::getTextSize(text, Font, sizes.fontScale, sizes.textThickness, &baseline);
    return {text, {size.width, size.height + baseline}, size.height, colour, background, filled};
}

void WriteText(cv::Mat& pixels, const TextBox& box, cv::Point topLeft, const Sizes& sizes) {
    if (box.filled)
        cv::rectangle(pixels, cv::Rect(topLeft, box.size), box.background, cv::FILLED);
    cv::putText(pixels, box.text, topLeft + cv::Point(0, box.ascent), Font, sizes.fontScale,
                box.colour, sizes.textThickness, cv::LINE_AA);
}

// Where each box stands when they flow left to right in rows of the given width.
std::vector<cv::Point> Flowed(const std::vector<TextBox>& boxes, int width, int gap) {
    std::vector<cv::Point> places;
    cv::Point at(gap, gap);
    int rowHeight = 0;
    for (const TextBox& box : boxes) {
        if (at.x > gap && at.x + box.size.width > width - gap) {
            at = {gap, at.y + rowHeight + gap};
            rowHeight = 0;
        }
        places.push_back(at);
        at.x += box.size.width + 2 * gap;
        rowHeight = std::max(rowHeight, box.size.height);
    }
    return places;
}

int FlowHeight(const std::vector<TextBox>& boxes, const std::vector<cv::Point>& places, int gap) {
    int bottom = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        bottom = std::max(bottom, places[i].y + boxes[i].size.height);
    return bottom + gap;
}

// Draws in image coordinates on a canvas enlarged by a whole factor. Labels are not written over
// the image, where they would cover each other and the shapes: each gets a numbered tag at its
// anchor, placed clear of the other tags, and its text under the same number in the legend.
class Canvas {
public:
    Canvas(cv::Mat pixels, int scale, const Sizes& sizes)
        : pixels_(std::move(pixels))
        , scale_(scale)
        , sizes_(sizes) {}

    cv::Mat Pixels() const { return pixels_; }
    const std::vector<TextBox>& LabelTexts() const { return labelTexts_; }

    void Line(double x0, double y0, double x1, double y1, const IGraphic& look) {
        const cv::Point2d from = At(x0, y0);
        const cv::Point2d to = At(x1, y1);
        if (look.LineStyle() == LineStyleConstants_Solid) {
            Segment(from, to, look);
            return;
        }
        // OpenCV draws solid lines only: broken styles are drawn piece by piece.
        const double length = cv::norm(to - from);
        const double dash = (look.LineStyle() == LineStyleConstants_Dot ? 2 : 8) * sizes_.lineScale;
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
        cv::drawMarker(pixels_, At(x, y), Colour(look.Color()), cv::MARKER_CROSS,
                       size * sizes_.lineScale, Width(look));
    }

    void Label(const GraphicLabel& label) {
        const std::string number = std::to_string(labelTexts_.size() + 1);
        const bool filled = label.BackgroundColor().A() != 0;
        const cv::Scalar colour = Colour(label.Color());
        const cv::Scalar background = Colour(label.BackgroundColor());
        labelTexts_.push_back(
            Measured(number + " " + label.Text(), sizes_, colour, background, filled));
        // A tag always has a backdrop, so that it stands out from the image.
        const TextBox tag = Measured(number, sizes_, colour, filled ? background : Backdrop, true);
        WriteText(pixels_, tag, FreePlace(At(label.X(), label.Y()), tag.size), sizes_);
    }

private:
    int Width(const IGraphic& look) const {
        return std::max(1, look.LineWidthInScreenPixels()) * sizes_.lineScale;
    }

    // Results measure from the image's outer corner, so a view of the whole image is its border.
    cv::Point2d At(double x, double y) const { return {Margin + x * scale_, Margin + y * scale_}; }

    void Segment(cv::Point2d from, cv::Point2d to, const IGraphic& look) {
        cv::line(pixels_, from, to, Colour(look.Color()), Width(look), cv::LINE_AA);
    }

    // The first place at or below the anchor that no tag covers yet, kept on the canvas.
    cv::Point FreePlace(cv::Point2d anchor, cv::Size size) {
        const int right = std::max(0, pixels_.cols - size.width);
        const int bottom = std::max(0, pixels_.rows - size.height);
        cv::Rect place(std::clamp(static_cast<int>(anchor.x), 0, right),
                       std::clamp(static_cast<int>(anchor.y), 0, bottom), size.width, size.height);
        const auto taken = [&] {
            return std::any_of(tags_.begin(), tags_.end(),
                               [&](const cv::Rect& tag) { return (tag & place).area() > 0; });
        };
        const int top = place.y;
        // Down the column under the anchor first, then the next column to its right.
        while (taken()) {
            place.y += size.height + 1;
            if (place.y > bottom)
                place = {place.x + size.width + 1, top, size.width, size.height};
        }
        tags_.push_back(place);
        return place.tl();
    }

    cv::Mat pixels_;
    int scale_;
    Sizes sizes_;
    std::vector<TextBox> labelTexts_;
    std::vector<cv::Rect> tags_;
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
        canvas.Label(*label);
}

// Every tool's answer with its score, one after the other.
std::vector<TextBox> AnswerTexts(const std::vector<Answer>& answers, const Sizes& sizes) {
    std::vector<TextBox> texts;
    for (const Answer& answer : answers) {
        char score[32];
        std::snprintf(score, sizeof score, "%.3f", answer.score);
        texts.push_back(Measured(
            answer.tool + ": " + (answer.answer.empty() ? NoAnswer : answer.answer) + "  " + score,
            sizes, LegendText));
    }
    return texts;
}

// A strip of the legend under the image, with the texts flowed in rows.
cv::Mat Band(const std::vector<TextBox>& texts, int width, const Sizes& sizes) {
    const std::vector<cv::Point> places = Flowed(texts, width, sizes.gap);
    cv::Mat band(FlowHeight(texts, places, sizes.gap), width, CV_8UC3, Backdrop);
    for (std::size_t i = 0; i < texts.size(); ++i)
        WriteText(band, texts[i], places[i], sizes);
    return band;
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

cv::Mat DrawOverlay(const cv::Mat& image, const std::vector<IGraphicPtr>& graphics,
                    const std::vector<Answer>& answers) {
    const int scale = std::max(1, std::min(LegibleSide / std::min(image.cols, image.rows),
                                           LargestSide / std::max(image.cols, image.rows)));
    cv::Mat enlarged;
    cv::resize(ColourEightBits(image), enlarged, cv::Size(), scale, scale, cv::INTER_NEAREST);
    const Sizes sizes = SizesFor(enlarged.size());
    cv::copyMakeBorder(enlarged, enlarged, Margin, Margin, Margin, Margin, cv::BORDER_CONSTANT,
                       Backdrop);
    Canvas canvas(enlarged, scale, sizes);
    for (const auto& graphic : graphics)
        Draw(canvas, graphic);
    cv::Mat overlay = canvas.Pixels();
    for (const auto& band : {AnswerTexts(answers, sizes), canvas.LabelTexts()})
        if (!band.empty())
            cv::vconcat(overlay, Band(band, overlay.cols, sizes), overlay);
    return overlay;
}

std::vector<unsigned char> OverlayPng(const cv::Mat& image, Record& record,
                                      const std::vector<Answer>& answers) {
    std::vector<unsigned char> png;
    if (!cv::imencode(".png", DrawOverlay(image, GraphicsOf(record), answers), png))
        throw CommandError("cannot encode the overlay");
    return png;
}

void WriteOverlay(const std::filesystem::path& file, const cv::Mat& image, Record& record,
                  const std::vector<Answer>& answers) {
    WriteFileAtomically(file, OverlayPng(image, record, answers));
}

} // namespace TavrinCli
