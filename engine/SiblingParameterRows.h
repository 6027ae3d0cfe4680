#pragma once

#include <tuple>

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

// The rows that sibling tool and model classes share: each class declares the members alike and
// places the shared rows among its own.
namespace Tavrin::Vision::DeepLearning::Private {

struct ParameterTables::SiblingRows {
    template <class C> static auto Threshold(char const* path) {
        return Engine("Threshold", path, &C::threshold_, &C::Threshold, &C::setThreshold)
            .Bounded("MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                     &C::MaximumThreshold);
    }

    template <class C> static auto SamplingDensity() {
        return Engine("SamplingDensity", ParameterPaths::SamplingDensity, &C::samplingDensity_,
                      &C::SamplingDensity, &C::setSamplingDensity)
            .Bounded("MinimumSamplingDensity", &C::MinimumSamplingDensity, "MaximumSamplingDensity",
                     &C::MaximumSamplingDensity);
    }

    template <class C> static auto ShowGraphics() {
        return Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics);
    }

    // A green tool that keeps the threshold text: all of its rows.
    template <class C> static auto GreenKeepingText() {
        return std::make_tuple(
            LaggingThreshold(ParameterPaths::GreenThreshold, &C::threshold_, &C::thresholdText_),
            ShowGraphics<C>(),
            Engine("GenerateHeatmap", ParameterPaths::GreenHeatmap, &C::generateHeatmap_,
                   &C::GenerateHeatmap, &C::setGenerateHeatmap));
    }

    // A red tool that keeps the threshold text: the rows before its own.
    template <class C> static auto RedKeepingText() {
        return std::make_tuple(ThresholdPair(ParameterPaths::RedThreshold, &C::lowerThreshold_,
                                             &C::upperThreshold_, &C::thresholdText_),
                               Engine("RegionFilter", ParameterPaths::RedRegionFilter,
                                      &C::regionFilter_, &C::RegionFilter, &C::setRegionFilter));
    }

    // A blue tool: every row after the sampling density, which only some blue tools have.
    template <class C> static auto Blue() {
        return std::make_tuple(Threshold<C>(BluePaths::Threshold),
                               Engine("FeatureFilter", BluePaths::FeatureFilter, &C::featureFilter_,
                                      &C::FeatureFilter, &C::setFeatureFilter),
                               Engine("Precision", BluePaths::Precision, &C::precision_,
                                      &C::Precision, &C::setPrecision)
                                   .Bounded("MinimumPrecision", &C::MinimumPrecision,
                                            "MaximumPrecision", &C::MaximumPrecision),
                               Engine("FeatureSize", BluePaths::FeatureSize, &C::featureSize_,
                                      &C::FeatureSize, &C::setFeatureSize),
                               ModelList(&C::models_),
                               Setting("ShowFeatures", &C::ShowFeatures, &C::setShowFeatures),
                               Setting("ShowModels", &C::ShowModels, &C::setShowModels));
    }

    // A model's threshold is sent before its other value but listed after it.
    template <class C> static auto ModelThreshold() {
        return ListedLast(Threshold<C>(ParameterPaths::ModelThreshold));
    }
};

using SiblingRows = ParameterTables::SiblingRows;

} // namespace Tavrin::Vision::DeepLearning::Private
