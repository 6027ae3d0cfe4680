#include "Parameters.h"

#include "Failure.h"

#include <cerrno>
#include <cstdlib>
#include <map>
#include <regex>

namespace KeloReference {
namespace {

using Rules = std::vector<ParameterRule>;

const Rules FocusedRed = {
    {Role::SamplingDensity, "processing/sampling_density", Kind::Density, "1"},
    {Role::Thresholds, "post_processing/red/threshold", Kind::Pair, "[0.3,0.6]"},
    {Role::RegionFilter, "post_processing/red/region_filter", Kind::RegionFilter, ""},
    {Role::Iterations, "processing/red/sampling_iterations", Kind::Count, "0"}};
const Rules QuickRed = {
    {Role::Thresholds, "post_process_parameters/red/threshold", Kind::Pair, "[0.3,0.6]"},
    {Role::RegionFilter, "post_process_parameters/red/region_filter", Kind::RegionFilter, ""}};
const Rules HdmRed = {
    QuickRed[0],
    QuickRed[1],
    {Role::DownsamplingSize, "runtime_parameters/max_downsampling_size", Kind::Integer, "0"}};
const Rules FocusedGreen = {
    {Role::SamplingDensity, "processing/sampling_density", Kind::Density, "1"},
    {Role::Threshold, "post_processing/green/threshold", Kind::Unit, "0.2"}};
const Rules HdmGreen = {
    {Role::Threshold, "post_process_parameters/green/threshold", Kind::Unit, "0.2"},
    {Role::Heatmap, "runtime_parameters/heat_map_on", Kind::Flag, "false"}};
const Rules BlueRead = {
    {Role::Threshold, "processing/blue/threshold", Kind::Unit, "0.3"},
    {Role::FeatureFilter, "post_processing/blue/feature_filter", Kind::Names, ""},
    {Role::Precision, "processing/blue/precision", Kind::Unit, "0.5"},
    {Role::FeatureSize, "sampling/feature_size", Kind::Size, "0x0"}};
const Rules Blue = {{Role::SamplingDensity, "processing/sampling_density", Kind::Density, "1"},
                    BlueRead[0],
                    BlueRead[1],
                    BlueRead[2],
                    BlueRead[3]};

const std::map<std::string, const Rules*> ToolTypes = {
    {"red", &FocusedRed},     {"red_sua", &HdmRed},     {"red_quick", &QuickRed},
    {"green", &FocusedGreen}, {"green_sua", &HdmGreen}, {"green_quick", &HdmGreen},
    {"blue", &Blue},          {"blue_read", &BlueRead}};

const ParameterRule Enabled{Role::Enabled, "enabled", Kind::Flag, "true"};
const ParameterRule ModelThreshold{Role::Threshold, "threshold", Kind::Unit, "0.3"};
const std::map<std::string, Rules> ModelTypes = {
    {"layout", {Enabled}},
    {"node", {Enabled, ModelThreshold, {Role::Occurrences, "occurrences", Kind::Integer, "1"}}},
    {"string",
     {Enabled,
      ModelThreshold,
      {Role::MinimumLength, "string/min_string_length", Kind::Count, "1"}}},
    {"regex", {Enabled, ModelThreshold, {Role::Regex, "regex/regex", Kind::Regex, ".+"}}}};

const char* const ModelsPrefix = "models/";

std::string Trim(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    return first == std::string::npos
               ? ""
               : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

template <typename Number, typename Convert>
Number ParseNumber(const std::string& text, Convert convert) {
    const std::string trimmed = Trim(text);
    char* end = nullptr;
    errno = 0;
    const auto value = convert(trimmed.c_str(), &end);
    if (trimmed.empty() || *end != '\0' || errno == ERANGE)
        Refuse("'" + text + "' is not a number");
    return static_cast<Number>(value);
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t at; (at = text.find(separator, start)) != std::string::npos; start = at + 1)
        parts.push_back(Trim(text.substr(start, at - start)));
    parts.push_back(Trim(text.substr(start)));
    return parts;
}

void CheckRange(double value, double minimum, double maximum, const std::string& text) {
    if (!(value >= minimum && value <= maximum))
        Refuse(text + " lies outside " + cv::format("%g", minimum) + " to " +
               cv::format("%g", maximum));
}

void CheckKind(Kind kind, const std::string& text) {
    switch (kind) {
    case Kind::Density:
        return CheckRange(ParseReal(text), 0.2, 10, text);
    case Kind::Unit:
        return CheckRange(ParseReal(text), 0, 1, text);
    case Kind::Pair:
        ParsePair(text);
        return;
    case Kind::Count:
        return CheckRange(ParseInteger(text), 0, INT32_MAX, text);
    case Kind::Integer:
        ParseInteger(text);
        return;
    case Kind::Flag:
        if (text != "true" && text != "false")
            Refuse("'" + text + "' is neither true nor false");
        return;
    case Kind::RegionFilter:
        ParseRegionFilter(text);
        return;
    case Kind::Names:
        return;
    case Kind::Size:
        ParseSize(text);
        return;
    case Kind::Regex:
        try {
            std::regex{text};
        } catch (const std::regex_error& failure) {
            Refuse("'" + text + "' is no regular expression: " + failure.what());
        }
        return;
    }
}

const Model* FindModel(const Tool& tool, const std::string& id) {
    for (const Model& model : tool.models)
        if (model.id == id)
            return &model;
    return nullptr;
}

} // namespace

const std::vector<ParameterRule>& ToolParameterRules(const std::string& toolType) {
    const auto found = ToolTypes.find(toolType);
    if (found == ToolTypes.end())
        Refuse("'" + toolType + "' is no tool type");
    return *found->second;
}

const std::vector<ParameterRule>& ModelParameterRules(const std::string& modelType) {
    const auto found = ModelTypes.find(modelType);
    if (found == ModelTypes.end())
        Refuse("'" + modelType + "' is no model type");
    return found->second;
}

std::string ModelPath(const std::string& modelId, const std::string& key) {
    return ModelsPrefix + modelId + "/" + key;
}

const ParameterRule* FindParameterRule(const Tool& tool, const std::string& path) {
    for (const ParameterRule& rule : ToolParameterRules(tool.type))
        if (path == rule.path)
            return &rule;
    if (path.rfind(ModelsPrefix, 0) != 0)
        return nullptr;
    // Model ids may not hold a slash, so the id ends at the first one after the prefix.
    const std::size_t idEnd = path.find('/', std::char_traits<char>::length(ModelsPrefix));
    if (idEnd == std::string::npos)
        return nullptr;
    const std::size_t idStart = std::char_traits<char>::length(ModelsPrefix);
    const Model* model = FindModel(tool, path.substr(idStart, idEnd - idStart));
    if (!model)
        return nullptr;
    for (const ParameterRule& rule : ModelParameterRules(model->type))
        if (path.compare(idEnd + 1, std::string::npos, rule.path) == 0)
            return &rule;
    return nullptr;
}

void CheckParameter(const ParameterRule& rule, const std::string& path, const std::string& text) {
    try {
        CheckKind(rule.kind, text);
    } catch (const Failure& failure) {
        Refuse("parameter '" + path + "': " + failure.what());
    }
}

Parameters CompleteParameters(const Tool& tool) {
    Parameters complete;
    for (const ParameterRule& rule : ToolParameterRules(tool.type))
        complete[rule.path] = rule.fallback;
    for (const Model& model : tool.models) {
        if (model.id.empty() || model.id.find('/') != std::string::npos)
            Refuse("model id '" + model.id + "' is empty or holds a slash");
        for (const ParameterRule& rule : ModelParameterRules(model.type))
            complete[ModelPath(model.id, rule.path)] = rule.fallback;
        for (const auto& [key, value] : model.parameters)
            complete[ModelPath(model.id, key)] = value;
    }
    for (const auto& [path, value] : tool.parameters)
        complete[path] = value;
    for (const auto& [path, value] : complete) {
        const ParameterRule* rule = FindParameterRule(tool, path);
        if (!rule)
            Refuse("tool '" + tool.id + "' has no parameter '" + path + "'");
        CheckParameter(*rule, path, value);
    }
    return complete;
}

bool RegionCondition::Holds(double measured) const {
    if (comparison == "<")
        return measured < value;
    if (comparison == "<=")
        return measured <= value;
    if (comparison == ">")
        return measured > value;
    return measured >= value;
}

double ParseReal(const std::string& text) {
    return ParseNumber<double>(
        text, [](const char* start, char** end) { return std::strtod(start, end); });
}

int ParseInteger(const std::string& text) {
    const long value = ParseNumber<long>(
        text, [](const char* start, char** end) { return std::strtol(start, end, 10); });
    if (value < INT32_MIN || value > INT32_MAX)
        Refuse("'" + text + "' is out of range");
    return static_cast<int>(value);
}

std::pair<double, double> ParsePair(const std::string& text) {
    const std::string trimmed = Trim(text);
    if (trimmed.size() < 2 || trimmed.front() != '[' || trimmed.back() != ']')
        Refuse("'" + text + "' is not of the form [lower,upper]");
    const std::vector<std::string> parts = Split(trimmed.substr(1, trimmed.size() - 2), ',');
    if (parts.size() != 2)
        Refuse("'" + text + "' is not of the form [lower,upper]");
    return {ParseReal(parts[0]), ParseReal(parts[1])};
}

cv::Size2d ParseSize(const std::string& text) {
    const std::vector<std::string> parts = Split(text, 'x');
    if (parts.size() > 2)
        Refuse("'" + text + "' is not of the form WIDTHxHEIGHT");
    const cv::Size2d size(ParseReal(parts.front()), ParseReal(parts.back()));
    if (size.width < 0 || size.height < 0)
        Refuse("'" + text + "' is a negative size");
    return size;
}

std::vector<std::string> ParseNames(const std::string& text) {
    std::vector<std::string> names;
    for (std::string& name : Split(text, ','))
        if (!name.empty())
            names.push_back(std::move(name));
    return names;
}

std::vector<RegionCondition> ParseRegionFilter(const std::string& text) {
    static const std::regex condition(
        R"(\s*(area|perimeter|score|width|height)\s*(<=|>=|<|>)\s*(\S+)\s*)");
    std::vector<RegionCondition> conditions;
    for (const std::string& part : Split(text, ';')) {
        std::smatch match;
        if (part.empty())
            continue;
        if (!std::regex_match(part, match, condition))
            Refuse("region filter condition '" + part + "' is not of the form MEASURE OP NUMBER");
        conditions.push_back({match[1], match[2], ParseReal(match[3])});
    }
    return conditions;
}

ParameterReader::ParameterReader(const std::vector<ParameterRule>& rules, const Parameters& values,
                                 std::string prefix)
    : rules_(rules)
    , values_(values)
    , prefix_(std::move(prefix)) {}

bool ParameterReader::Has(Role role) const {
    for (const ParameterRule& rule : rules_)
        if (rule.role == role)
            return true;
    return false;
}

const std::string& ParameterReader::Text(Role role) const {
    for (const ParameterRule& rule : rules_)
        if (rule.role == role)
            return values_.at(prefix_ + rule.path);
    throw Failure(StatusComputeFailure, "the tool type has no such parameter");
}

} // namespace KeloReference
