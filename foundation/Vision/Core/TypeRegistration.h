#pragma once

// Values of the metadata that registered types carry, so that a host can tell classes, bases,
// interfaces, enumerations, collections and flag constants apart without knowing them.
namespace Tavrin::Brnt::TypeRegistration {

enum class ClassType {
    Class = 0,
    BaseClass = 1,
    Struct = 2,
    Interface = 3,
    Alias = 4,
    Template = 5,
    Enumeration = 6,
};

enum class TypeSubCategory {
    None = 0,
    Image = 1,
    Graphic = 2,
    Tool = 3,
    Collection = 4,
    Record = 5,
    Exception = 6,
    Constants = 7,
};

enum class PropertyType {
    Value = 0,
    Accessor = 1,
    ChangeFlag = 2,
};

} // namespace Tavrin::Brnt::TypeRegistration
