#include "bench/relay/contenders/Contender.h"

#include "bench/relay/system/BenchError.h"
#include "tests/support/storedSettings.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <pwd.h>
#include <sys/resource.h>
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
    Contender contender{id, nameOf(id), handshake, findProgram(program), {}, false, {}};
    if (!contender.program) contender.absence = "not installed";
    return contender;
}

/// It stays who it is: a change of the user would switch off the signal that ends it together with
/// the benchmark, and the reading of its memory.
std::string nameOfThisUser() {
    const passwd* const entry = getpwuid(geteuid());
    return entry != nullptr ? entry->pw_name : "nobody";
}

/// As many connections as are ever opened at once, or as the limit of descriptors lets it have.
std::size_t connectionsOfHAProxy() {
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const auto descriptors = static_cast<std::size_t>(limit.rlim_cur);
    return std::min<std::size_t>(6000, descriptors > 200 ? (descriptors - 100) / 2 : 50);
}

fs::path writeFile(const fs::path& path, const std::string& text) {
    std::ofstream file(path);
    if (!(file << text << std::flush)) throw BenchError("cannot write " + path.string());
    return path;
}

/// The smallest configurations under which these two relay between ports of loopback.
fs::path writeDantedConfiguration(const fs::path& folder, Port port) {
    return writeFile(folder / "danted.conf",
                     "logoutput: stderr\n"
                     "errorlog: stderr\n"
                     "internal: 127.0.0.1 port = " +
                         std::to_string(port) +
                         "\n"
                         "external: 127.0.0.1\n"
                         "clientmethod: none\n"
                         "socksmethod: none\n"
                         "user.privileged: " +
                         nameOfThisUser() +
                         "\n"
                         "user.unprivileged: " +
                         nameOfThisUser() +
                         "\n"
                         "client pass { from: 127.0.0.0/8 to: 0.0.0.0/0 }\n"
                         "socks pass { from: 127.0.0.0/8 to: 127.0.0.0/8 }\n");
}

fs::path writeHAProxyConfiguration(const fs::path& folder, Port port, Port server) {
    return writeFile(folder / "haproxy.cfg",
                     "global\n"
                     "    nbthread 1\n"
                     "    maxconn " +
                         std::to_string(connectionsOfHAProxy()) +
                         "\n"
                         "defaults\n"
                         "    mode tcp\n"
                         "    timeout connect 10s\n"
                         "    timeout client 1h\n"
                         "    timeout server 1h\n"
                         "frontend front\n"
                         "    bind 127.0.0.1:" +
                         std::to_string(port) +
                         " backlog 4096\n"
                         "    default_backend back\n"
                         "backend back\n"
                         "    server far 127.0.0.1:" +
                         std::to_string(server) + "\n");
}

bool isForWindows(const fs::path& program) { return program.extension() == ".exe"; }

/// A store that nobody has changed for long: one that has just changed is looked at more closely.
void writeRestingStore(const fs::path& folder, const Settings& settings) {
    fs::remove_all(folder);
    writeSettings(folder, settings);
    fs::last_write_time(storeIn(folder), fs::file_time_type::clock::now() - std::chrono::hours(1));
}

}  // namespace

std::string nameOf(ContenderId id) {
    static const std::array<const char*, 7> names{"direct",     "floor",  "qepoll", "cobweave",
                                                  "microsocks", "danted", "haproxy"};
    return names.at(static_cast<std::size_t>(id));
}

std::vector<Contender> findContenders(const fs::path& ownFolder, const fs::path& cobweave,
                                      bool plain) {
    using enum ContenderId;
    if (isForWindows(cobweave)) {
        const fs::path floor = cobweave.parent_path() / "bench" / "floor_relay.exe";
        return {
            {Direct, nameOf(Direct), Handshake::None, {}, {}, false, {}},
            {Floor, nameOf(Floor), Handshake::Socks4, floor, {}, false, {}},
            {Cobweave, nameOf(Cobweave), Handshake::Socks4, cobweave, portOfCobweave, !plain, {}},
        };
    }
    return {
        {Direct, nameOf(Direct), Handshake::None, {}, {}, false, {}},
        {Floor, nameOf(Floor), Handshake::Socks4, ownFolder / "floor_relay", {}, false, {}},
        {QEpoll, nameOf(QEpoll), Handshake::Socks4, ownFolder / "qepoll_relay", {}, false, {}},
        {Cobweave, nameOf(Cobweave), Handshake::Socks4, cobweave, portOfCobweave, !plain, {}},
        installed(MicroSocks, "microsocks", Handshake::Socks5),
        installed(Danted, "danted", Handshake::Socks4),
        installed(HAProxy, "haproxy", Handshake::None),
    };
}

fs::path settingsFolderIn(const fs::path& folder) { return folder / "XDG_CONFIG_HOME"; }

ProcessStart startOf(const Contender& contender, Port port, Port server, const fs::path& folder,
                     const Settings& settings) {
    ProcessStart start{
        .command = {contender.program.value()},
        // None of them is to find a desktop to talk to.
        .environment = {
            {"DISPLAY", {}}, {"WAYLAND_DISPLAY", {}}, {"DBUS_SESSION_BUS_ADDRESS", {}}}};
    auto& command = start.command;
    const bool underWine = isForWindows(*contender.program);
    if (underWine) command.insert(command.begin(), "wine");
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
                start.environment[name] = own;
            }
            if (underWine) {
                // The prefix is found from the user's own folder.
                start.environment.erase("HOME");
                start.environment["APPDATA"] = windowsPath(settingsFolderIn(folder));
            }
            writeRestingStore(settingsFolderIn(folder), settings);
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
    return start;
}
