#pragma once

#include <memory>
#include <vector>

#include "Vision/Core/CollectionBase.h"
#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// The graphics a host draws together, in drawing order.
class GraphicCollection : public Implementation::CollectionBase<IGraphicPtr> {
public:
    explicit GraphicCollection(ObjectCreateAccessToken const& token)
        : CollectionBase(token) {}
    GraphicCollection(ObjectCreateAccessToken const& token, std::vector<IGraphicPtr> items)
        : CollectionBase(token, std::move(items)) {}

    TAVRIN_SHARED_FROM_THIS(GraphicCollection)

private:
    GraphicCollection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(CollectionBase<IGraphicPtr>)
};

class GraphicParentChildCollection : public Implementation::CollectionBase<IGraphicParentChildPtr> {
public:
    explicit GraphicParentChildCollection(ObjectCreateAccessToken const& token)
        : CollectionBase(token) {}
    GraphicParentChildCollection(ObjectCreateAccessToken const& token,
                                 std::vector<IGraphicParentChildPtr> items)
        : CollectionBase(token, std::move(items)) {}

    TAVRIN_SHARED_FROM_THIS(GraphicParentChildCollection)

private:
    GraphicParentChildCollection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(CollectionBase<IGraphicParentChildPtr>)
};

using GraphicCollectionPtr = std::shared_ptr<GraphicCollection>;
using GraphicParentChildCollectionPtr = std::shared_ptr<GraphicParentChildCollection>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::GraphicCollection, 1)
TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::GraphicParentChildCollection, 1)
