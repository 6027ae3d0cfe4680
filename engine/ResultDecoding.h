#pragma once

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
char const* RequiredAttribute(tinyxml2::XMLElement const& element, char const* name);
tinyxml2::XMLElement const& RequiredChild(tinyxml2::XMLElement const& element, char const* name);

// Calls visit on each child element of that name, in document order.
template <class Visit>
void ForEachChild(tinyxml2::XMLElement const& parent, char const* name, Visit&& visit) {
    for (auto const* child = parent.FirstChildElement(name); child;
         child = child->NextSiblingElement(name))
        visit(*child);
}

} // namespace Tavrin::Vision::DeepLearning::Private
