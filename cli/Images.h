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

// The order of a colour image's channels: OpenCV reads files as BGR (or BGRA), NumPy arrays
// usually hold RGB.
enum class ChannelOrder { Bgr, Rgb };

// The library's image of the same pixels, copied once: grey of 8 or 16 bits, or planar colour.
// Rows may lie any distance apart.
std::shared_ptr<Tavrin::Vision::IImage> ToVisionImage(const cv::Mat& image,
                                                      ChannelOrder order = ChannelOrder::Bgr);

// The pels of a library image as OpenCV holds them, copied: grey of 8 or 16 bits, or colour in
// the order asked for; an empty matrix for an image of another kind.
cv::Mat FromVisionImage(const Tavrin::Vision::IImage& image,
                        ChannelOrder order = ChannelOrder::Bgr);

} // namespace TavrinCli
