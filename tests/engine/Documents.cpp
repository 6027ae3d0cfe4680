#include "Documents.h"

#include <tinyxml2.h>

namespace TestKelo {
namespace {

class Element {
public:
    Element(tinyxml2::XMLPrinter& printer, const char* name)
        : printer_(printer) {
        printer_.OpenElement(name);
    }
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    ~Element() { printer_.CloseElement(); }

    Element& attribute(const char* name, const std::string& value) {
        printer_.PushAttribute(name, value.c_str());
        return *this;
    }

private:
    tinyxml2::XMLPrinter& printer_;
};

void printTools(tinyxml2::XMLPrinter& printer, const std::vector<Tool>& tools) {
    for (const Tool& tool : tools) {
        Element element(printer, "tool");
        element.attribute("id", tool.id).attribute("uuid", tool.uuid).attribute("type", tool.type);
        printTools(printer, tool.children);
    }
}

} // namespace

std::string workspaceListing(const std::vector<OpenWorkspace>& workspaces) {
    tinyxml2::XMLPrinter printer;
    {
        Element root(printer, "workspaces");
        for (const OpenWorkspace& workspace : workspaces) {
            Element(printer, "workspace")
                .attribute("id", workspace.id)
                .attribute("uuid", workspace.content.uuid)
                .attribute("last_modified", workspace.content.lastModified);
        }
    }
    return printer.CStr();
}

std::string streamListing(const WorkspaceContent& content) {
    tinyxml2::XMLPrinter printer;
    {
        Element root(printer, "streams");
        for (const Stream& stream : content.streams) {
            Element(printer, "stream")
                .attribute("id", stream.id)
                .attribute("uuid", stream.uuid)
                .attribute("frame_window", stream.frameWindow);
        }
    }
    return printer.CStr();
}

std::string toolListing(const Stream& stream) {
    tinyxml2::XMLPrinter printer;
    {
        Element root(printer, "tools");
        printTools(printer, stream.tools);
    }
    return printer.CStr();
}

std::string modelListing(const Tool& tool) {
    tinyxml2::XMLPrinter printer;
    {
        Element root(printer, "models");
        for (const Model& model : tool.models) {
            Element(printer, "model").attribute("id", model.id).attribute("type", model.type);
        }
    }
    return printer.CStr();
}

} // namespace TestKelo
