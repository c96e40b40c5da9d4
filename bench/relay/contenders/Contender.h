#pragma once

#include "bench/relay/contenders/handshake.h"
#include "bench/relay/system/ChildProcess.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// In the order of the columns.
enum class ContenderId { Direct, Floor, QEpoll, Cobweave, MicroSocks, Danted, HAProxy };

/// One way from the load generator to the server.
struct Contender {
    ContenderId id;
    std::string name;
    Handshake handshake = Handshake::None;
    /// Nothing for the direct connection and for a program that is not installed.
    std::optional<std::filesystem::path> program;
    /// The port of a program that lets nobody choose it.
    std::optional<Port> fixedPort;
    /// Why it cannot be measured; empty when it can.
    std::string absence;

    [[nodiscard]] bool isRelay() const { return id != ContenderId::Direct; }
};

/// All contenders. The benchmark's own relays are expected in `ownFolder`; others are looked for
/// where programs are installed.
[[nodiscard]] std::vector<Contender> findContenders(const std::filesystem::path& ownFolder,
                                                    const std::filesystem::path& cobweave);

[[nodiscard]] std::string nameOf(ContenderId id);

/// How to start a relay on `port`. A relay that cannot be asked for a destination gets `server`.
/// Configurations, settings and logs go to `folder`.
[[nodiscard]] Launch launchOf(const Contender& contender, Port port, Port server,
                              const std::filesystem::path& folder);
