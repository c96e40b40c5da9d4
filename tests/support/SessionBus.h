#pragma once

#include "tests/support/Child.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <string>

/// A session bus of the test's own. It has one player that it would start by itself for whoever
/// calls it.
class SessionBus {
public:
    SessionBus();

    [[nodiscard]] std::string address() const;
    /// The folder whose socket "bus" is the bus.
    [[nodiscard]] const std::filesystem::path& folder() const { return files.path(); }
    [[nodiscard]] pid_t process() const { return daemon.number(); }
    void end() { daemon = Child(); }

    static constexpr const char* sleeper = "org.mpris.MediaPlayer2.sleeper";
    /// The bus has been made to start the sleeper.
    [[nodiscard]] bool isSleeperAwake() const;

private:
    TemporaryFolder files;
    Child daemon;
};
