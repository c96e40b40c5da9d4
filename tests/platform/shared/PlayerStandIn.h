#pragma once

#include <memory>
#include <string>
#include <vector>

/// A media player of the user's, which does not run at first. Each system has its own way to be
/// one; the tests are the same.
class PlayerStandIn {
public:
    enum class Status { Playing, Paused };

    PlayerStandIn();
    ~PlayerStandIn();
    PlayerStandIn(const PlayerStandIn&) = delete;
    PlayerStandIn& operator=(const PlayerStandIn&) = delete;

    /// Runs from now on, and has this song.
    void show(Status status, const std::string& artist, const std::string& title);
    /// No longer runs.
    void end();

    /// The numbers of the commands that it has been given, in order.
    [[nodiscard]] std::vector<int> commands() const;

private:
    struct System;
    std::unique_ptr<System> system;
};
