// Trains the example workspace once for all the reference tests of a CTest run.
#include <cstdio>
#include <exception>
#include <filesystem>

#include "ExampleWorkspace.h"

int main() {
    try {
        std::filesystem::remove_all(KELO_TEST_EXAMPLE_DIR);
        ReferenceTests::TrainExample(KELO_TEST_EXAMPLE_DIR);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "reference example: %s\n", failure.what());
        return 1;
    }
}
