#include "Images.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <set>

#include <opencv2/imgcodecs.hpp>

#include "Failure.h"

namespace TavrinCli {
namespace {

using Tavrin::Brnt::CreateObject;
using namespace Tavrin::Vision;

// A file named as an image is one even when it does not decode, so that the run reports it
// instead of passing over it.
bool NamedAsImage(const std::filesystem::path& file) {
    static const std::set<std::string> extensions = {
        ".bmp", ".dib", ".exr", ".hdr", ".jp2", ".jpe", ".jpeg", ".jpg", ".pbm",  ".pfm", ".pgm",
        ".pic", ".png", ".pnm", ".ppm", ".pxm", ".ras", ".sr",   ".tif", ".tiff", ".webp"};
    std::string extension = file.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extensions.count(extension) > 0;
}

std::vector<std::filesystem::path> ImagesIn(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file() &&
            (NamedAsImage(entry.path()) || cv::haveImageReader(entry.path().string())))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

template <class Image, class Pel> std::shared_ptr<IImage> CopiedInto(const cv::Mat& plane) {
    auto image = CreateObject<Image>(plane.cols, plane.rows);
    const auto memory =
        image->GetPixelMemory(ImageDataModeConstants_Write, 0, 0, plane.cols, plane.rows);
    for (int row = 0; row < plane.rows; ++row)
        std::memcpy(reinterpret_cast<unsigned char*>(memory->FirstPel()) + row * memory->Step(),
                    plane.ptr(row), plane.cols * sizeof(Pel));
    return image;
}

template <class Pel, class GreyData>
cv::Mat CopiedOut(const GreyData& grey, const IImage& image, int type) {
    const auto memory =
        grey.GetPixelMemory(ImageDataModeConstants_Read, 0, 0, image.Width(), image.Height());
    cv::Mat plane(image.Height(), image.Width(), type);
    for (int row = 0; row < plane.rows; ++row)
        std::memcpy(plane.ptr(row),
                    reinterpret_cast<const unsigned char*>(memory->FirstPel()) + row * memory->Step(),
                    plane.cols * sizeof(Pel));
    return plane;
}

cv::Mat Interleaved(const IImage24PlanarColorData& colour, const IImage& image,
                    ChannelOrder order) {
    std::shared_ptr<IImage8PixelMemory> memories[3];
    colour.Get3PlanePixelMemory(ImageDataModeConstants_Read, 0, 0, image.Width(), image.Height(),
                                memories[0], memories[1], memories[2]);
    const int red = order == ChannelOrder::Rgb ? 0 : 2;
    const int targets[3] = {red, 1, 2 - red};
    cv::Mat interleaved(image.Height(), image.Width(), CV_8UC3);
    for (int plane = 0; plane < 3; ++plane)
        for (int row = 0; row < interleaved.rows; ++row) {
            const unsigned char* from = memories[plane]->FirstPel() + row * memories[plane]->Step();
            unsigned char* to = interleaved.ptr(row) + targets[plane];
            for (int x = 0; x < interleaved.cols; ++x)
                to[x * 3] = from[x];
        }
    return interleaved;
}

// The library's colour images have 8 bits a plane.
cv::Mat EightBits(const cv::Mat& image) {
    if (image.depth() == CV_8U)
        return image;
    cv::Mat eight;
    image.convertTo(eight, CV_8U, 1.0 / 257);
    return eight;
}

// The pels go straight from the interleaved channels into the three planes, in one pass.
std::shared_ptr<IImage> PlanarColour(const cv::Mat& colour, ChannelOrder order) {
    const int channels = colour.channels();
    const int red = order == ChannelOrder::Rgb ? 0 : 2;
    const int sources[3] = {red, 1, 2 - red};
    auto image = CreateObject<Image24PlanarColor>(colour.cols, colour.rows);
    std::shared_ptr<IImage8PixelMemory> memories[3];
    image->Get3PlanePixelMemory(ImageDataModeConstants_Write, 0, 0, colour.cols, colour.rows,
                                memories[0], memories[1], memories[2]);
    for (int plane = 0; plane < 3; ++plane)
        for (int row = 0; row < colour.rows; ++row) {
            const unsigned char* from = colour.ptr(row) + sources[plane];
            unsigned char* to = memories[plane]->FirstPel() + row * memories[plane]->Step();
            for (int x = 0; x < colour.cols; ++x)
                to[x] = from[x * channels];
        }
    return image;
}

} // namespace

std::vector<std::filesystem::path> CollectImages(const std::vector<std::string>& inputs) {
    std::vector<std::filesystem::path> files;
    for (const std::string& input : inputs) {
        if (std::filesystem::is_directory(input)) {
            const auto found = ImagesIn(input);
            files.insert(files.end(), found.begin(), found.end());
        } else if (std::filesystem::exists(input)) {
            files.emplace_back(input);
        } else {
            throw CommandError("no such file or folder: " + input);
        }
    }
    if (files.empty())
        throw CommandError("no images to analyse");
    return files;
}

cv::Mat ReadImage(const std::filesystem::path& file) {
    cv::Mat image = cv::imread(file.string(), cv::IMREAD_ANYDEPTH | cv::IMREAD_ANYCOLOR);
    if (image.empty())
        throw CommandError("not a readable image");
    if (image.depth() != CV_8U && image.depth() != CV_16U)
        image.convertTo(image, CV_8U);
    return image;
}

std::shared_ptr<IImage> ToVisionImage(const cv::Mat& image, ChannelOrder order) {
    if (image.channels() >= 3)
        return PlanarColour(EightBits(image), order);
    if (image.depth() == CV_16U)
        return CopiedInto<Image16Grey, unsigned short>(image);
    return CopiedInto<Image8Grey, unsigned char>(image);
}

cv::Mat FromVisionImage(const IImage& image, ChannelOrder order) {
    if (const auto* colour = dynamic_cast<const IImage24PlanarColorData*>(&image))
        return Interleaved(*colour, image, order);
    if (const auto* grey = dynamic_cast<const IImage16GreyData*>(&image))
        return CopiedOut<unsigned short>(*grey, image, CV_16UC1);
    if (const auto* grey = dynamic_cast<const IImage8GreyData*>(&image))
        return CopiedOut<unsigned char>(*grey, image, CV_8UC1);
    return {};
}

} // namespace TavrinCli
