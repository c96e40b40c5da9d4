#pragma once

#include <chrono>
#include <exception>

/// Somebody wants the benchmark to end. It is thrown rather than exited with, so that the relays
/// end and the temporary folder goes.
class Interrupted : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "interrupted"; }
};

/// From now on SIGINT, SIGTERM and SIGHUP only leave a mark that `throwIfInterrupted` finds.
void watchForInterruption();

/// To be called wherever a wait has ended early.
void throwIfInterrupted();

/// Sleeps, and throws `Interrupted` when it has to end before.
void pauseFor(std::chrono::microseconds time);
