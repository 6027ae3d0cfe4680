#include "Vision/Core/Meta.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision::Meta {

rttr::variant FakePropertyMeta::GetValue(rttr::instance const& object) const {
    rttr::method const& getter = getter_->Method();
    rttr::variant value = index_.is_valid() ? getter.invoke(object, index_) : getter.invoke(object);
    if (!value.is_valid())
        throw ArgumentException("The property could not be read through " + getter_->Name());
    return value;
}

namespace Internal {

namespace {

bool ReturnsValue(rttr::method const& method) {
    return method.get_return_type() != rttr::type::get<void>();
}

bool IsItemGetter(rttr::method const& method) {
    if (!method.is_valid() || !ReturnsValue(method))
        return false;
    auto const parameters = method.get_parameter_infos();
    return parameters.size() == 1 && parameters.begin()->get_type() == rttr::type::get<int>();
}

} // namespace

FakePropertyMetaListPtr GetFakePropertiesForNoArgMethods(rttr::type const& type) {
    auto properties = std::make_shared<FakePropertyMetaList>();
    for (rttr::method const& method : type.get_methods()) {
        if (method.get_parameter_infos().empty() && ReturnsValue(method))
            properties->push_back(
                std::make_shared<FakePropertyMeta>(std::make_shared<MethodMeta>(method), nullptr,
                                                   rttr::variant(), method.get_name().to_string()));
    }
    return properties;
}

FakePropertyMetaListPtr GetItemFakeProperties(rttr::type const& type,
                                              Brnt::ICountable const& collection) {
    FakePropertyMetaListPtr properties = GetFakePropertiesForNoArgMethods(type);
    rttr::method const item = type.get_method("Item");
    if (!IsItemGetter(item))
        return properties;
    int const count = collection.Count();
    if (count < 1)
        return properties;
    for (int index = 0; index < count; ++index)
        properties->push_back(std::make_shared<FakePropertyMeta>(
            std::make_shared<MethodMeta>(item), nullptr, rttr::variant(index), std::string()));
    return properties;
}

} // namespace Internal

} // namespace Tavrin::Vision::Meta
