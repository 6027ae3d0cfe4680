#include "records/RunRecords.h"

#include <Vision/Core/GraphicCollection.h>

#include "Vision/DeepLearning/DLResult.h"
#include "Vision/DeepLearning/DLResultGreen.h"
#include "Vision/DeepLearning/DLResultMarking.h"
#include "Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultRed.h"
#include "Vision/DeepLearning/DLResultResourceReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultView.h"
#include "Vision/DeepLearning/DLResultViewReadOnlyCollection.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"

namespace Tavrin::Vision::DeepLearning::Records {

namespace {

constexpr char FeaturesRecordName[] = "Features";

bool HasItems(std::shared_ptr<DLResultResourceReadOnlyCollection> const& resources) {
    return resources && resources->Count() != 0;
}

// Only resources of type "image" make records; the index belongs to the list, so two images of
// one list share a name.
void AddResourceImageRecords(Record& record, DLResultMarking const& marking,
                             DLResultResourceReadOnlyCollection const& resources, int index) {
    std::string const prefix = marking.Tool()->Name() + ".";
    for (auto const& resource : resources) {
        if (resource->Type() != "image")
            continue;
        std::string name = prefix + resource->Name();
        if (index != 0)
            name += std::to_string(index);
        record.SubRecords()->Add(MakeImageRecord(name, resource->Image()));
    }
}

} // namespace

std::shared_ptr<Record> MakeImageRecord(std::string const& name, std::shared_ptr<IImage> image) {
    return Brnt::CreateObject<Record>(name, rttr::type::get<IImage>(), RecordUsageConstants_Image,
                                      false, rttr::variant(std::move(image)), name);
}

std::shared_ptr<Record> MakeFeaturesRecord(std::shared_ptr<DLResult> result) {
    return Brnt::CreateObject<Record>(FeaturesRecordName, rttr::type::get<GraphicCollection>(),
                                      RecordUsageConstants_Overlay, true, rttr::variant(),
                                      FeaturesRecordName,
                                      std::shared_ptr<IRecordConstructor>(std::move(result)), 0);
}

void AddResultImageRecords(DLResult const& result, Record& record) {
    for (auto const& marking : *result.ResultImage()->ResultMarking()) {
        // A result loaded where its tool no longer exists can't name its images.
        if (!marking->Tool())
            continue;
        int index = 0;
        auto addGroup = [&](std::shared_ptr<DLResultResourceReadOnlyCollection> const& resources) {
            if (!HasItems(resources))
                return;
            AddResourceImageRecords(record, *marking, *resources, index);
            ++index;
        };
        for (auto const& view : *marking->ResultViews()) {
            addGroup(view->Resources());
            if (auto const red = view->ResultRed())
                addGroup(red->ResultResources());
            if (auto const green = view->ResultGreen())
                addGroup(green->ResultResources());
        }
    }
}

} // namespace Tavrin::Vision::DeepLearning::Records
