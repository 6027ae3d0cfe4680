#pragma once

#include <string>

#include <Vision/DeepLearning/Implementation/ParameterRules.h>

#include "engine/NumberText.h"

// How parameter values travel between the parameter classes and the engine, which keeps every
// value as text.
namespace Tavrin::Vision::DeepLearning::Private {

// Engine text to field. The lenient forms never fail: a text without a number gives 0.
double ParseReal(char const* text);
int ParseInteger(char const* text);
// True only for the exact, lower-case word.
bool ParseBool(char const* text);

// Field to engine text.
std::string FormatReal(double value);
std::string FormatInteger(long long value);
std::string FormatBool(bool value);

// The red tools' pair of thresholds as one text: "[lower,upper]".
std::string ComposeThresholdText(double lower, double upper);
// Skips the first and the last character unseen, whatever they are, and splits at the first
// comma. The lower threshold is stored before the upper one is parsed.
void ParseThresholdText(std::string const& text, double& lower, double& upper);
// For the red tools that keep the text as well: parses it, then keeps it whole.
void ParseThresholdTextKeepingIt(std::string text, double& lower, double& upper, std::string& kept);

} // namespace Tavrin::Vision::DeepLearning::Private
