#include "Vision/Core/Polygon.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

void Polygon::AddVertex(double x, double y, int index) {
    if (index < -1 || index > VertexCount())
        Implementation::Internal::ThrowInvalidCollectionIndexException();
    auto const position = index == -1 ? vertices_.end() : vertices_.begin() + index;
    vertices_.insert(position, Brnt::ObjectFactory::Create<Vect2>(x, y));
    OnChanged_(SfVertices);
}

void Polygon::RemoveVertex(int index) {
    requireVertex(index);
    vertices_.erase(vertices_.begin() + index);
    OnChanged_(SfVertices);
}

Vect2Ptr Polygon::Vertex(int index) const {
    requireVertex(index);
    return vertices_[index];
}

void Polygon::requireVertex(int index) const {
    if (index < 0 || index >= VertexCount())
        Implementation::Internal::ThrowInvalidCollectionIndexException();
}

void Polygon::setVertices(std::vector<Vect2Ptr> vertices) {
    vertices_ = std::move(vertices);
    OnChanged_(SfVertices);
}

std::shared_ptr<Polygon> Polygon::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<Polygon>(mode);
    copy->setVertices(vertices_);
    return copy;
}

std::shared_ptr<Polygon> Polygon::MapLinear(Transform2DLinear const& transform,
                                            CopyShapeConstants mode) const {
    std::vector<Vect2Ptr> mapped;
    mapped.reserve(vertices_.size());
    for (auto const& vertex : vertices_) {
        double x, y;
        transform.MapPoint(vertex->X(), vertex->Y(), &x, &y);
        mapped.push_back(Brnt::ObjectFactory::Create<Vect2>(x, y));
    }
    auto copy = CreateCopy<Polygon>(mode);
    copy->setVertices(std::move(mapped));
    return copy;
}

bool Polygon::Within(double x, double y) const {
    // Count the edges that a ray to the right of the point crosses.
    bool inside = false;
    for (std::size_t i = 0, j = vertices_.size() - 1; i < vertices_.size(); j = i++) {
        double const xi = vertices_[i]->X(), yi = vertices_[i]->Y();
        double const xj = vertices_[j]->X(), yj = vertices_[j]->Y();
        if ((yi > y) != (yj > y) && x < xi + (y - yi) * (xj - xi) / (yj - yi))
            inside = !inside;
    }
    return inside;
}

template <class Archive> void Polygon::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Polygon::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), vertices_);
}

TAVRIN_INSTANTIATE_SERIALIZE(Polygon)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Polygon, "Tavrin::Vision::Polygon")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion, Tavrin::Vision::Polygon)

TAVRIN_REGISTRATION(Polygon) {
    using Tavrin::Vision::Polygon;
    rttr::registration::class_<Polygon>("Tavrin::Vision::Polygon")
        .property_readonly("VertexCount", &Polygon::VertexCount)
        .method("Vertex", &Polygon::Vertex)
        .method("AddVertex", &Polygon::AddVertex)
        .method("RemoveVertex", &Polygon::RemoveVertex);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::PolygonPtr>();
}
