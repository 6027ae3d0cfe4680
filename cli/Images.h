#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include <Vision/Foundation.h>

namespace TavrinCli {

// The images to analyse: files as given, and the image files of each folder given (named as
// images, or decodable), by name.
// CommandError when an input does not exist.
std::vector<std::filesystem::path> CollectImages(const std::vector<std::string>& inputs);

// The image as stored, 8 or 16 bits, grey or colour; CommandError, with the reason alone, when
// it cannot be decoded.
cv::Mat ReadImage(const std::filesystem::path& file);

// The library's image of the same pixels: grey of 8 or 16 bits, or planar colour.
std::shared_ptr<Tavrin::Vision::IImage> ToVisionImage(const cv::Mat& image);

} // namespace TavrinCli
