// Cuts OpenCV's sample sheet of handwritten digits into the example's training and analysis
// images.
#include <cstdio>
#include <exception>

#include "ExampleData.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: kelo_example_data DIGITS_PNG FOLDER\n"
                   "Writes FOLDER/training (for kelo_train) and FOLDER/unseen.\n",
                   stderr);
        return 2;
    }
    try {
        KeloReference::WriteDigitsExample(argv[1], argv[2], KeloReference::ExampleCounts{});
        std::printf("example images in %s/training and %s/unseen\n", argv[2], argv[2]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "kelo_example_data: %s\n", failure.what());
        return 1;
    }
}
