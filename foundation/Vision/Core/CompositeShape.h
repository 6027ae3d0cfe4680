#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// The union of several regions, drawn and moved as one.
class CompositeShape : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfShapes = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    explicit CompositeShape(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(CompositeShape)

    // Inserts the region before the one at index; index -1 appends. A null region throws.
    void AddShape(std::shared_ptr<IRegion> const& shape, int index);
    void RemoveShape(int index);
    int ShapeCount() const { return static_cast<int>(shapes_.size()); }
    std::shared_ptr<IRegion> Shape(int index) const;

    // Copies and maps the regions too, so that the result shares nothing with this one.
    std::shared_ptr<CompositeShape> Copy(CopyShapeConstants mode) const;
    std::shared_ptr<CompositeShape> MapLinear(Transform2DLinear const& transform,
                                              CopyShapeConstants mode) const;

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    bool Within(double x, double y) const override;

private:
    CompositeShape() = default;

    void requireShape(int index) const;
    // A new composite with the parts of the look that the mode names and each region
    // replaced by what the function makes of it.
    std::shared_ptr<CompositeShape>
    Transformed(CopyShapeConstants mode,
                std::function<std::shared_ptr<IShape>(IRegion const&)> const& transform) const;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::vector<std::shared_ptr<IRegion>> shapes_;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using CompositeShapePtr = std::shared_ptr<CompositeShape>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::CompositeShape, 1)
