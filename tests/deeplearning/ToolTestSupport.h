#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>
#include <Vision/Core/Exceptions.h>

#include "TestEngineControl.h"
#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"

namespace ToolTest {

using Words = std::vector<long long>;

// A tool outside any stream, built as the catalogue builds one but without reading the engine.
template <class Tool>
std::shared_ptr<Tool> MakeTool(
    std::string const& name = "tool",
    std::shared_ptr<Tavrin::Vision::DeepLearning::DLToolRuntimeParamsReadOnlyCollection> children =
        nullptr) {
    return Tavrin::Brnt::ObjectFactory::Construct<Tool>(
        std::shared_ptr<Tavrin::Vision::DeepLearning::DLStream>(), name, name + "-uuid", "", "",
        std::move(children));
}

// A model not yet read from the engine.
template <class Model>
std::shared_ptr<Model>
MakeModel(std::string const& name,
          std::shared_ptr<Tavrin::Vision::DeepLearning::DLToolRuntimeParams> tool = nullptr) {
    return Tavrin::Brnt::ObjectFactory::Construct<Model>(std::move(tool), name);
}

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

// The message of the ArgumentException that the call throws.
template <class Call> std::string ArgumentMessage(Call&& call) {
    try {
        call();
    } catch (Tavrin::Vision::ArgumentException const& e) {
        return e.Message();
    }
    return "nothing thrown";
}

// The parameter reads ("path") or writes ("path=value") of one tool, in call order, from the
// engine's call log.
inline std::vector<std::string> ParameterTraffic(std::string const& entryPoint,
                                                 std::string const& tool) {
    std::vector<std::string> traffic;
    std::string const prefix = entryPoint + "(";
    for (std::string const& call : TestKelo::LoggedCalls()) {
        if (call.rfind(prefix, 0) != 0)
            continue;
        // workspace,stream,tool,path[,value]; only the value may hold commas.
        std::string rest = call.substr(prefix.size(), call.size() - prefix.size() - 1);
        for (int field = 0; field < 2; ++field)
            rest.erase(0, rest.find(',') + 1);
        std::size_t const toolEnd = rest.find(',');
        if (rest.substr(0, toolEnd) != tool)
            continue;
        rest.erase(0, toolEnd + 1);
        std::size_t const pathEnd = rest.find(',');
        traffic.push_back(pathEnd == std::string::npos
                              ? rest
                              : rest.substr(0, pathEnd) + "=" + rest.substr(pathEnd + 1));
    }
    return traffic;
}

inline std::vector<std::string> Reads(std::string const& tool) {
    return ParameterTraffic("kelo_runtime_tool_get_parameter", tool);
}

inline std::vector<std::string> Writes(std::string const& tool) {
    return ParameterTraffic("kelo_runtime_tool_set_parameter", tool);
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

} // namespace ToolTest
