#include <exception>
#include <string>

#include "Bindings.h"
#include "Failure.h"

namespace py = pybind11;

namespace TavrinPython {
namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;

// The library's exception classes as Python classes of the same names and family, most derived
// first, so that the first match is the exception's own class.
struct VisionClass {
    const char* name;
    const char* base;
    bool (*is)(const VisionException&);
};

template <class Exception> bool IsA(const VisionException& failure) {
    return dynamic_cast<const Exception*>(&failure) != nullptr;
}

const VisionClass VisionClasses[] = {
    {"DeepLearningInitializeException", "DeepLearningException",
     IsA<DeepLearningInitializeException>},
    {"DeepLearningException", "VisionException", IsA<DeepLearningException>},
    {"ArgumentException", "VisionException", IsA<ArgumentException>},
    {"OperatorNoInputImageException", "VisionException", IsA<OperatorNoInputImageException>},
    {"OperatorNotTrainedException", "VisionException", IsA<OperatorNotTrainedException>},
    {"FileOpenException", "VisionException", IsA<FileOpenException>},
    {"SerializationException", "VisionException", IsA<SerializationException>},
    {"InternalErrorException", "VisionException", IsA<InternalErrorException>},
    {"ImageException", "VisionException", IsA<ImageException>},
};

// Held for the life of the process: the translator runs after the module's own objects may be
// gone, and Python never unloads an extension.
py::handle Module;

void RaiseVision(const VisionException& failure) {
    const char* name = "VisionException";
    for (const VisionClass& vision : VisionClasses)
        if (vision.is(failure)) {
            name = vision.name;
            break;
        }
    const py::object error = Module.attr(name)(failure.Message());
    error.attr("code") = static_cast<int>(failure.Code());
    error.attr("message") = failure.Message();
    PyErr_SetObject(Module.attr(name).ptr(), error.ptr());
}

// The tool's failures that wrap one of the library keep the library's class, code and message.
template <class Failure> void RaiseWrapped(const Failure& failure, const char* ownClass) {
    if (const auto* nested = dynamic_cast<const std::nested_exception*>(&failure);
        nested && nested->nested_ptr()) {
        try {
            nested->rethrow_nested();
        } catch (const VisionException& vision) {
            RaiseVision(vision);
            return;
        } catch (...) {
        }
    }
    PyErr_SetString(Module.attr(ownClass).ptr(), failure.what());
}

void Translate(std::exception_ptr failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const VisionException& vision) {
        RaiseVision(vision);
    } catch (const TavrinCli::UsageError& usage) {
        RaiseWrapped(usage, "UsageError");
    } catch (const TavrinCli::CommandError& command) {
        RaiseWrapped(command, "CommandError");
    }
}

py::object NewClass(py::module_& module, const char* name, py::handle base) {
    const std::string qualified = std::string("tavrin_dl.") + name;
    const py::object type = py::reinterpret_steal<py::object>(
        PyErr_NewException(qualified.c_str(), base.ptr(), nullptr));
    module.attr(name) = type;
    return type;
}

} // namespace

void BindExceptions(py::module_& module) {
    Module = module.inc_ref();
    const py::object vision = NewClass(module, "VisionException", PyExc_Exception);
    vision.attr("__doc__") = "A failure of the library: the class, its code and its message.";
    vision.attr("code") = py::none();
    vision.attr("message") = py::none();
    for (auto entry = std::rbegin(VisionClasses); entry != std::rend(VisionClasses); ++entry)
        NewClass(module, entry->name, module.attr(entry->base));
    NewClass(module, "UsageError", PyExc_ValueError).attr("__doc__") =
        "An unknown stream, tool or parameter, or a value of the wrong kind.";
    NewClass(module, "CommandError", PyExc_OSError).attr("__doc__") =
        "A missing or unreadable workspace or image file.";
    py::register_exception_translator(Translate);
}

} // namespace TavrinPython
