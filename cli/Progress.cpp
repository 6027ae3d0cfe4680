#include "Progress.h"

#include <cstdio>

#include <unistd.h>

namespace TavrinCli {

Progress::Progress(std::size_t total)
    : total_(total)
    , shown_(isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
    Clear();
}

void Progress::Clear() {
    if (shown_)
        std::fputs("\r\033[K", stderr);
}

void Progress::Show(std::size_t done, const std::string& current) {
    if (!shown_)
        return;
    constexpr std::size_t Width = 30;
    const std::size_t filled = total_ ? done * Width / total_ : Width;
    std::fprintf(stderr, "\r\033[K[%s%s] %zu/%zu %s", std::string(filled, '#').c_str(),
                 std::string(Width - filled, ' ').c_str(), done, total_, current.c_str());
    std::fflush(stderr);
}

} // namespace TavrinCli
