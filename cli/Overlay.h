#pragma once

#include <filesystem>
#include <vector>

#include <opencv2/core.hpp>

#include <Vision/Foundation.h>

#include "ResultWriters.h"

namespace TavrinCli {

// The graphics of a run record: the content of every graphics record in its tree, in order.
std::vector<Tavrin::Vision::IGraphicPtr> GraphicsOf(Tavrin::Vision::Record& record);

// The image in colour, enlarged so that small images stay legible, with the graphics drawn over
// it in their colours, widths and line styles, and a legend under it: each tool's answer with
// its score, then the texts of the labels, numbered as their tags in the image.
cv::Mat DrawOverlay(const cv::Mat& image, const std::vector<Tavrin::Vision::IGraphicPtr>& graphics,
                    const std::vector<Answer>& answers);

// The overlay of the record over the image, encoded as PNG.
std::vector<unsigned char> OverlayPng(const cv::Mat& image, Tavrin::Vision::Record& record,
                                      const std::vector<Answer>& answers);

// The overlay of the run record over the image, as a PNG file that appears whole or not at all.
void WriteOverlay(const std::filesystem::path& file, const cv::Mat& image,
                  Tavrin::Vision::Record& record, const std::vector<Answer>& answers);

} // namespace TavrinCli
