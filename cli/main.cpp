// tavrin-dl: runs a workspace's streams on images through the library's public interface.
#include <iostream>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Interruption.h"

int main(int argc, char** argv) {
    int exitCode = 0;
    const auto options = TavrinCli::ParseArguments(argc, argv, exitCode);
    if (!options)
        return exitCode;
    try {
        return TavrinCli::RunCommand(*options);
    } catch (const TavrinCli::Interrupted& interruption) {
        std::cerr << "tavrin-dl: " << interruption.what() << '\n';
        return interruption.status;
    } catch (const TavrinCli::UsageError& error) {
        std::cerr << "tavrin-dl: " << error.what() << '\n';
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "tavrin-dl: " << error.what() << '\n';
        return 1;
    }
}
