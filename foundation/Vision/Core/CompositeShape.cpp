#include "Vision/Core/CompositeShape.h"

#include <algorithm>

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

void CompositeShape::AddShape(std::shared_ptr<IRegion> const& shape, int index) {
    if (!shape)
        throw ArgumentException("The shape cannot be null");
    if (index < -1 || index > ShapeCount())
        Implementation::Internal::ThrowInvalidCollectionIndexException();
    shapes_.insert(index == -1 ? shapes_.end() : shapes_.begin() + index, shape);
    OnChanged_(SfShapes);
}

void CompositeShape::RemoveShape(int index) {
    requireShape(index);
    shapes_.erase(shapes_.begin() + index);
    OnChanged_(SfShapes);
}

std::shared_ptr<IRegion> CompositeShape::Shape(int index) const {
    requireShape(index);
    return shapes_[index];
}

void CompositeShape::requireShape(int index) const {
    if (index < 0 || index >= ShapeCount())
        Implementation::Internal::ThrowInvalidCollectionIndexException();
}

std::shared_ptr<CompositeShape> CompositeShape::Transformed(
    CopyShapeConstants mode,
    std::function<std::shared_ptr<IShape>(IRegion const&)> const& transform) const {
    auto result = CreateCopy<CompositeShape>(mode);
    for (auto const& shape : shapes_) {
        auto region = std::dynamic_pointer_cast<IRegion>(transform(*shape));
        if (!region)
            throw InternalErrorException("A region was copied or mapped into a shape without area",
                                         VisionExceptionCodes_InternalError);
        result->AddShape(region, -1);
    }
    return result;
}

std::shared_ptr<CompositeShape> CompositeShape::Copy(CopyShapeConstants mode) const {
    return Transformed(mode, [mode](IRegion const& shape) { return shape.CopyShape(mode); });
}

std::shared_ptr<CompositeShape> CompositeShape::MapLinear(Transform2DLinear const& transform,
                                                          CopyShapeConstants mode) const {
    return Transformed(
        mode, [&transform, mode](IRegion const& shape) { return shape.MapShape(transform, mode); });
}

bool CompositeShape::Within(double x, double y) const {
    return std::any_of(shapes_.begin(), shapes_.end(),
                       [x, y](auto const& shape) { return shape->Within(x, y); });
}

template <class Archive> void CompositeShape::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "CompositeShape::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), shapes_);
}

TAVRIN_INSTANTIATE_SERIALIZE(CompositeShape)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::CompositeShape, "Tavrin::Vision::CompositeShape")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion, Tavrin::Vision::CompositeShape)

TAVRIN_REGISTRATION(CompositeShape) {
    using Tavrin::Vision::CompositeShape;
    rttr::registration::class_<CompositeShape>("Tavrin::Vision::CompositeShape")
        .property_readonly("ShapeCount", &CompositeShape::ShapeCount)
        .method("Shape", &CompositeShape::Shape)
        .method("AddShape", &CompositeShape::AddShape)
        .method("RemoveShape", &CompositeShape::RemoveShape);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::CompositeShapePtr>();
}
