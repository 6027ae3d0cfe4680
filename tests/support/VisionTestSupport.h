#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>
#include <Vision/Core/Exceptions.h>

// Helpers that tests of any layer share: change words, thrown messages and archive bytes.
namespace VisionTest {

using Words = std::vector<long long>;

// Every flag word an object raises while the log lives.
class FlagLog {
public:
    explicit FlagLog(Tavrin::Vision::IChangedEvent& source)
        : connection_(source.ChangedEvent().Connect(
              [this](Tavrin::Vision::ChangedEventArgsPtr const& args) {
                  words_.push_back(args->ChangedBits());
              })) {}

    Words const& words() const { return words_; }

private:
    Words words_;
    Tavrin::Brnt::ScopedConnection connection_;
};

// The text of the Exception that the call throws; any other exception fails the test.
template <class Exception = Tavrin::Vision::ArgumentException, class Call>
std::string MessageOf(Call&& call) {
    try {
        call();
    } catch (Exception const& e) {
        return e.what();
    }
    return "nothing thrown";
}

// A code and a text as CodeAndMessageOf writes them.
template <class Code> std::string CodeAndMessage(Code code, std::string const& message) {
    return std::to_string(static_cast<int>(code)) + ": " + message;
}

// The code and text of the Exception that the call throws; any other exception fails the test.
template <class Exception = Tavrin::Vision::VisionException, class Call>
std::string CodeAndMessageOf(Call&& call) {
    try {
        call();
    } catch (Exception const& e) {
        return CodeAndMessage(e.Code(), e.Message());
    }
    return "nothing thrown";
}

// The bytes of the objects saved in one archive, so that what they share is saved once.
template <class... Objects> std::string SavedTogether(Objects const&... objects) {
    std::stringstream stream;
    Tavrin::Vision::VisionBinaryOutputArchive output(
        stream, Tavrin::Vision::SerializerOptionsConstants_None);
    output(objects...);
    return stream.str();
}

// Loads the objects from the bytes of one archive, in the order they were saved.
template <class... Objects> void LoadTogether(std::string const& bytes, Objects&... objects) {
    std::stringstream stream(bytes);
    Tavrin::Vision::VisionBinaryInputArchive input(stream,
                                                   Tavrin::Vision::SerializerOptionsConstants_None);
    input(objects...);
}

// The bytes of the object saved through the framework's archive with the options.
template <class T>
std::string Saved(std::shared_ptr<T> const& object,
                  Tavrin::Vision::SerializerOptionsConstants options =
                      Tavrin::Vision::SerializerOptionsConstants_None) {
    std::stringstream stream;
    Tavrin::Vision::VisionBinaryOutputArchive output(stream, options);
    output(object);
    return stream.str();
}

// An object loaded from the bytes through the framework's archive with the options.
template <class T>
std::shared_ptr<T> Loaded(std::string const& bytes,
                          Tavrin::Vision::SerializerOptionsConstants options =
                              Tavrin::Vision::SerializerOptionsConstants_None) {
    std::stringstream stream(bytes);
    Tavrin::Vision::VisionBinaryInputArchive input(stream, options);
    std::shared_ptr<T> object;
    input(object);
    return object;
}

// Saves the object through the framework's archive and loads a copy of it.
template <class T> std::shared_ptr<T> RoundTrip(std::shared_ptr<T> const& original) {
    return Loaded<T>(Saved(original));
}

// The refusal of an object saved through a shareable base pointer once the version written for
// its class (level 0) or for one of its bases (level 1 and on) is raised past 1. That version
// follows the endianness byte, the polymorphic id, the registered name and the pointer id.
inline std::string NewerVersionRefusal(std::shared_ptr<Tavrin::Vision::ShareableBase> const& object,
                                       std::string const& name, std::size_t level) {
    std::string bytes = Saved(object);
    std::size_t const versionAt = 1 + 4 + 8 + name.size() + 4 + 4 * level;
    if (bytes.compare(1 + 4 + 8, name.size(), name) != 0 || bytes.at(versionAt) != 1)
        return "not saved under " + name + " at version 1";
    bytes[versionAt] = 2;
    return MessageOf<Tavrin::Vision::SerializationException>(
        [&] { Loaded<Tavrin::Vision::ShareableBase>(bytes); });
}

} // namespace VisionTest
