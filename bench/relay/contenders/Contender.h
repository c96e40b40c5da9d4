#pragma once

#include "bench/relay/system/socketTools.h"
#include "stores/SettingsFile.h"
#include "tests/support/process.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// In the order of the columns.
enum class ContenderId { Direct, Floor, QEpoll, Cobweave, MicroSocks, Danted, HAProxy };

/// As the columns are headed.
[[nodiscard]] std::string nameOf(ContenderId id);

/// How a relay is asked for a connection.
enum class Handshake { None, Socks4, Socks5 };

/// One way from the load generator to the server.
struct Contender {
    ContenderId id;
    std::string name;
    Handshake handshake = Handshake::None;
    /// Nothing for the direct connection and for a program that is not installed.
    std::optional<std::filesystem::path> program;
    /// The port of a program that lets nobody choose it.
    std::optional<Port> fixedPort;
    /// It reads along and changes what its settings say; the others deliver what they get.
    bool rewrites = false;
    /// Why it cannot be measured; empty when it can.
    std::string absence;

    /// Everything but the direct connection is a process between the two.
    [[nodiscard]] bool isRelay() const { return id != ContenderId::Direct; }
};

/// All contenders. The benchmark's own relays are expected in `ownFolder`; others are looked for
/// where programs are installed. `plain`: `cobweave` is a program that rewrites nothing.
/// A `cobweave` for Windows runs under Wine, and beside it only the floor that was built with it.
[[nodiscard]] std::vector<Contender> findContenders(const std::filesystem::path& ownFolder,
                                                    const std::filesystem::path& cobweave,
                                                    bool plain);

/// The folder for settings of the program under test when it is started with `folder`.
[[nodiscard]] std::filesystem::path settingsFolderIn(const std::filesystem::path& folder);

/// How to start a relay on `port`. A relay that cannot be asked for a destination gets `server`.
/// Configurations and settings go to `folder`; `settings` are all that the program under test
/// finds in its store, unchanged for long. Throws `BenchError` when they cannot be written.
[[nodiscard]] ProcessStart startOf(const Contender& contender, Port port, Port server,
                                   const std::filesystem::path& folder, const Settings& settings);
