#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Image.h>
#include <Vision/Core/Record.h>

namespace Tavrin::Vision::DeepLearning {
class DLResult;
}

namespace Tavrin::Vision::DeepLearning::Records {

// An image to show, keyed and annotated by its name.
std::shared_ptr<Record> MakeImageRecord(std::string const& name, std::shared_ptr<IImage> image);

// The overlay of a run: its graphics are built from the result when a host first reads them, so
// a run pays nothing for them.
std::shared_ptr<Record> MakeFeaturesRecord(std::shared_ptr<DLResult> result);

// One image record per image resource of the result, named "<tool>.<resource>" and, from a
// marking's second view with resources on, followed by the view's index among those.
void AddResultImageRecords(DLResult const& result, Record& record);

} // namespace Tavrin::Vision::DeepLearning::Records
