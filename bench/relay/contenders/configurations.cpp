#include "bench/relay/contenders/configurations.h"

#include "bench/relay/system/BenchError.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <pwd.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

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

}  // namespace

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
