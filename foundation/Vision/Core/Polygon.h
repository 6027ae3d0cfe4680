#pragma once

#include <memory>
#include <vector>

#include "Vision/Core/Graphic.h"
#include "Vision/Core/Vect2.h"

namespace Tavrin::Vision {

// A closed polygon through its vertices in order.
class Polygon : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfVertices = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    explicit Polygon(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(Polygon)

    // Inserts the vertex before the one at index; index -1 appends.
    void AddVertex(double x, double y, int index);
    void RemoveVertex(int index);
    int VertexCount() const { return static_cast<int>(vertices_.size()); }
    Vect2Ptr Vertex(int index) const;

    std::shared_ptr<Polygon> Copy(CopyShapeConstants mode) const;
    std::shared_ptr<Polygon> MapLinear(Transform2DLinear const& transform,
                                       CopyShapeConstants mode) const;

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    // By the even-odd rule, so a self-crossing polygon has holes where it overlaps itself.
    bool Within(double x, double y) const override;

private:
    Polygon() = default;

    void requireVertex(int index) const;
    void setVertices(std::vector<Vect2Ptr> vertices);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    // Vect2 is immutable, so copies share the points.
    std::vector<Vect2Ptr> vertices_;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using PolygonPtr = std::shared_ptr<Polygon>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Polygon, 1)
