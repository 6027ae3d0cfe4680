#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace TavrinCli {

// The report's page, self-contained, with its data embedded where no text in it can end the
// script element that holds it.
std::string ReportPage(const nlohmann::json& data);

} // namespace TavrinCli
