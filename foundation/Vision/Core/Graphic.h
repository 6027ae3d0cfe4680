#pragma once

#include <memory>
#include <string>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/Color32.h"
#include "Vision/Core/GraphicConstants.h"
#include "Vision/Core/Transform2D.h"

namespace Tavrin::Vision {

// Anything a host draws. The look getters and setters keep this order.
class IGraphic : public virtual IChangedEvent {
public:
    virtual Color32 Color() const = 0;
    virtual void setColor(Color32 color) = 0;
    virtual int LineStyle() const = 0;
    virtual void setLineStyle(int lineStyle) = 0;
    virtual int LineWidthInScreenPixels() const = 0;
    virtual void setLineWidthInScreenPixels(int lineWidth) = 0;
    // The coordinate space of the graphic's numbers; "." is the space that the image under
    // the graphic has selected.
    virtual std::string const& SelectedSpaceName() const = 0;
    virtual void setSelectedSpaceName(std::string const& name) = 0;

    RTTR_ENABLE(IChangedEvent)
};

// A graphic that a user may pick and drag in a host's display.
class IGraphicInteractive : public IGraphic {
public:
    virtual bool Interactive() const = 0;
    virtual void setInteractive(bool interactive) = 0;
    virtual std::string const& TipText() const = 0;
    virtual void setTipText(std::string const& text) = 0;

    RTTR_ENABLE(IGraphic)
};

// A graphic that can hang below another one. The parent is held weakly: it owns its
// children, never the other way round.
class IGraphicParentChild : public virtual IChangedEvent {
public:
    virtual std::shared_ptr<IGraphicParentChild> Parent() const = 0;
    virtual void setParent(std::shared_ptr<IGraphicParentChild> parent) = 0;

    RTTR_ENABLE(IChangedEvent)
};

// A geometric figure that can be copied and carried through a linear map.
class IShape : public virtual IChangedEvent {
public:
    virtual std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const = 0;
    // A new shape whose boundary is the image of this one's; this one stays as it is.
    virtual std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                             CopyShapeConstants mode) const = 0;

    RTTR_ENABLE(IChangedEvent)
};

// A shape that encloses an area.
class IRegion : public IShape {
public:
    // Whether the point lies inside or on the boundary.
    virtual bool Within(double x, double y) const = 0;

    RTTR_ENABLE(IShape)
};

using IGraphicPtr = std::shared_ptr<IGraphic>;
using IGraphicInteractivePtr = std::shared_ptr<IGraphicInteractive>;
using IGraphicParentChildPtr = std::shared_ptr<IGraphicParentChild>;
using IShapePtr = std::shared_ptr<IShape>;
using IRegionPtr = std::shared_ptr<IRegion>;

// The look, interaction and parent link that every drawable class shares.
class GraphicInteractiveBase : public virtual ChangedEventShareableBase,
                               public IGraphicInteractive,
                               public IGraphicParentChild {
public:
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long SfColor = sf0_;
    static constexpr long long SfLineStyle = sf0_ << 1;
    static constexpr long long SfLineWidthInScreenPixels = sf0_ << 2;
    static constexpr long long SfSelectedSpaceName = sf0_ << 3;
    static constexpr long long SfInteractive = sf0_ << 4;
    static constexpr long long SfTipText = sf0_ << 5;
    static constexpr long long SfParent = sf0_ << 6;
    static constexpr long long sfNextSf_ = sf0_ << 7;

    static constexpr std::uint32_t DefaultColor = 0xff00ff00;

    Color32 Color() const override { return color_; }
    void setColor(Color32 color) override;
    int LineStyle() const override { return lineStyle_; }
    void setLineStyle(int lineStyle) override;
    int LineWidthInScreenPixels() const override { return lineWidth_; }
    void setLineWidthInScreenPixels(int lineWidth) override;
    std::string const& SelectedSpaceName() const override { return selectedSpaceName_; }
    void setSelectedSpaceName(std::string const& name) override;

    bool Interactive() const override { return interactive_; }
    void setInteractive(bool interactive) override;
    std::string const& TipText() const override { return tipText_; }
    void setTipText(std::string const& text) override;

    std::shared_ptr<IGraphicParentChild> Parent() const override { return parent_.lock(); }
    void setParent(std::shared_ptr<IGraphicParentChild> parent) override;

protected:
    GraphicInteractiveBase() = default;

    // A new object of the class with the parts of this one's look that the mode names; the
    // caller adds the geometry. A copy never takes over the parent, which doesn't list it.
    template <class T> std::shared_ptr<T> CreateCopy(CopyShapeConstants mode) const {
        auto copy = Brnt::ObjectFactory::Create<T>();
        copy->CopyLookFrom(*this, mode);
        return copy;
    }

    // Stores the value and raises the bit, unless the value is already there.
    template <class T> void Update(T& field, T const& value, long long changedBit) {
        if (field == value)
            return;
        field = value;
        OnChanged_(changedBit);
    }

    static void RequireInRange(char const* name, int value, int minimum, int maximum);
    static void RequirePositive(char const* name, int value);
    static bool Carries(CopyShapeConstants mode, CopyShapeConstants part) {
        return (mode & part) != 0;
    }

private:
    void CopyLookFrom(GraphicInteractiveBase const& source, CopyShapeConstants mode);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    Color32 color_ = DefaultColor;
    int lineStyle_ = LineStyleConstants_Solid;
    int lineWidth_ = 1;
    std::string selectedSpaceName_ = ".";
    bool interactive_ = false;
    std::string tipText_;
    std::weak_ptr<IGraphicParentChild> parent_;

    RTTR_ENABLE(ChangedEventShareableBase, IGraphicInteractive, IGraphicParentChild)
};

} // namespace Tavrin::Vision

CEREAL_CLASS_VERSION(Tavrin::Vision::GraphicInteractiveBase, 1)
