#pragma once

#include "base/Event.h"

#include <memory>

class EventLoop;
class Network;

/// To be called first of all. From then on a write that fails, to a terminal that is gone or to a
/// full disk, does not end the process.
void prepareProcess();

/// What the program gets from the system for the length of the run. Made after the `QApplication`,
/// destroyed before it, and last of all that uses it.
class Platform {
public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    [[nodiscard]] virtual EventLoop& loop() = 0;
    [[nodiscard]] virtual Network& network() = 0;

    /// Called when the user or the system asks the process to end.
    Event<> endRequested;
};

[[nodiscard]] std::unique_ptr<Platform> makePlatform();
