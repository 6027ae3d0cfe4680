#pragma once

#include <string>

namespace KeloReference {

// How many held-out images the analysis of each stream gets. Training always takes every sample
// outside the held-out fifth.
struct ExampleCounts {
    int greenPerDigit = 50; // single digits of each digit
    int redBad = 200;       // digits other than the good one; every held-out good digit is taken
    int blueRows = 200;     // rows of five digits; 200 take every held-out sample once
};

// Cuts the 20 by 20 cells of OpenCV's sample sheet of handwritten digits (5000 digits, 500 of
// each in five rows of 100) into PNG files. The last fifth of each digit's samples is held out:
// it goes only to <folder>/unseen/{red,green,blue}, named so that the truth is the file name
// before its first '_'. Every other sample goes to <folder>/training (the layout TrainWorkspace
// reads) for each kind. Green classes are the digits, red takes the digit 1 as good and other
// digits as anomalies, blue reads rows of five digits laid side by side. Refuses a sheet of
// another size.
void WriteDigitsExample(const std::string& digitsSheet, const std::string& folder,
                        const ExampleCounts& counts);

} // namespace KeloReference
