#include "Interruption.h"

#include <csignal>

namespace TavrinCli {
namespace {

volatile std::sig_atomic_t caughtSignal = 0;

extern "C" void MarkInterrupted(int signal) {
    caughtSignal = signal;
}

} // namespace

Interrupted::Interrupted(int signal)
    : std::runtime_error("interrupted")
    , status(128 + signal) {}

// Without SA_RESTART, so that a wait for the workers returns at once.
void CatchInterruptions() {
    struct sigaction action = {};
    action.sa_handler = MarkInterrupted;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
}

void ThrowIfInterrupted() {
    if (caughtSignal)
        throw Interrupted(caughtSignal);
}

} // namespace TavrinCli
