#pragma once

#include <cstddef>
#include <string>

namespace TavrinCli {

// A one-line progress bar on standard error, drawn only when that is a terminal, so that logs
// and pipes stay clean.
class Progress {
public:
    explicit Progress(std::size_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void Show(std::size_t done, const std::string& current);
    // Takes the bar off its line, for a message; the next Show draws it again.
    void Clear();

private:
    std::size_t total_;
    bool shown_;
};

} // namespace TavrinCli
