#pragma once

#include <memory>
#include <string>
#include <vector>

#include <rttr/type>

#include "Vision/Core/CollectionInterfaces.h"
#include "Vision/Core/Object.h"

namespace Tavrin::Vision::Meta {

// One reflected method as a host presents it.
class MethodMeta {
public:
    explicit MethodMeta(rttr::method method)
        : method_(method) {}

    rttr::method const& Method() const { return method_; }
    std::string Name() const { return method_.get_name().to_string(); }

private:
    rttr::method method_;
};

// A value that a host shows as a property although the type registers none: it is read through
// a getter method, given the index as its one argument when the index is not empty.
class FakePropertyMeta {
public:
    FakePropertyMeta(std::shared_ptr<MethodMeta> getter, std::shared_ptr<MethodMeta> setter,
                     rttr::variant index, std::string name)
        : getter_(std::move(getter))
        , setter_(std::move(setter))
        , index_(std::move(index))
        , name_(std::move(name)) {}

    std::shared_ptr<MethodMeta> const& Getter() const { return getter_; }
    // Empty for a read-only property.
    std::shared_ptr<MethodMeta> const& Setter() const { return setter_; }
    rttr::variant const& Index() const { return index_; }
    std::string const& Name() const { return name_; }
    bool IsReadOnly() const { return !setter_; }

    // Calls the getter on the object; throws ArgumentException when the object is not of the
    // getter's class or the call fails.
    rttr::variant GetValue(rttr::instance const& object) const;

private:
    std::shared_ptr<MethodMeta> getter_;
    std::shared_ptr<MethodMeta> setter_;
    rttr::variant index_;
    std::string name_;
};

using FakePropertyMetaList = std::vector<std::shared_ptr<FakePropertyMeta>>;
using FakePropertyMetaListPtr = std::shared_ptr<FakePropertyMetaList>;

class IHaveFakePropertyMeta : public virtual Brnt::IObject {
public:
    virtual FakePropertyMetaListPtr GetFakeProperties() = 0;

    RTTR_ENABLE(IObject)
};

namespace Internal {

// One read-only property, named after its method, for each registered method of the type (its
// bases included) that takes no argument and returns a value.
FakePropertyMetaListPtr GetFakePropertiesForNoArgMethods(rttr::type const& type);

// The list above followed by one unnamed read-only property per item, read through the type's
// Item(int) method with the item's index; no items are listed unless Item has exactly that shape.
// Every collection kind answers GetFakeProperties with this.
FakePropertyMetaListPtr GetItemFakeProperties(rttr::type const& type,
                                              Brnt::ICountable const& collection);

} // namespace Internal

} // namespace Tavrin::Vision::Meta
