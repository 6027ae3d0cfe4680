#pragma once

#include <memory>
#include <string>

#include <opencv2/core.hpp>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <Vision/DeepLearning/DeepLearning.h>

namespace TavrinPython {

// One run's result with what its JSON line names beside the tree: the image and the stream.
struct RunResult {
    std::shared_ptr<Tavrin::Vision::DeepLearning::DLResult> result;
    std::string image;
    std::string stream;
};

// The pels as a new NumPy array: HxW for grey, HxWxC for colour, of uint8 or uint16.
pybind11::array ToArray(const cv::Mat& image);

void BindExceptions(pybind11::module_& module);
void BindResults(pybind11::module_& module);

} // namespace TavrinPython
