#pragma once

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/Child.h"

#include <filesystem>
#include <string>

/// A session bus of the test's own, which is the one of the environment while it exists. It has one
/// player that it would start by itself for a program that calls it.
class SessionBus {
public:
    SessionBus();

    /// As DBUS_SESSION_BUS_ADDRESS has it.
    [[nodiscard]] std::string address() const;
    /// The folder whose socket "bus" is the bus.
    [[nodiscard]] const std::filesystem::path& folder() const { return files.path(); }
    /// The process of the bus.
    [[nodiscard]] pid_t process() const { return daemon.number(); }
    /// Ends the bus.
    void end() { daemon = Child(); }

    static constexpr const char* sleeper = "org.mpris.MediaPlayer2.sleeper";
    /// The bus has been made to start the sleeper.
    [[nodiscard]] bool isSleeperAwake() const;

private:
    TemporaryFolder files;
    Variable variable{"DBUS_SESSION_BUS_ADDRESS", address()};
    Child daemon;
};
