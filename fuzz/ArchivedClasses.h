#pragma once

#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>
#include <tuple>
#include <utility>

#include <Vision/Core/Archive.h>

#include "Vision/DeepLearning/DeepLearning.h"

// The classes that a host loads from an archive, by the static type of the pointer it loads
// through; a base class reaches each of its registered subclasses by the archive's class name.
// The first byte of an archive input picks the class (low bits) and the options (high bit).
namespace ArchivedClasses {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Vision::SerializerOptionsConstants;

using Classes = std::tuple<DLRuntimeTool, DLOperator, DLWorkspace, DLStream, DLToolRuntimeParams,
                           DLBlueModel, DLResult, DLResultMarking, DLResultView, DLResultRed,
                           DLResultGreen, DLResultBlue, DLResultMatch, DLResultResource>;
constexpr std::uint8_t WithLastRunData = 0x80;

inline SerializerOptionsConstants OptionsOf(std::uint8_t selector) {
    return selector & WithLastRunData
               ? static_cast<SerializerOptionsConstants>(
                     Tavrin::Vision::SerializerOptionsConstants_LastRunData |
                     Tavrin::Vision::SerializerOptionsConstants_CurrentInputImage)
               : Tavrin::Vision::SerializerOptionsConstants_None;
}

template <class T> void Load(std::istream& in, SerializerOptionsConstants options) {
    Tavrin::Vision::VisionBinaryInputArchive archive(in, options);
    std::shared_ptr<T> object;
    archive(object);
}

template <std::size_t... Index>
void LoadNth(std::size_t index, std::istream& in, SerializerOptionsConstants options,
             std::index_sequence<Index...>) {
    using Loader = void (*)(std::istream&, SerializerOptionsConstants);
    static Loader const loaders[] = {&Load<std::tuple_element_t<Index, Classes>>...};
    loaders[index % sizeof...(Index)](in, options);
}

// Loads the archive behind the selector byte as the class it picks.
inline void Load(std::uint8_t selector, std::istream& in) {
    LoadNth(selector & ~WithLastRunData, in, OptionsOf(selector),
            std::make_index_sequence<std::tuple_size_v<Classes>>{});
}

template <class T, class List> struct IndexOf;
template <class T, class... Rest>
struct IndexOf<T, std::tuple<T, Rest...>> : std::integral_constant<std::size_t, 0> {};
template <class T, class First, class... Rest>
struct IndexOf<T, std::tuple<First, Rest...>>
    : std::integral_constant<std::size_t, 1 + IndexOf<T, std::tuple<Rest...>>::value> {};

// Writes the selector byte of the object's class and the object's archive.
template <class T>
void Save(std::ostream& out, std::shared_ptr<T> const& object, bool withLastRunData) {
    constexpr auto index = static_cast<std::uint8_t>(IndexOf<T, Classes>::value);
    std::uint8_t const selector = index | (withLastRunData ? WithLastRunData : 0);
    out.put(static_cast<char>(selector));
    Tavrin::Vision::VisionBinaryOutputArchive archive(out, OptionsOf(selector));
    archive(object);
}

} // namespace ArchivedClasses
