#include "bench/relay/contenders/Contender.h"

#include "bench/relay/contenders/configurations.h"

#include <cstdlib>
#include <sstream>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr Port portOfCobweave = 1090;

/// Daemons stand in folders that an ordinary user's search path leaves out.
std::optional<fs::path> findProgram(const std::string& name) {
    const char* const own = std::getenv("PATH");
    std::istringstream folders(std::string(own != nullptr ? own : "") +
                               ":/usr/local/bin:/usr/local/sbin:/usr/bin:/usr/sbin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const fs::path program = fs::path(folder) / name;
        if (!folder.empty() && access(program.c_str(), X_OK) == 0) return program;
    }
    return {};
}

Contender installed(ContenderId id, const std::string& program, Handshake handshake) {
    Contender contender{id, nameOf(id), handshake, findProgram(program), {}, {}};
    if (!contender.program) contender.absence = "not installed";
    return contender;
}

}  // namespace

std::string nameOf(ContenderId id) {
    static const std::array<const char*, 7> names{"direct",     "floor",  "qepoll", "cobweave",
                                                  "microsocks", "danted", "haproxy"};
    return names.at(static_cast<std::size_t>(id));
}

std::vector<Contender> findContenders(const fs::path& ownFolder, const fs::path& cobweave) {
    using enum ContenderId;
    return {
        {Direct, nameOf(Direct), Handshake::None, {}, {}, {}},
        {Floor, nameOf(Floor), Handshake::Socks4, ownFolder / "floor_relay", {}, {}},
        {QEpoll, nameOf(QEpoll), Handshake::Socks4, ownFolder / "qepoll_relay", {}, {}},
        {Cobweave, nameOf(Cobweave), Handshake::Socks4, cobweave, portOfCobweave, {}},
        installed(MicroSocks, "microsocks", Handshake::Socks5),
        installed(Danted, "danted", Handshake::Socks4),
        installed(HAProxy, "haproxy", Handshake::None),
    };
}

Launch launchOf(const Contender& contender, Port port, Port server, const fs::path& folder) {
    Launch launch;
    launch.log = folder / (contender.name + ".log");
    // None of them is to find a desktop to talk to.
    launch.removedVariables = {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"};
    launch.command = {contender.program.value()};
    auto& command = launch.command;
    const std::string portText = std::to_string(port);
    switch (contender.id) {
        case ContenderId::Direct: break;
        case ContenderId::Floor:
        case ContenderId::QEpoll: command.push_back(portText); break;
        case ContenderId::Cobweave:
            for (const char* const name :
                 {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
                const fs::path own = folder / name;
                fs::create_directories(own);
                launch.variables.emplace_back(name, own);
            }
            break;
        case ContenderId::MicroSocks:
            command.insert(command.end(), {"-i", "127.0.0.1", "-p", portText});
            break;
        case ContenderId::Danted:
            command.insert(command.end(), {"-f", writeDantedConfiguration(folder, port), "-p",
                                           folder / "danted.pid"});
            break;
        case ContenderId::HAProxy:
            command.insert(command.end(),
                           {"-db", "-f", writeHAProxyConfiguration(folder, port, server)});
            break;
    }
    return launch;
}
