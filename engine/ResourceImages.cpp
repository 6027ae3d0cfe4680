#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image24PlanarColor.h>
#include <Vision/Core/Image8Grey.h>
#include <Vision/Core/Vect2.h>
#include <Vision/UtilityPxl/PxlUtils.h>

#include "Vision/DeepLearning/DLResultResourceReadOnlyCollection.h"
#include "engine/DeepLearningAccess.h"
#include "engine/NumberText.h"
#include "engine/ProcessState.h"
#include "engine/ResultDecoding.h"

namespace Tavrin::Vision::DeepLearning::Private {

using tinyxml2::XMLElement;
namespace PxlUtils = UtilityPxl::detail::PxlUtils;

namespace {

// Bytes between the end of one row's samples and the start of the next. Any depth code but 0
// counts two bytes per sample.
std::ptrdiff_t RowGap(EngineImage const& record) {
    int const bytesPerSample = record.pixelType != 0 ? 2 : 1;
    return static_cast<std::ptrdiff_t>(record.step) -
           static_cast<std::ptrdiff_t>(bytesPerSample) * record.channels * record.width;
}

bool HasPixels(EngineImage const& record) {
    return record.pixels && record.width > 0 && record.height > 0;
}

// A grey copy of the engine's image, resampled to the nearest neighbour when a size is given.
// The source pitch is width plus the gap counted in samples, one channel assumed: the engine
// writes 16-bit images without a gap.
template <class Sample> tvPelBuffer<Sample> GreyPels(EngineImage const& record, Vect2 const* size) {
    if (!HasPixels(record))
        return tvPelBuffer<Sample>(0, 0, 1);
    int const width = record.width;
    int const height = record.height;
    double const scaleX = size ? size->X() / width : 1.0;
    double const scaleY = size ? size->Y() / height : 1.0;
    int const outWidth = size ? static_cast<int>(size->X()) : width;
    int const outHeight = size ? static_cast<int>(size->Y()) : height;
    tvPelBuffer<Sample> pels(outWidth, outHeight, 1);

    auto const* source = static_cast<Sample const*>(record.pixels);
    std::ptrdiff_t const sourcePitch = width + RowGap(record);
    Sample* out = pels.pointToOffset();
    if (scaleX == 1.0 && scaleY == 1.0) {
        for (int row = 0; row < outHeight; ++row, out += outWidth)
            std::memcpy(out, source + row * sourcePitch, sizeof(Sample) * outWidth);
        return pels;
    }
    // Capped before the conversion: a small scale takes the quotient past any integer.
    auto sourceIndex = [](int index, double scale, int count) {
        return static_cast<int>(std::min(index / scale, static_cast<double>(count - 1)));
    };
    std::vector<int> columns(static_cast<std::size_t>(outWidth));
    for (int column = 0; column < outWidth; ++column)
        columns[column] = sourceIndex(column, scaleX, width);
    for (int row = 0; row < outHeight; ++row, out += outWidth) {
        Sample const* sourceRow = source + sourceIndex(row, scaleY, height) * sourcePitch;
        for (int column = 0; column < outWidth; ++column)
            out[column] = sourceRow[columns[column]];
    }
    return pels;
}

// The engine interleaves colour in the reverse plane order; depth is not looked at, samples
// are read as bytes, and a fourth channel is skipped.
std::shared_ptr<IImage> MakeResourceImage24PlanarColor(EngineImage const& record) {
    int const width = HasPixels(record) ? record.width : 0;
    int const height = HasPixels(record) ? record.height : 0;
    tvPelBuffer<unsigned char> planes[3] = {
        {width, height, 1}, {width, height, 1}, {width, height, 1}};
    unsigned char* first = planes[0].pointToOffset();
    unsigned char* second = planes[1].pointToOffset();
    unsigned char* third = planes[2].pointToOffset();
    int const pelStep = record.channels == 4 ? 4 : 3;
    std::ptrdiff_t const gap = RowGap(record);
    auto const* source = static_cast<unsigned char const*>(record.pixels);
    for (int row = 0; row < height; ++row, source += gap)
        for (int column = 0; column < width; ++column, source += pelStep) {
            *third++ = source[0];
            *second++ = source[1];
            *first++ = source[2];
        }
    return PxlUtils::MakeImage24PlanarColor(
        tv3PlanePelBuffer(tvPelRoot<tv3PlanePel>(planes[0], planes[1], planes[2])), nullptr);
}

// The document gives the size of a resampled map. A size that no image can have is a bad
// document, and the bound keeps one short document from asking for memory without end.
void CheckResampledSize(Vect2 const& size) {
    constexpr double maximumSide = 65536;
    constexpr double maximumPels = 1 << 25;
    double const width = size.X();
    double const height = size.Y();
    // Written so that a NaN fails as well.
    if (!(width >= 0 && height >= 0 && width < maximumSide && height < maximumSide &&
          std::floor(width) * std::floor(height) <= maximumPels))
        ThrowBadDocument("a resampled resource needs a size from 0 to 65535 on each side and "
                         "at most 33554432 pels");
}

std::shared_ptr<IImage> MakeResourceImage(EngineImage const& record, Vect2 const* size) {
    if (record.channels >= 3)
        return MakeResourceImage24PlanarColor(record);
    if (record.pixelType == 0)
        return PxlUtils::MakeImage8Grey(GreyPels<unsigned char>(record, size), nullptr);
    if (record.pixelType == 1)
        return PxlUtils::MakeImage16Grey(GreyPels<unsigned short>(record, size), nullptr);
    return nullptr;
}

// The engine's image record of one resource, released on every way out.
class ResourceRecord {
public:
    ResourceRecord()
        : held_(Engine().kelo_init_image(&record_) == 0) {}
    ~ResourceRecord() {
        if (held_)
            Engine().kelo_free_image(&record_);
    }
    ResourceRecord(ResourceRecord const&) = delete;
    ResourceRecord& operator=(ResourceRecord const&) = delete;

    EngineImage* get() { return &record_; }

private:
    EngineImage record_{};
    bool held_;
};

} // namespace

std::shared_ptr<IImage> DeepLearningAccess::GetResourceImage(std::string const& uuid,
                                                             std::shared_ptr<Vect2> const& size) {
    ResourceRecord record;
    // A failed fetch leaves the record as it was initialised, and so the image empty.
    Engine().kelo_resource_get_image(uuid.c_str(), record.get());
    try {
        return MakeResourceImage(*record.get(), size.get());
    } catch (tvException& failure) {
        PxlUtils::MapPxlException::MapPxlExceptionAndThrow(failure);
    }
}

std::shared_ptr<DLResultResourceReadOnlyCollection>
CreateResourcesIf(bool addImageRecords, XMLElement const& parent,
                  std::shared_ptr<Vect2> const& size) {
    std::vector<DLResultResourcePtr> resources;
    if (addImageRecords)
        ForEachChild(parent, "resource", [&](XMLElement const& resource) {
            std::string name = RequiredAttribute(resource, "name");
            char const* type = RequiredAttribute(resource, "type");
            std::string uuid = RequiredAttribute(resource, "uuid");
            char const* scaleText = resource.Attribute("scale");
            double const scale = scaleText ? ParseRealStrict(scaleText) : 1.0;
            // Only score maps are resampled, and only where the caller gives a size.
            bool const resample = size && name.find("score_map") != std::string::npos;
            if (resample)
                CheckResampledSize(*size);
            auto image = DeepLearningAccess::GetResourceImage(uuid, resample ? size : nullptr);
            resources.push_back(Brnt::CreateObject<DLResultResource>(
                std::move(name), type, std::move(uuid), std::move(image), scale));
        });
    return Brnt::CreateObject<DLResultResourceReadOnlyCollection>(std::move(resources));
}

} // namespace Tavrin::Vision::DeepLearning::Private
