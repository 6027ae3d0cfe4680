#pragma once

#include <string>
#include <vector>

#include <rttr/type>

namespace TavrinCli {

// One parameter of a tool or model as reflection shows it.
struct Parameter {
    std::string name;
    std::string value;
    bool writable;
};

// Every parameter of the object by its reflected name, in registration order: the properties of
// its dynamic class that hold a plain value (numbers, flags, texts, sizes, enumerations). Change
// flags, identity texts and the collections of the tree are left out.
std::vector<Parameter> ParametersOf(const rttr::instance& object);

// The parameter's value; UsageError when the object has no such parameter.
rttr::variant ParameterVariant(const rttr::instance& object, const std::string& name);

// The parameter's value as text; UsageError when the object has no such parameter.
std::string ParameterValue(const rttr::instance& object, const std::string& name);

// Sets the parameter from text through its setter. UsageError when the object has no such
// writable parameter, when the text is no value of its type, or with the setter's own message
// when the setter refuses the value.
void SetParameter(const rttr::instance& object, const std::string& name, const std::string& text);

} // namespace TavrinCli
