#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/Transform2D.h"

namespace Tavrin::Vision {

// Named coordinate spaces of an image. Every space but the root "#" has a parent and the
// transform that maps coordinates of its parent into its own.
class CoordinateSpaceTree : public virtual ChangedEventShareableBase {
public:
    static const long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static const long long SfSpaces = sf0_;
    static const long long sfNextSf_ = sf0_ << 1;

    static constexpr char const* RootSpaceName = "#";

    explicit CoordinateSpaceTree(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(CoordinateSpaceTree)

    // Throws ArgumentException for an empty or existing name and for an unknown parent.
    void AddSpace(std::string const& name, std::string const& parentName,
                  Transform2DLinear const& fromParent);
    bool Contains(std::string const& name) const;
    // The spaces below the root, in the order they were added.
    std::vector<std::string> SpaceNames() const;
    std::string ParentName(std::string const& name) const;
    std::shared_ptr<Transform2DLinear> TransformFromParent(std::string const& name) const;

    // The map from root coordinates into the named space.
    std::shared_ptr<Transform2DLinear> TransformFromRoot(std::string const& name) const;
    // The map from coordinates of fromSpace into toSpace.
    std::shared_ptr<Transform2DLinear> GetTransform(std::string const& toSpace,
                                                    std::string const& fromSpace) const;

    // A tree of its own, with copies of the transforms.
    std::shared_ptr<CoordinateSpaceTree> Copy() const;

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    CoordinateSpaceTree() = default;

    struct Space {
        std::string name;
        std::string parentName;
        std::shared_ptr<Transform2DLinear> fromParent;

        template <class Archive> void serialize(Archive& archive) {
            archive(name, parentName, fromParent);
        }
    };

    Space const* Find(std::string const& name) const;
    // Throws ArgumentException naming the space when it is unknown.
    Space const& Get(std::string const& name) const;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::vector<Space> spaces_;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using CoordinateSpaceTreePtr = std::shared_ptr<CoordinateSpaceTree>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::CoordinateSpaceTree, 1)
