#include <fstream>
#include <optional>
#include <sstream>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <opencv2/imgproc.hpp>

#include <Vision/Core/Archive.h>

#include "AtomicFile.h"
#include "Bindings.h"
#include "Failure.h"
#include "Images.h"
#include "Overlay.h"
#include "Parameters.h"
#include "Session.h"

namespace py = pybind11;

namespace TavrinPython {
namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;

// A NumPy image seen as an OpenCV header over the same memory, without a copy: HxW uint8 or
// uint16 grey, or HxWx3 uint8 colour in RGB order. Rows may lie any distance apart (a crop of a
// larger array), but the pels of one row must be contiguous.
cv::Mat HeaderOver(const py::array& image) {
    const bool grey = image.ndim() == 2;
    if (!grey && !(image.ndim() == 3 && image.shape(2) == 3))
        throw py::value_error("an image is HxW (grey) or HxWx3 (RGB colour), not of shape " +
                              py::repr(image.attr("shape")).cast<std::string>());
    const bool eight = image.dtype().is(py::dtype::of<std::uint8_t>());
    const bool sixteen = image.dtype().is(py::dtype::of<std::uint16_t>());
    if (!eight && !(grey && sixteen))
        throw py::type_error(
            std::string("an image is uint8 or uint16 grey, or uint8 colour, not ") +
            (grey ? "grey " : "colour ") + py::str(image.dtype()).cast<std::string>());
    const py::ssize_t pel = image.itemsize() * (grey ? 1 : 3);
    if (image.shape(0) == 0 || image.shape(1) == 0)
        throw py::value_error("the image is empty");
    if ((!grey && image.strides(2) != image.itemsize()) || image.strides(1) != pel ||
        image.strides(0) < pel * image.shape(1))
        throw py::value_error("the pels of each image row must lie next to each other, rows "
                              "downwards (numpy.ascontiguousarray gives such an array)");
    const int type = sixteen ? CV_16UC1 : grey ? CV_8UC1 : CV_8UC3;
    return cv::Mat(static_cast<int>(image.shape(0)), static_cast<int>(image.shape(1)), type,
                   const_cast<void*>(image.data()), static_cast<std::size_t>(image.strides(0)));
}

// Reads and sets an object's parameters by their reflected names, as tavrin-dl does; values go
// to Python as their own types and come back through the same text the tool parses.
py::object ToPython(const rttr::variant& value) {
    const rttr::type type = value.get_type();
    if (type == rttr::type::get<bool>())
        return py::bool_(value.get_value<bool>());
    if (type == rttr::type::get<double>())
        return py::float_(value.get_value<double>());
    if (type.is_arithmetic())
        return py::int_(value.to_int64());
    if (type == rttr::type::get<Vect2Ptr>()) {
        const auto size = value.get_value<Vect2Ptr>();
        return size ? py::object(py::make_tuple(size->X(), size->Y())) : py::none();
    }
    return py::str(value.to_string());
}

std::string ToText(const py::handle& value) {
    if (py::isinstance<py::bool_>(value))
        return value.cast<bool>() ? "true" : "false";
    if (py::isinstance<py::tuple>(value) && py::len(value) == 2)
        return py::str(value[py::int_(0)]).cast<std::string>() + "x" +
               py::str(value[py::int_(1)]).cast<std::string>();
    if (py::isinstance<py::float_>(value))
        return py::repr(value).cast<std::string>();
    return py::str(value).cast<std::string>();
}

template <class Object, class Class> void BindParameters(Class& bound) {
    bound
        .def("__getitem__",
             [](const Object& object, const std::string& name) {
                 return ToPython(TavrinCli::ParameterVariant(rttr::instance(object), name));
             })
        .def("__setitem__",
             [](Object& object, const std::string& name, const py::object& value) {
                 TavrinCli::SetParameter(rttr::instance(object), name, ToText(value));
             })
        .def("__contains__",
             [](const Object& object, const std::string& name) {
                 for (const auto& parameter : TavrinCli::ParametersOf(rttr::instance(object)))
                     if (parameter.name == name)
                         return true;
                 return false;
             })
        .def_property_readonly(
            "parameters",
            [](const Object& object) {
                py::dict parameters;
                for (const auto& parameter : TavrinCli::ParametersOf(rttr::instance(object)))
                    parameters[py::str(parameter.name)] = ToPython(
                        TavrinCli::ParameterVariant(rttr::instance(object), parameter.name));
                return parameters;
            },
            "Every parameter by its name, in the order of registration.")
        .def_property_readonly("writable",
                               [](const Object& object) {
                                   std::vector<std::string> names;
                                   for (const auto& parameter :
                                        TavrinCli::ParametersOf(rttr::instance(object)))
                                       if (parameter.writable)
                                           names.push_back(parameter.name);
                                   return names;
                               })
        .def_property_readonly("class_name", [](const Object& object) {
            return rttr::instance(object).get_derived_type().get_name().to_string();
        });
}

void BindTools(py::module_& module) {
    py::class_<DLBlueModel, std::shared_ptr<DLBlueModel>> model(module, "Model",
                                                                "A model of a blue tool.");
    model.def_property_readonly("name", &DLBlueModel::Name);
    BindParameters<DLBlueModel>(model);
    py::class_<DLToolRuntimeParams, std::shared_ptr<DLToolRuntimeParams>> tool(
        module, "Tool", "A tool of a stream with its runtime parameters.");
    tool.def_property_readonly("name", &DLToolRuntimeParams::Name)
        .def_property_readonly("type", &DLToolRuntimeParams::Type)
        .def_property_readonly("id", &DLToolRuntimeParams::Id)
        .def_property_readonly("children",
                               [](const DLToolRuntimeParams& parent) {
                                   const auto children = parent.ChildTools();
                                   return children
                                              ? std::vector<std::shared_ptr<DLToolRuntimeParams>>(
                                                    children->begin(), children->end())
                                              : std::vector<std::shared_ptr<DLToolRuntimeParams>>();
                               })
        .def_property_readonly("models", &TavrinCli::ModelsOf)
        .def("__repr__", [](const DLToolRuntimeParams& self) {
            return "<tavrin_dl.Tool " + self.Name() + " (" + self.Type() + ")>";
        });
    BindParameters<DLToolRuntimeParams>(tool);
}

// What a workspace opened in a runtime tool or in an operator offers alike: its streams and
// tools, and runs on NumPy arrays or image files.
class Opened {
public:
    virtual ~Opened() = default;

    std::string WorkspaceFile() const { return Op().Workspace()->SourceFile(); }
    std::vector<std::string> Streams() const {
        std::vector<std::string> names;
        for (const auto& stream : *Op().Workspace()->Streams())
            names.push_back(stream->Name());
        return names;
    }
    std::string Stream() const { return Op().Stream()->Name(); }
    void SelectStream(const std::string& name) { TavrinCli::SelectStream(Op(), name); }
    std::vector<std::shared_ptr<DLToolRuntimeParams>> Tools() const {
        return TavrinCli::ToolsOf(*Op().Stream());
    }
    std::shared_ptr<DLToolRuntimeParams> Tool(const std::string& name) const {
        return TavrinCli::FindTool(*Op().Workspace(), name);
    }

    RunResult Run(const py::array& image, const std::string& name) {
        const cv::Mat header = HeaderOver(image);
        return RunOn(header, TavrinCli::ChannelOrder::Rgb, image, name);
    }

    RunResult RunFile(const std::string& path) {
        return RunOn(TavrinCli::ReadImage(path), TavrinCli::ChannelOrder::Bgr, py::none(), path);
    }

protected:
    virtual DLOperator& Op() const = 0;
    // Runs the selected stream; called without the GIL.
    virtual std::shared_ptr<DLResult> Execute(std::shared_ptr<IImage> image) = 0;
    // What a run leaves for later calls, such as the image an overlay is drawn on.
    virtual void Keep(const cv::Mat&, TavrinCli::ChannelOrder, py::object, const DLResult&) {}

private:
    RunResult RunOn(const cv::Mat& image, TavrinCli::ChannelOrder order, py::object owner,
                    const std::string& name) {
        auto converted = TavrinCli::ToVisionImage(image, order);
        std::shared_ptr<DLResult> result;
        {
            py::gil_scoped_release engineRuns;
            result = Execute(std::move(converted));
        }
        Keep(image, order, std::move(owner), *result);
        return {std::move(result), name, Stream()};
    }
};

// The archive bytes of a runtime tool or an operator, and the object they load as. The
// workspace file is reopened from the path it was saved with.
template <class Object> py::bytes ArchiveOf(const std::shared_ptr<Object>& object) {
    std::ostringstream bytes;
    VisionBinaryOutputArchive(bytes, SerializerOptionsConstants_None)(object);
    return py::bytes(bytes.str());
}

template <class Object> std::shared_ptr<Object> Unarchived(const py::bytes& archive) {
    std::istringstream bytes(static_cast<std::string>(archive));
    std::shared_ptr<Object> object;
    VisionBinaryInputArchive(bytes, SerializerOptionsConstants_None)(object);
    if (!object)
        throw TavrinCli::UsageError("the archive holds no object");
    return object;
}

std::string FileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw TavrinCli::CommandError("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A workspace opened in a runtime tool, the way a host runs it: each run leaves a record, which
// gives the overlay. The image of the last run stays referenced for that overlay.
class RuntimeTool : public Opened {
public:
    RuntimeTool(const std::string& workspace, const std::string& stream)
        : session_(workspace) {
        session_.SelectStream(stream);
    }
    explicit RuntimeTool(std::shared_ptr<DLRuntimeTool> tool)
        : session_(std::move(tool)) {}

    py::bytes Archive() const { return ArchiveOf(session_.Tool()); }

    // The last run's image, enlarged, with its graphics drawn over it, in RGB.
    py::array Overlay() {
        cv::Mat overlay = TavrinCli::DrawOverlay(
            LastImageBgr(), TavrinCli::GraphicsOf(*session_.LastRunRecord()), lastAnswers_);
        cv::cvtColor(overlay, overlay, cv::COLOR_BGR2RGB);
        return ToArray(overlay);
    }

    // The same as a PNG file, as tavrin-dl run --overlay writes it.
    void SaveOverlay(const std::string& path) {
        TavrinCli::WriteOverlay(path, LastImageBgr(), *session_.LastRunRecord(), lastAnswers_);
    }

protected:
    DLOperator& Op() const override { return *session_.Tool()->DeepLearningOperator(); }
    std::shared_ptr<DLResult> Execute(std::shared_ptr<IImage> image) override {
        return session_.Run(std::move(image));
    }
    void Keep(const cv::Mat& image, TavrinCli::ChannelOrder order, py::object owner,
              const DLResult& result) override {
        lastImage_ = image;
        lastAnswers_ = TavrinCli::AnswersOf(result);
        lastOrder_ = order;
        lastOwner_ = std::move(owner);
    }

private:
    cv::Mat LastImageBgr() const {
        if (!lastImage_)
            throw TavrinCli::UsageError("no run to draw yet");
        cv::Mat bgr = *lastImage_;
        if (lastOrder_ == TavrinCli::ChannelOrder::Rgb && bgr.channels() == 3)
            cv::cvtColor(*lastImage_, bgr, cv::COLOR_RGB2BGR);
        return bgr;
    }

    TavrinCli::Session session_;
    std::optional<cv::Mat> lastImage_;
    std::vector<TavrinCli::Answer> lastAnswers_;
    TavrinCli::ChannelOrder lastOrder_ = TavrinCli::ChannelOrder::Bgr;
    py::object lastOwner_;
};

// A workspace opened in a bare operator: the stream runs and answers, with no record and no
// graphics.
class Operator : public Opened {
public:
    Operator(const std::string& workspace, const std::string& stream)
        : op_(Tavrin::Brnt::CreateObject<DLOperator>()) {
        TavrinCli::OpenWorkspace(*op_, workspace);
        SelectStream(stream);
    }
    explicit Operator(std::shared_ptr<DLOperator> op)
        : op_(std::move(op)) {}

    py::bytes Archive() const { return ArchiveOf(op_); }

protected:
    DLOperator& Op() const override { return *op_; }
    std::shared_ptr<DLResult> Execute(std::shared_ptr<IImage> image) override {
        return op_->Execute(*image);
    }

private:
    std::shared_ptr<DLOperator> op_;
};

// What both classes bind alike, including saving to and loading from the library's archive,
// which pickling uses too.
template <class Holder, class Object> void BindOpened(py::class_<Holder>& bound) {
    const auto fromBytes = [](const py::bytes& archive) {
        return Holder(Unarchived<Object>(archive));
    };
    bound
        .def(py::init<const std::string&, const std::string&>(), py::arg("workspace"),
             py::arg("stream") = "")
        .def_property_readonly("workspace_file", &Holder::WorkspaceFile)
        .def_property_readonly("streams", &Holder::Streams)
        .def_property("stream", &Holder::Stream, &Holder::SelectStream)
        .def_property_readonly("tools", &Holder::Tools)
        .def("tool", &Holder::Tool, py::arg("name"))
        .def("run", &Holder::Run, py::arg("image"), py::arg("name") = "")
        .def("run_file", &Holder::RunFile, py::arg("path"))
        .def("to_bytes", &Holder::Archive, "The library's archive of the object and its settings.")
        .def_static("from_bytes", fromBytes, py::arg("archive"))
        .def(
            "save",
            [](const Holder& holder, const std::string& path) {
                const std::string bytes = holder.Archive();
                TavrinCli::WriteFileAtomically(path, {bytes.begin(), bytes.end()});
            },
            py::arg("path"))
        .def_static(
            "load", [=](const std::string& path) { return fromBytes(py::bytes(FileBytes(path))); },
            py::arg("path"))
        .def(py::pickle([](const Holder& holder) { return holder.Archive(); }, fromBytes));
}

void BindRuntimeTool(py::module_& module) {
    py::class_<RuntimeTool> tool(module, "RuntimeTool",
                                 "A workspace opened in a runtime tool, running one of its streams.");
    BindOpened<RuntimeTool, DLRuntimeTool>(tool);
    tool.def("overlay", &RuntimeTool::Overlay)
        .def("save_overlay", &RuntimeTool::SaveOverlay, py::arg("path"));
    py::class_<Operator> op(module, "Operator",
                            "A workspace opened in an operator, running one of its streams.");
    BindOpened<Operator, DLOperator>(op);
    module.def(
        "read_image",
        [](const std::string& path) {
            cv::Mat image = TavrinCli::ReadImage(path);
            if (image.channels() > 1)
                cv::cvtColor(image, image,
                             image.channels() == 4 ? cv::COLOR_BGRA2RGB : cv::COLOR_BGR2RGB);
            return ToArray(image);
        },
        py::arg("path"), "An image file as tavrin-dl reads it, colour in RGB order.");
}

} // namespace

py::array ToArray(const cv::Mat& image) {
    std::vector<py::ssize_t> shape = {image.rows, image.cols};
    if (image.channels() > 1)
        shape.push_back(image.channels());
    py::array array(image.depth() == CV_16U ? py::dtype::of<std::uint16_t>()
                                            : py::dtype::of<std::uint8_t>(),
                    shape);
    for (int row = 0; row < image.rows; ++row)
        std::memcpy(array.mutable_data(row), image.ptr(row), image.cols * image.elemSize());
    return array;
}

} // namespace TavrinPython

PYBIND11_MODULE(tavrin_dl, module) {
    module.doc() = "Deep-learning vision workspaces from Python.";
    TavrinPython::BindExceptions(module);
    TavrinPython::BindTools(module);
    TavrinPython::BindResults(module);
    TavrinPython::BindRuntimeTool(module);
}
