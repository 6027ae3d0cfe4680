#ifndef TAVRIN_TESTS_ENGINE_ENGINEERROR_H
#define TAVRIN_TESTS_ENGINE_ENGINEERROR_H

#include "TestEngineControl.h"

#include <stdexcept>
#include <string>

namespace TestKelo {

// A refused engine call. Entry points turn it into their status and error text.
class EngineError : public std::runtime_error {
public:
    EngineError(int status, const std::string& text)
        : std::runtime_error(text)
        , status_(status) {}

    int status() const noexcept { return status_; }

private:
    int status_;
};

// Engine texts arrive as C texts; a null one is refused rather than read.
inline std::string engineText(const char* text) {
    if (!text) {
        throw EngineError(TESTKELO_REFUSED, "a text argument is null");
    }
    return text;
}

} // namespace TestKelo

#endif
