#pragma once

#include <string>

namespace KeloReference {

struct ExampleCounts {
    int greenPerClass = 50; // training images per digit
    int redGood = 100;
    int redBad = 20;
    int blueRows = 100; // rows of five digits
    int unseenPerKind = 20;
};

// Cuts the 20 by 20 cells of OpenCV's sample sheet of handwritten digits (5000 digits, 500 of
// each in five rows of 100) into PNG files under <folder>/training (the layout TrainWorkspace
// reads) and <folder>/unseen/{red,green,blue} (digits held out of training). Green classes are
// the digits, red takes the digit 1 as good and other digits as anomalies, blue reads rows of
// five digits laid side by side. Refuses a sheet of another size.
void WriteDigitsExample(const std::string& digitsSheet, const std::string& folder,
                        const ExampleCounts& counts);

} // namespace KeloReference
