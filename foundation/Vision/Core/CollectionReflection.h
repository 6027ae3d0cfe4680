#pragma once

#include "Vision/Core/Registration.h"

namespace Tavrin::Vision::Implementation {

// Registers a collection type under its reflected name with what a host needs to walk it: Count,
// and Item(int index), through which GetFakeProperties lists the items.
template <class Collection> void RegisterCollectionReflection(char const* name) {
    rttr::registration::class_<Collection>(name)
        .property_readonly("Count", &Collection::Count)
        .method("Item", &Collection::Item)(rttr::parameter_names("index"));
}

} // namespace Tavrin::Vision::Implementation
