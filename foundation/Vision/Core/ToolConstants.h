#pragma once

namespace Tavrin::Vision {

// The outcome of a tool's run, by rising severity.
enum ToolResultConstants : int {
    ToolResultConstants_Accept = 0,
    ToolResultConstants_Warning = 1,
    ToolResultConstants_Reject = 2,
    ToolResultConstants_Error = 3,
    // The tool has not run, or its run conditions did not hold.
    ToolResultConstants_NotRun = 4,
};

// What a copy of a tool takes along besides its settings; the bits are those of the archive
// options, since a copy travels through the archive.
enum ToolCopyModeConstants : unsigned int {
    ToolCopyModeConstants_Settings = 0,
    ToolCopyModeConstants_LastRunData = 0x1,
    ToolCopyModeConstants_CurrentInputs = 0x100,
    ToolCopyModeConstants_All = 0x101,
};

// How a pin reaches its value.
enum ToolPinModeConstants : int {
    // Through a property path from the pin's tool, such as "InputImage" or "Results.Score".
    ToolPinModeConstants_Bound = 0,
    // The pin holds the value itself and has no path.
    ToolPinModeConstants_Value = 1,
};

} // namespace Tavrin::Vision
