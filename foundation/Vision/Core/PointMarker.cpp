#include "Vision/Core/PointMarker.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void PointMarker::setX(double x) {
    Update(x_, x, SfX);
}
void PointMarker::setY(double y) {
    Update(y_, y, SfY);
}
void PointMarker::setRotation(double rotation) {
    Update(rotation_, rotation, SfRotation);
}

void PointMarker::setSizeInScreenPixels(int size) {
    RequirePositive("SizeInScreenPixels", size);
    Update(sizeInScreenPixels_, size, SfSizeInScreenPixels);
}

std::shared_ptr<PointMarker> PointMarker::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<PointMarker>(mode);
    copy->setX(x_);
    copy->setY(y_);
    copy->setRotation(rotation_);
    copy->setSizeInScreenPixels(sizeInScreenPixels_);
    return copy;
}

template <class Archive> void PointMarker::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "PointMarker::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), x_, y_, rotation_,
            sizeInScreenPixels_);
}

TAVRIN_INSTANTIATE_SERIALIZE(PointMarker)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::PointMarker, "Tavrin::Vision::PointMarker")

TAVRIN_REGISTRATION(PointMarker) {
    using Tavrin::Vision::PointMarker;
    rttr::registration::class_<PointMarker>("Tavrin::Vision::PointMarker")
        .property("X", &PointMarker::X, &PointMarker::setX)
        .property("Y", &PointMarker::Y, &PointMarker::setY)
        .property("Rotation", &PointMarker::Rotation, &PointMarker::setRotation)
        .property("SizeInScreenPixels", &PointMarker::SizeInScreenPixels,
                  &PointMarker::setSizeInScreenPixels);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::PointMarkerPtr>();
}
