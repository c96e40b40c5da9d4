#include "bench/relay/system/interruption.h"

#include <csignal>
#include <ctime>

namespace {

volatile std::sig_atomic_t interrupted = 0;

void noteInterruption(int) { interrupted = 1; }

}  // namespace

void watchForInterruption() {
    struct sigaction action {};
    action.sa_handler = noteInterruption;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART, so that a wait ends at once.
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaction(number, &action, nullptr);
}

void throwIfInterrupted() {
    if (interrupted != 0) throw Interrupted();
}

void pauseFor(std::chrono::microseconds time) {
    throwIfInterrupted();
    timespec rest{};
    rest.tv_sec = static_cast<std::time_t>(time.count() / 1'000'000);
    rest.tv_nsec = static_cast<long>(time.count() % 1'000'000 * 1000);
    while (nanosleep(&rest, &rest) != 0)
        throwIfInterrupted();
}
