#pragma once

#include <cstdint>
#include <memory>

#include <tinyxml2.h>

// The decoder of the engine's result document, one function per element. Each reads its
// attributes in the engine's order, which decides which failure surfaces first. Every object
// is built fresh and every text is copied out, so nothing refers to the document afterwards.
namespace Tavrin::Vision {
class Transform2DLinear;
class Vect2;
} // namespace Tavrin::Vision

namespace Tavrin::Vision::DeepLearning {
class DLStream;
class DLToolRuntimeParams;
class DLResult;
class DLResultRed;
class DLResultGreen;
class DLResultBlue;
class DLResultResourceReadOnlyCollection;
} // namespace Tavrin::Vision::DeepLearning

namespace Tavrin::Vision::DeepLearning::Private {

using TransformPtr = std::shared_ptr<Transform2DLinear>;
using ToolPtr = std::shared_ptr<DLToolRuntimeParams>;

// Null when the document's tool is none of the stream's: the one quiet refusal.
std::shared_ptr<DLResult> CreateDLResult(DLStream const& stream, tinyxml2::XMLElement const& root,
                                         TransformPtr const& transform);
std::shared_ptr<DLResultRed> CreateRedResult(tinyxml2::XMLElement const& red, ToolPtr const& tool,
                                             bool addImageRecords,
                                             std::shared_ptr<Vect2> const& viewSize,
                                             TransformPtr const& pose);
std::shared_ptr<DLResultGreen> CreateGreenResult(tinyxml2::XMLElement const& green,
                                                 ToolPtr const& tool, bool addImageRecords);
std::shared_ptr<DLResultBlue> CreateBlueResult(tinyxml2::XMLElement const& blue,
                                               ToolPtr const& tool, TransformPtr const& pose);
// With image records on, fetches each resource image of the element from the engine, which
// must still hold the sample; a score map is resampled to the size when one is given. With
// them off, an empty collection and no engine call.
std::shared_ptr<DLResultResourceReadOnlyCollection>
CreateResourcesIf(bool addImageRecords, tinyxml2::XMLElement const& parent,
                  std::shared_ptr<Vect2> const& size);

// A document that breaks the engine's contract: an element or attribute missing where one is
// required, or a transform too short. The engine never writes one; the decoder refuses it
// with CannotParseResult rather than read through nothing.
[[noreturn]] void ThrowBadDocument(char const* what);

// The attributes of one element, read by name. The engine writes them in the order in which
// the decoder reads them, so each search starts after the attribute found last and wraps
// around: one name compare a read where the orders agree, and the same answers where not.
class AttributeReader {
public:
    explicit AttributeReader(tinyxml2::XMLElement const& element);
    char const* Required(char const* name);

private:
    // Null when the element has no attribute of that name.
    char const* Find(char const* name);
    char const* FindBetween(tinyxml2::XMLAttribute const* first, tinyxml2::XMLAttribute const* stop,
                            char const* name);

    tinyxml2::XMLElement const& element_;
    tinyxml2::XMLAttribute const* next_;
};

char const* RequiredAttribute(tinyxml2::XMLElement const& element, char const* name);
tinyxml2::XMLElement const& RequiredChild(tinyxml2::XMLElement const& element, char const* name);

// tinyxml2's DoubleAttribute, Int64Attribute, IntAttribute and BoolAttribute, which read with
// sscanf. The plain numbers and words that the engine writes read the same here at a fraction of
// the cost; anything else is left to tinyxml2.
double DoubleAttribute(tinyxml2::XMLElement const& element, char const* name, double absent);
std::int64_t Int64Attribute(tinyxml2::XMLElement const& element, char const* name,
                            std::int64_t absent);
int IntAttribute(tinyxml2::XMLElement const& element, char const* name, int absent);
bool BoolAttribute(tinyxml2::XMLElement const& element, char const* name, bool absent);

// Calls visit on each child element of that name, in document order.
template <class Visit>
void ForEachChild(tinyxml2::XMLElement const& parent, char const* name, Visit&& visit) {
    for (auto const* child = parent.FirstChildElement(name); child;
         child = child->NextSiblingElement(name))
        visit(*child);
}

} // namespace Tavrin::Vision::DeepLearning::Private
