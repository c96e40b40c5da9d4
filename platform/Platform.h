#pragma once

#include "base/Event.h"

#include <memory>
#include <string>

class EventLoop;
class Network;

/// Call it first of all. From then on a write that fails, to a terminal that is gone or to a full
/// disk, does not end the process, and nothing waits for a reader of standard error or for services
/// of the desktop that do not answer.
void prepareProcess();

/// The command line that the process was started with, given what `main` was given.
[[nodiscard]] std::string commandLine(int count, const char* const* words);

/// What the program gets from the system for the length of the run. Made after the `QApplication`,
/// destroyed before it, and last of all that uses it.
class Platform {
public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    /// The loop of the thread that this was made on.
    [[nodiscard]] virtual EventLoop& loop() = 0;
    /// Sockets whose events come from that loop.
    [[nodiscard]] virtual Network& network() = 0;

    /// The user or the system asks the process to end.
    Event<> endRequested;
};

/// The platform of this system; there is one at a time.
[[nodiscard]] std::unique_ptr<Platform> makePlatform();
