#pragma once

#include <string>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>

#include "Workspace.h"

namespace KeloReference {

// What a parameter means to the computation, whatever its path in a tool type.
enum class Role {
    SamplingDensity,
    Thresholds,
    RegionFilter,
    Iterations,
    DownsamplingSize,
    Threshold,
    Heatmap,
    Precision,
    FeatureFilter,
    FeatureSize,
    Enabled,
    Occurrences,
    MinimumLength,
    Regex
};

// The text forms a parameter accepts; a set with another text is refused.
enum class Kind { Density, Unit, Pair, Count, Integer, Flag, RegionFilter, Names, Size, Regex };

struct ParameterRule {
    Role role;
    const char* path; // relative to "models/<id>/" for model parameters
    Kind kind;
    const char* fallback;
};

// The parameters of a tool type and of a blue model type; an unknown type is refused.
const std::vector<ParameterRule>& ToolParameterRules(const std::string& toolType);
const std::vector<ParameterRule>& ModelParameterRules(const std::string& modelType);

// The rule of a path of the tool, model paths included, or null.
const ParameterRule* FindParameterRule(const Tool& tool, const std::string& path);

// Refuses a text that the kind does not accept, naming the path.
void CheckParameter(const ParameterRule& rule, const std::string& path, const std::string& text);

// Every parameter of the tool and its models by full path: the fallbacks, replaced by the
// values that the workspace file gives, each checked. Unknown paths in the file are refused.
Parameters CompleteParameters(const Tool& tool);

std::string ModelPath(const std::string& modelId, const std::string& key);

// A region filter: conditions on region measures that all must hold.
struct RegionCondition {
    std::string measure;    // area, perimeter, score, width or height
    std::string comparison; // <, <=, >, >=
    double value;
    bool Holds(double measured) const;
};

double ParseReal(const std::string& text);
int ParseInteger(const std::string& text);
std::pair<double, double> ParsePair(const std::string& text);
cv::Size2d ParseSize(const std::string& text);
std::vector<std::string> ParseNames(const std::string& text);
std::vector<RegionCondition> ParseRegionFilter(const std::string& text);

// Typed reads of one tool's (or one model's) parameters by role.
class ParameterReader {
public:
    ParameterReader(const std::vector<ParameterRule>& rules, const Parameters& values,
                    std::string prefix = "");

    bool Has(Role role) const;
    const std::string& Text(Role role) const;
    double Real(Role role) const { return ParseReal(Text(role)); }
    int Integer(Role role) const { return ParseInteger(Text(role)); }
    bool Flag(Role role) const { return Text(role) == "true"; }

private:
    const std::vector<ParameterRule>& rules_;
    const Parameters& values_;
    std::string prefix_;
};

} // namespace KeloReference
