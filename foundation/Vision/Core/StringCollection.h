#pragma once

#include <string>
#include <vector>

#include "Vision/Core/CollectionBase.h"

namespace Tavrin::Vision {

class StringCollection : public Implementation::CollectionBase<std::string> {
public:
    explicit StringCollection(ObjectCreateAccessToken const&) {}
    StringCollection(ObjectCreateAccessToken const&, std::vector<std::string> items);

    TAVRIN_SHARED_FROM_THIS(StringCollection)

private:
    StringCollection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(Implementation::CollectionBase<std::string>)
};

using StringCollectionPtr = std::shared_ptr<StringCollection>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::StringCollection, 1)
