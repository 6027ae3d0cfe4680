#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>
#include <Vision/Core/Vect2.h>

#include "Vision/DeepLearning/DLResult.h"
#include "Vision/DeepLearning/DLResultMarking.h"
#include "Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultView.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/NumberText.h"
#include "engine/ResultDecoding.h"
#include "engine/ScopeExit.h"
#include "engine/VectorText.h"

namespace Tavrin::Vision::DeepLearning::Private {

using tinyxml2::XMLElement;

void ThrowBadDocument(char const* what) {
    throw DeepLearningException(DeepLearningExceptionCodes::CannotParseResult,
                                std::string(ExceptionTexts::CannotParseResult) + ": " + what);
}

AttributeReader::AttributeReader(XMLElement const& element)
    : element_(element)
    , next_(element.FirstAttribute()) {}

char const* AttributeReader::Find(char const* name) {
    tinyxml2::XMLAttribute const* const start = next_;
    if (char const* value = FindBetween(start, nullptr, name))
        return value;
    return FindBetween(element_.FirstAttribute(), start, name);
}

char const* AttributeReader::FindBetween(tinyxml2::XMLAttribute const* first,
                                         tinyxml2::XMLAttribute const* stop, char const* name) {
    for (auto const* attribute = first; attribute != stop; attribute = attribute->Next()) {
        if (std::strcmp(attribute->Name(), name) == 0) {
            next_ = attribute->Next();
            return attribute->Value();
        }
    }
    return nullptr;
}

char const* AttributeReader::Required(char const* name) {
    if (char const* value = Find(name))
        return value;
    std::string const what =
        std::string("the ") + element_.Name() + " element has no " + name + " attribute";
    ThrowBadDocument(what.c_str());
}

char const* RequiredAttribute(XMLElement const& element, char const* name) {
    return AttributeReader(element).Required(name);
}

namespace {

// The number that the digits at the start of a text make, as sscanf reads it; nothing when there
// is no digit there, too many to be safe from overflow, or a hex prefix, which tinyxml2 reads.
std::optional<std::int64_t> LeadingDigits(char const* text, int maxDigits) {
    std::int64_t value = 0;
    int digits = 0;
    for (; digits <= maxDigits && text[digits] >= '0' && text[digits] <= '9'; ++digits)
        value = value * 10 + (text[digits] - '0');
    bool const hexPrefix = text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    if (digits == 0 || digits > maxDigits || hexPrefix)
        return std::nullopt;
    return value;
}

// tinyxml2 tries every boolean as a number first, with sscanf, before it compares the words.
std::optional<bool> PlainWord(char const* text) {
    if (std::strcmp(text, "true") == 0)
        return true;
    if (std::strcmp(text, "false") == 0)
        return false;
    return std::nullopt;
}

// The attribute as the quick reader takes it, else as tinyxml2's own typed reader does.
template <class T, class Quick>
T TypedAttribute(XMLElement const& element, char const* name, T absent, Quick quick,
                 T (XMLElement::*tinyxml2Reader)(char const*, T) const) {
    char const* const text = element.Attribute(name);
    if (!text)
        return absent;
    if (auto const plain = quick(text))
        return static_cast<T>(*plain);
    return (element.*tinyxml2Reader)(name, absent);
}

} // namespace

double DoubleAttribute(XMLElement const& element, char const* name, double absent) {
    return TypedAttribute(
        element, name, absent, [](char const* text) { return ReadPlainDecimal(text); },
        &XMLElement::DoubleAttribute);
}

std::int64_t Int64Attribute(XMLElement const& element, char const* name, std::int64_t absent) {
    return TypedAttribute(
        element, name, absent, [](char const* text) { return LeadingDigits(text, 18); },
        &XMLElement::Int64Attribute);
}

int IntAttribute(XMLElement const& element, char const* name, int absent) {
    return TypedAttribute(
        element, name, absent, [](char const* text) { return LeadingDigits(text, 9); },
        &XMLElement::IntAttribute);
}

bool BoolAttribute(XMLElement const& element, char const* name, bool absent) {
    return TypedAttribute(element, name, absent, &PlainWord, &XMLElement::BoolAttribute);
}

XMLElement const& RequiredChild(XMLElement const& element, char const* name) {
    if (XMLElement const* child = element.FirstChildElement(name))
        return *child;
    std::string const what =
        std::string("the ") + element.Name() + " element has no " + name + " element";
    ThrowBadDocument(what.c_str());
}

namespace {

std::shared_ptr<DLResultImageInfo> CreateDLResultImageInfo(XMLElement const& info) {
    std::string_view const size = RequiredAttribute(info, "size");
    std::size_t const x = size.find('x');
    int const width = ParseIntegerStrict(size.substr(0, x));
    // Without an "x" the position wraps to the start: "640" reads as 640 by 640.
    int const height = ParseIntegerStrict(size.substr(x + 1));
    int const channels = ParseIntegerStrict(RequiredAttribute(info, "channels"));
    int const depth = ParseIntegerStrict(RequiredAttribute(info, "depth"));
    return Brnt::CreateObject<DLResultImageInfo>(width, height, channels, depth);
}

// A view's own pose, or reference pose, taken into the caller's space.
TransformPtr ComposedPose(XMLElement const& view, char const* name, TransformPtr const& transform) {
    return transform->Compose(*ParseTransform2DLinear(RequiredAttribute(view, name)));
}

std::shared_ptr<DLResultView> CreateResultView(XMLElement const& view, ToolPtr const& tool,
                                               bool addImageRecords,
                                               TransformPtr const& transform) {
    PointValue const size = ReadPoint(RequiredAttribute(view, "size"), "x");
    auto const viewSize = Brnt::CreateObject<Vect2>(size.x, size.y);
    TransformPtr refPose = ComposedPose(view, "ref_pose", transform);
    TransformPtr pose = ComposedPose(view, "pose", transform);

    std::shared_ptr<DLResultRed> red;
    if (auto const* element = view.FirstChildElement("red"))
        red = CreateRedResult(*element, tool, addImageRecords, viewSize, pose);
    std::shared_ptr<DLResultBlue> blue;
    if (auto const* element = view.FirstChildElement("blue"))
        blue = CreateBlueResult(*element, tool, pose);
    // Both kinds of blue tool share one vocabulary; a view never holds both.
    if (auto const* element = view.FirstChildElement("blue_read"))
        blue = CreateBlueResult(*element, tool, pose);
    std::shared_ptr<DLResultGreen> green;
    if (auto const* element = view.FirstChildElement("green"))
        green = CreateGreenResult(*element, tool, addImageRecords);
    auto resources = CreateResourcesIf(addImageRecords, view, viewSize);
    std::string group = RequiredAttribute(view, "group");

    auto frame = Brnt::CreateObject<RectangleAffine>();
    frame->SetOriginLengthsRotationSkew(0, 0, size.x, size.y, 0, 0);
    auto region = frame->MapLinear(*pose, CopyShapeConstants_GeometryOnly);
    return Brnt::CreateObject<DLResultView>(std::move(region), std::move(refPose), std::move(pose),
                                            std::move(group), std::move(red), std::move(blue),
                                            std::move(green), std::move(resources));
}

std::shared_ptr<DLResultMarking> CreateDLResultMarking(DLStream const& stream,
                                                       XMLElement const& marking,
                                                       TransformPtr const& transform) {
    std::shared_ptr<DLResultImageInfo> imageInfo;
    if (auto const* info = marking.FirstChildElement("image_info"))
        imageInfo = CreateDLResultImageInfo(*info);
    ToolPtr tool = DeepLearningAccess::FindTool(stream, RequiredAttribute(marking, "tool_uuid"));
    std::vector<DLResultViewPtr> views;
    if (tool) {
        bool const addImageRecords = tool->AddImageRecords();
        ForEachChild(marking, "view", [&](XMLElement const& view) {
            views.push_back(CreateResultView(view, tool, addImageRecords, transform));
        });
    }
    auto viewCollection = Brnt::CreateObject<DLResultViewReadOnlyCollection>(views);

    char const* durationPostProcess = RequiredAttribute(marking, "duration_post_process");
    char const* durationProcessOnly = RequiredAttribute(marking, "duration_process_only");
    char const* duration = RequiredAttribute(marking, "duration");
    char const* processedDevice = RequiredAttribute(marking, "processed_device");
    char const* processedAt = RequiredAttribute(marking, "processed");
    double const postProcess = ParseRealStrict(durationPostProcess);
    double const processOnly = ParseRealStrict(durationProcessOnly);
    double const total = ParseRealStrict(duration);
    // The marking keeps its tool's id, so a tool the stream lacks cannot make one.
    if (!tool)
        ThrowBadDocument("a marking names a tool that the stream does not have");
    return Brnt::CreateObject<DLResultMarking>(std::move(tool), processedAt, processedDevice, total,
                                               processOnly, postProcess, std::move(imageInfo),
                                               std::move(viewCollection));
}

std::shared_ptr<DLResultMarkingsCollection>
CreateResultImage(DLStream const& stream, XMLElement const& image, TransformPtr const& transform) {
    std::vector<DLResultMarkingPtr> markings;
    ForEachChild(image, "marking", [&](XMLElement const& marking) {
        markings.push_back(CreateDLResultMarking(stream, marking, transform));
    });
    return Brnt::CreateObject<DLResultMarkingsCollection>(
        Brnt::CreateObject<DLResultMarkingReadOnlyCollection>(std::move(markings)));
}

} // namespace

std::shared_ptr<DLResult> CreateDLResult(DLStream const& stream, XMLElement const& root,
                                         TransformPtr const& transform) {
    char const* toolId = RequiredAttribute(RequiredChild(root, "tool"), "uuid");
    XMLElement const* image = root.FirstChildElement("image");
    ToolPtr tool = DeepLearningAccess::FindTool(stream, toolId);
    if (!tool)
        return nullptr;
    if (!image)
        ThrowBadDocument("the document has no image element");
    return Brnt::CreateObject<DLResult>(std::move(tool),
                                        CreateResultImage(stream, *image, transform));
}

std::shared_ptr<DLResult> DeepLearningAccess::ParseResultKeloXml(DLStream const& stream,
                                                                 char const* document,
                                                                 TransformPtr const& inverse) {
    // One document serves every run, so its node pools are reused rather than made anew. It is
    // emptied after each decode: only the pools outlive the run.
    ScopeExit const emptied([this] { resultDocument_.Clear(); });
    resultDocument_.Parse(document);
    XMLElement const* root = resultDocument_.FirstChildElement();
    if (!root)
        ThrowBadDocument("the document has no root element");
    return CreateDLResult(stream, *root, inverse);
}

} // namespace Tavrin::Vision::DeepLearning::Private
