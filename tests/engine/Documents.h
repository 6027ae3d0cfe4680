#ifndef TAVRIN_TESTS_ENGINE_DOCUMENTS_H
#define TAVRIN_TESTS_ENGINE_DOCUMENTS_H

#include "Catalogue.h"

#include <string>
#include <vector>

namespace TestKelo {

// The engine's listings, as XML texts.
std::string workspaceListing(const std::vector<OpenWorkspace>& workspaces);
std::string streamListing(const WorkspaceContent& content);
std::string toolListing(const Stream& stream);
std::string modelListing(const Tool& tool);

} // namespace TestKelo

#endif
