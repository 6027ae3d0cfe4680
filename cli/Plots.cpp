#include "Plots.h"

#include <algorithm>
#include <cstdio>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "AtomicFile.h"
#include "Failure.h"
#include "ResultWriters.h"

namespace TavrinCli {
namespace {

constexpr int PlotFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr double PlotFontScale = 0.45;
// Colours in OpenCV's order: blue, green, red.
const cv::Scalar Ink(40, 40, 40);
const cv::Scalar Paper(255, 255, 255);
const cv::Scalar Rule(200, 200, 200);
const cv::Scalar GoodColour(70, 160, 40);
const cv::Scalar AnomalousColour(50, 50, 210);
const cv::Scalar CurveColour(170, 90, 20);
const cv::Scalar HeatColour(120, 50, 10);

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", value);
    return text;
}

cv::Size TextSize(const std::string& text) {
    int baseline = 0;
    return cv::getTextSize(text, PlotFont, PlotFontScale, 1, &baseline);
}

enum class Align { Left, Centre, Right };

// Text centred vertically on at.y, and placed on at.x as align says.
void Write(cv::Mat& canvas, const std::string& text, cv::Point at, Align align,
           const cv::Scalar& colour = Ink) {
    const cv::Size size = TextSize(text);
    const int shift = align == Align::Left     ? 0
                      : align == Align::Centre ? size.width / 2
                                               : size.width;
    cv::putText(canvas, text, {at.x - shift, at.y + size.height / 2}, PlotFont, PlotFontScale,
                colour, 1, cv::LINE_AA);
}

// OpenCV draws solid lines only.
void DashedLine(cv::Mat& canvas, cv::Point2d from, cv::Point2d to, const cv::Scalar& colour) {
    constexpr double Dash = 6;
    const double length = cv::norm(to - from);
    for (double start = 0; start < length; start += 2 * Dash)
        cv::line(canvas, from + (to - from) * (start / length),
                 from + (to - from) * (std::min(start + Dash, length) / length), colour, 1,
                 cv::LINE_AA);
}

cv::Scalar Blend(const cv::Scalar& from, const cv::Scalar& to, double share) {
    return from * (1 - share) + to * share;
}

// A plot area on a white canvas, with room around it for the title, the ticks and the names of
// the axes; it maps data to pixels.
class Chart {
public:
    Chart(cv::Size area, cv::Rect2d range, const std::string& title)
        : canvas_(area.height + Top + Bottom, area.width + Left + Right, CV_8UC3, Paper)
        , area_(Left, Top, area.width, area.height)
        , range_(range) {
        Write(canvas_, title, {Left, 20}, Align::Left);
    }

    cv::Mat& Pixels() { return canvas_; }

    cv::Point2d At(double x, double y) const {
        return {area_.x + (x - range_.x) / range_.width * area_.width,
                area_.y + area_.height - (y - range_.y) / range_.height * area_.height};
    }

    void Axes(const std::string& xName, const std::string& yName, const std::vector<double>& xTicks,
              const std::vector<double>& yTicks) {
        cv::rectangle(canvas_, area_, Ink);
        for (const double x : xTicks) {
            const cv::Point2d at = At(x, range_.y);
            cv::line(canvas_, at, at + cv::Point2d(0, 5), Ink);
            Write(canvas_, Number(x), cv::Point(at) + cv::Point(0, 16), Align::Centre);
        }
        for (const double y : yTicks) {
            const cv::Point2d at = At(range_.x, y);
            cv::line(canvas_, at, at - cv::Point2d(5, 0), Ink);
            Write(canvas_, Number(y), cv::Point(at) - cv::Point(9, 0), Align::Right);
        }
        Write(canvas_, xName, {area_.x + area_.width / 2, area_.y + area_.height + 40},
              Align::Centre);
        Write(canvas_, yName, {area_.x, area_.y - 14}, Align::Centre);
    }

    // A coloured square and its name above the plot, side by side towards its right end, where
    // nothing drawn in the plot covers them.
    void Legend(int entry, const std::string& name, const cv::Scalar& colour) {
        const cv::Point corner(area_.x + area_.width - 260 + 130 * entry, area_.y - 14);
        cv::rectangle(canvas_, cv::Rect(corner - cv::Point(0, 5), cv::Size(10, 10)), colour,
                      cv::FILLED);
        Write(canvas_, name, corner + cv::Point(16, 0), Align::Left);
    }

private:
    static constexpr int Left = 70;
    static constexpr int Right = 30;
    static constexpr int Top = 70;
    static constexpr int Bottom = 60;

    cv::Mat canvas_;
    cv::Rect area_;
    cv::Rect2d range_;
};

std::vector<int> Histogram(const std::vector<double>& scores, double low, double high, int bins) {
    std::vector<int> counts(static_cast<std::size_t>(bins), 0);
    for (const double score : scores) {
        const int bin = static_cast<int>((score - low) / (high - low) * bins);
        ++counts[static_cast<std::size_t>(std::clamp(bin, 0, bins - 1))];
    }
    return counts;
}

// Bars drawn half transparent, so that where the two kinds of images overlap both show.
void DrawBars(Chart& chart, const std::vector<int>& counts, double low, double binWidth,
              const cv::Scalar& colour) {
    cv::Mat layer = chart.Pixels().clone();
    for (std::size_t bin = 0; bin < counts.size(); ++bin)
        if (counts[bin] > 0)
            cv::rectangle(layer, chart.At(low + bin * binWidth, 0),
                          chart.At(low + (bin + 1) * binWidth, counts[bin]), colour, cv::FILLED);
    cv::addWeighted(layer, 0.6, chart.Pixels(), 0.4, 0, chart.Pixels());
}

std::pair<double, double> ScoreRange(const AnomalyDetection& anomaly,
                                     const std::optional<double>& threshold) {
    std::vector<double> values = anomaly.goodScores;
    values.insert(values.end(), anomaly.anomalousScores.begin(), anomaly.anomalousScores.end());
    if (threshold)
        values.push_back(*threshold);
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    // One score alone still gets an axis of some width.
    if (*high - *low < 1e-9)
        return {*low - 0.5, *high + 0.5};
    return {*low, *high};
}

} // namespace

cv::Mat ConfusionHeatMap(const Classification& classification, const std::string& title) {
    int labelWidth = TextSize("truth").width;
    for (const std::string& label : classification.labels)
        labelWidth = std::max(labelWidth, TextSize(label.empty() ? NoAnswer : label).width);
    const int cell = std::max(44, labelWidth + 12);
    const int left = labelWidth + 24;
    const int top = 90;
    const int count = static_cast<int>(classification.labels.size());
    cv::Mat canvas(top + count * cell + 20, std::max(left + count * cell + 20, 360), CV_8UC3,
                   Paper);
    Write(canvas, title + ": confusion", {12, 20}, Align::Left);
    Write(canvas, "answer", {left + count * cell / 2, 50}, Align::Centre);
    Write(canvas, "truth", {left - 12, top - 18}, Align::Right);
    for (int row = 0; row < count; ++row) {
        const auto& counts = classification.confusion[static_cast<std::size_t>(row)];
        const std::string& label = classification.labels[static_cast<std::size_t>(row)];
        const std::string shown = label.empty() ? NoAnswer : label;
        Write(canvas, shown, {left - 12, top + row * cell + cell / 2}, Align::Right);
        Write(canvas, shown, {left + row * cell + cell / 2, top - 18}, Align::Centre);
        int rowTotal = 0;
        for (const int n : counts)
            rowTotal += n;
        for (int column = 0; column < count; ++column) {
            const int n = counts[static_cast<std::size_t>(column)];
            const double share = rowTotal > 0 ? static_cast<double>(n) / rowTotal : 0;
            const cv::Rect box(left + column * cell, top + row * cell, cell, cell);
            cv::rectangle(canvas, box, Blend(Paper, HeatColour, share), cv::FILLED);
            cv::rectangle(canvas, box, Rule);
            Write(canvas, std::to_string(n), (box.tl() + box.br()) / 2, Align::Centre,
                  share > 0.5 ? Paper : Ink);
        }
    }
    return canvas;
}

cv::Mat ScoreHistograms(const AnomalyDetection& anomaly, const std::optional<double>& threshold,
                        const std::string& title) {
    constexpr int Bins = 30;
    const auto [low, high] = ScoreRange(anomaly, threshold);
    const auto good = Histogram(anomaly.goodScores, low, high, Bins);
    const auto anomalous = Histogram(anomaly.anomalousScores, low, high, Bins);
    const int most = std::max(*std::max_element(good.begin(), good.end()),
                              *std::max_element(anomalous.begin(), anomalous.end()));
    const double top = std::max(1, most) * 1.15;
    Chart chart({560, 320}, {low, 0, high - low, top}, title + ": scores");
    const double binWidth = (high - low) / Bins;
    DrawBars(chart, good, low, binWidth, GoodColour);
    DrawBars(chart, anomalous, low, binWidth, AnomalousColour);
    if (threshold) {
        DashedLine(chart.Pixels(), chart.At(*threshold, 0), chart.At(*threshold, top), Ink);
        Write(chart.Pixels(), "threshold " + Number(*threshold),
              cv::Point(chart.At(*threshold, top)) + cv::Point(6, 12), Align::Left);
    }
    chart.Legend(0, "good (" + std::to_string(anomaly.good) + ")", GoodColour);
    chart.Legend(1, "anomalous (" + std::to_string(anomaly.anomalous) + ")", AnomalousColour);
    chart.Axes("score", "images", {low, (low + high) / 2, high}, {0, static_cast<double>(most)});
    return chart.Pixels();
}

cv::Mat RocPlot(const AnomalyDetection& anomaly, const std::string& title) {
    Chart chart({400, 400}, {0, 0, 1, 1},
                title + ": ROC, AUROC " + (anomaly.auroc ? Number(*anomaly.auroc) : "n/a"));
    DashedLine(chart.Pixels(), chart.At(0, 0), chart.At(1, 1), Rule);
    std::vector<cv::Point> curve;
    for (const RocPoint& point : anomaly.roc)
        curve.emplace_back(chart.At(point.falsePositiveRate, point.truePositiveRate));
    cv::polylines(chart.Pixels(), std::vector<std::vector<cv::Point>>{curve}, false, CurveColour, 2,
                  cv::LINE_AA);
    chart.Axes("false positive rate", "true positive rate", {0, 0.5, 1}, {0, 0.5, 1});
    return chart.Pixels();
}

std::vector<std::filesystem::path> WritePlots(const Evaluation& evaluation,
                                              const std::filesystem::path& folder) {
    const std::string title = evaluation.subject.stream + " / " + evaluation.subject.tool;
    std::vector<std::pair<std::string, cv::Mat>> plots;
    if (const Classification* confusion = evaluation.Confusion())
        plots.emplace_back("confusion.png", ConfusionHeatMap(*confusion, title));
    if (const auto& anomaly = evaluation.anomaly) {
        plots.emplace_back("scores.png",
                           ScoreHistograms(*anomaly, evaluation.subject.threshold, title));
        if (anomaly->auroc)
            plots.emplace_back("roc.png", RocPlot(*anomaly, title));
    }
    // Every plot is encoded before any is written.
    std::vector<std::pair<std::filesystem::path, std::vector<unsigned char>>> files;
    for (const auto& [name, image] : plots) {
        files.emplace_back(folder / name, std::vector<unsigned char>());
        if (!cv::imencode(".png", image, files.back().second))
            throw CommandError("cannot encode the plot " + files.back().first.string());
    }
    std::filesystem::create_directories(folder);
    std::vector<std::filesystem::path> written;
    for (const auto& [file, png] : files) {
        WriteFileAtomically(file, png);
        written.push_back(file);
    }
    return written;
}

} // namespace TavrinCli
