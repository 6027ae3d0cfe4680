#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Image.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// An image that a tool attached to its answer, copied out of the engine; the image may be
// null when the engine gave none of a known kind.
class DLResultResource : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultResource)

    std::string Name() const { return name_; }
    std::string Type() const { return type_; }
    std::string UUID() const { return uuid_; }
    std::shared_ptr<IImage> Image() const { return image_; }
    double Scale() const { return scale_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultResource() = default;
    DLResultResource(ObjectCreateAccessToken const&, std::string name, std::string type,
                     std::string uuid, std::shared_ptr<IImage> image, double scale);

    std::string name_;
    std::string type_;
    std::string uuid_;
    std::shared_ptr<IImage> image_;
    double scale_ = 1.0;

    RTTR_ENABLE(ShareableBase)
};

using DLResultResourcePtr = std::shared_ptr<DLResultResource>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultResource, 1)
