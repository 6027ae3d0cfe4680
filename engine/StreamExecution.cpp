#include <Vision/Core/CoordinateSpaceTree.h>
#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image24PlanarColor.h>
#include <Vision/Core/Image8Grey.h>
#include <Vision/Core/MiscUtils.h>
#include <Vision/Core/Platform.h>

#include "Vision/DeepLearning/DLResult.h"
#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"

namespace Tavrin::Vision::DeepLearning::Private {

namespace {

// Points the record at a grey image's own pixels: the engine reads them in place.
template <class Image>
bool DescribeGreyImage(IImage const& image, int pixelType, EngineImage& record) {
    auto const* grey = dynamic_cast<Image const*>(&image);
    if (!grey)
        return false;
    auto const memory =
        grey->GetPixelMemory(ImageDataModeConstants_Read, 0, 0, record.width, record.height);
    record.channels = 1;
    record.pixelType = pixelType;
    record.step = memory->Step();
    record.pixels = memory->FirstPel();
    return true;
}

// Hands the three planes to the engine in place, in reverse order. What the engine answers is
// not looked at.
bool DescribeColorImage(IImage const& image, EngineImage& record) {
    auto const* color = dynamic_cast<Image24PlanarColor const*>(&image);
    if (!color)
        return false;
    std::shared_ptr<IImage8PixelMemory> first;
    std::shared_ptr<IImage8PixelMemory> second;
    std::shared_ptr<IImage8PixelMemory> third;
    color->Get3PlanePixelMemory(ImageDataModeConstants_Read, 0, 0, record.width, record.height,
                                first, second, third);
    Engine().kelo_create_image(record.width, record.height, third->Step(), 0, third->FirstPel(),
                               second->FirstPel(), first->FirstPel(), nullptr, &record);
    return true;
}

bool DescribeImage(IImage const& image, EngineImage& record) {
    return DescribeGreyImage<Image8Grey>(image, 0, record) ||
           DescribeGreyImage<Image16Grey>(image, 1, record) || DescribeColorImage(image, record);
}

// The map from the engine's pixels, the image's root space, into the space the caller reads.
std::shared_ptr<Transform2DLinear> EngineToCallerTransform(IImage const& image) {
    // An image read in its root space, as most are, maps by exactly the identity; the walk
    // through its space tree would make five transforms to say so.
    if (image.SelectedSpaceName() == CoordinateSpaceTree::RootSpaceName)
        return Brnt::CreateObject<Transform2DLinear>();
    auto const callerToEngine = image.GetTransform("#", image.SelectedSpaceName());
    return Vision::Private::MiscUtils::LinearOrElse(*callerToEngine)->Invert();
}

} // namespace

void DeepLearningAccess::ThrowReleasingImage(int status, DeepLearningExceptionCodes code,
                                             char const* prefix, EngineImage& record) {
    std::string message = FormatEngineError(status, prefix);
    Engine().kelo_free_image(&record);
    throw DeepLearningException(code, message);
}

void DeepLearningAccess::PushRuntimeParameters(DLStream const& stream) {
    if (auto tools = stream.Tools())
        for (auto const& tool : *tools)
            ApplyRuntimeParametersRecursively(tool);
}

std::shared_ptr<DLResult> DeepLearningAccess::RunKeloStream(IImage const& image,
                                                            DLStream const& stream) {
    // Held across decoding too: resource images are fetched while the sample exists, and no
    // other run may change the shared engine workspace between the push and the run.
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    EngineFunctionTable& engine = Engine();

    EngineImage record{};
    if (int const status = engine.kelo_init_image(&record); status != 0) {
        if (accessBuffer_) {
            engine.kelo_get_error_message(status, &accessBuffer_->buffer);
            engine.kelo_free_image(&record);
        }
        throw DeepLearningException(DeepLearningExceptionCodes::CannotInitializeImage,
                                    ExceptionTexts::CannotInitializeImage);
    }
    record.width = image.Width();
    record.height = image.Height();
    if (!DescribeImage(image, record))
        throw ImageException(Strings::E_TavImage_BadType, VisionExceptionCodes_ImageBadType);
    try {
        PushRuntimeParameters(stream);
    } catch (...) {
        engine.kelo_free_image(&record);
        throw;
    }

    auto const workspace = stream.ParentWorkspace();
    if (!workspace) {
        engine.kelo_free_image(&record);
        throw InternalErrorException("The stream " + stream.name_ +
                                         " no longer belongs to an open workspace.",
                                     VisionExceptionCodes_InternalError);
    }
    char const* workspaceId = workspace->name_.c_str();
    char const* streamName = stream.name_.c_str();
    // A fresh id for each run, so that samples never collide.
    std::string const sampleId = Vision::Private::PalUtils::NewGuid();
    if (int const status =
            engine.kelo_runtime_create_sample(workspaceId, streamName, sampleId.c_str()))
        ThrowReleasingImage(status, DeepLearningExceptionCodes::CannotCreateSample,
                            ExceptionTexts::CannotCreateSample, record);
    if (int const status = engine.kelo_runtime_sample_add_image(workspaceId, streamName,
                                                                sampleId.c_str(), &record))
        ThrowReleasingImage(status, DeepLearningExceptionCodes::CannotAddImage,
                            ExceptionTexts::CannotAddImage, record);
    if (int const status =
            engine.kelo_runtime_sample_process(workspaceId, streamName, "", sampleId.c_str(), ""))
        ThrowReleasingImage(status, DeepLearningExceptionCodes::CannotRunStream,
                            ExceptionTexts::CannotRunStream, record);

    EngineBuffer resultBuffer{};
    if (engine.kelo_init_buffer(&resultBuffer) != 0)
        throw DeepLearningInitializeException(DeepLearningExceptionCodes::CannotInitializeBuffer,
                                              ExceptionTexts::CannotInitializeBuffer);
    if (int const status = engine.kelo_runtime_get_sample(workspaceId, streamName, sampleId.c_str(),
                                                          &resultBuffer)) {
        std::string message = FormatEngineError(status, ExceptionTexts::CannotGetResult);
        engine.kelo_free_image(&record);
        engine.kelo_free_buffer(&resultBuffer);
        throw DeepLearningException(DeepLearningExceptionCodes::CannotGetResult, message);
    }

    std::shared_ptr<DLResult> result;
    try {
        result = ParseResultKeloXml(stream, resultBuffer.text ? resultBuffer.text : "",
                                    EngineToCallerTransform(image));
    } catch (...) {
        engine.kelo_free_buffer(&resultBuffer);
        engine.kelo_free_image(&record);
        throw;
    }
    engine.kelo_runtime_free_sample(workspaceId, streamName, sampleId.c_str());
    engine.kelo_free_image(&record);
    if (int const status = engine.kelo_free_buffer(&resultBuffer))
        throw DeepLearningException(
            DeepLearningExceptionCodes::CannotFreeImage,
            Private::FormatEngineError(status, ExceptionTexts::CannotFreeImage, resultBuffer));
    return result;
}

} // namespace Tavrin::Vision::DeepLearning::Private
