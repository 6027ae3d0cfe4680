#include "Vision/Core/CoordinateSpaceTree.h"

#include <algorithm>

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

namespace {

std::shared_ptr<Transform2DLinear> CopyOf(Transform2DLinear const& transform) {
    return Brnt::CreateObject<Transform2DLinear>(transform.A(), transform.B(), transform.C(),
                                                 transform.D(), transform.TX(), transform.TY());
}

bool IsRoot(std::string const& name) {
    return name == CoordinateSpaceTree::RootSpaceName;
}

[[noreturn]] void ThrowUnknownSpace(std::string const& name) {
    throw ArgumentException("The coordinate space '" + name + "' does not exist.");
}

} // namespace

void CoordinateSpaceTree::AddSpace(std::string const& name, std::string const& parentName,
                                   Transform2DLinear const& fromParent) {
    if (name.empty())
        throw ArgumentException("A coordinate space needs a name.");
    if (Contains(name))
        throw ArgumentException("The coordinate space '" + name + "' already exists.");
    if (!Contains(parentName))
        ThrowUnknownSpace(parentName);
    spaces_.push_back(Space{name, parentName, CopyOf(fromParent)});
    OnChanged_(SfSpaces);
}

bool CoordinateSpaceTree::Contains(std::string const& name) const {
    return IsRoot(name) || Find(name) != nullptr;
}

std::vector<std::string> CoordinateSpaceTree::SpaceNames() const {
    std::vector<std::string> names;
    for (auto const& space : spaces_)
        names.push_back(space.name);
    return names;
}

std::string CoordinateSpaceTree::ParentName(std::string const& name) const {
    return IsRoot(name) ? std::string() : Get(name).parentName;
}

std::shared_ptr<Transform2DLinear>
CoordinateSpaceTree::TransformFromParent(std::string const& name) const {
    return IsRoot(name) ? Brnt::CreateObject<Transform2DLinear>() : CopyOf(*Get(name).fromParent);
}

std::shared_ptr<Transform2DLinear>
CoordinateSpaceTree::TransformFromRoot(std::string const& name) const {
    // Walking up, each parent's transform applies before what was gathered below it.
    auto result = Brnt::CreateObject<Transform2DLinear>();
    for (std::string current = name; !IsRoot(current);) {
        Space const& space = Get(current);
        result = result->Compose(*space.fromParent);
        current = space.parentName;
    }
    return result;
}

std::shared_ptr<Transform2DLinear>
CoordinateSpaceTree::GetTransform(std::string const& toSpace, std::string const& fromSpace) const {
    return TransformFromRoot(toSpace)->Compose(*TransformFromRoot(fromSpace)->Invert());
}

std::shared_ptr<CoordinateSpaceTree> CoordinateSpaceTree::Copy() const {
    auto copy = Brnt::CreateObject<CoordinateSpaceTree>();
    for (auto const& space : spaces_)
        copy->spaces_.push_back(Space{space.name, space.parentName, CopyOf(*space.fromParent)});
    return copy;
}

CoordinateSpaceTree::Space const* CoordinateSpaceTree::Find(std::string const& name) const {
    auto found = std::find_if(spaces_.begin(), spaces_.end(),
                              [&name](Space const& space) { return space.name == name; });
    return found == spaces_.end() ? nullptr : &*found;
}

CoordinateSpaceTree::Space const& CoordinateSpaceTree::Get(std::string const& name) const {
    if (Space const* space = Find(name))
        return *space;
    ThrowUnknownSpace(name);
}

template <class Archive>
void CoordinateSpaceTree::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "CoordinateSpaceTree::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), spaces_);
}

TAVRIN_INSTANTIATE_SERIALIZE(CoordinateSpaceTree)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::CoordinateSpaceTree,
                               "Tavrin::Vision::CoordinateSpaceTree")

TAVRIN_REGISTRATION(CoordinateSpaceTree) {
    using Tavrin::Vision::CoordinateSpaceTree;
    rttr::registration::class_<CoordinateSpaceTree>("Tavrin::Vision::CoordinateSpaceTree")
        .property_readonly("SpaceNames", &CoordinateSpaceTree::SpaceNames)
        .method("GetTransform", &CoordinateSpaceTree::GetTransform)
        .method("TransformFromRoot", &CoordinateSpaceTree::TransformFromRoot);
}
