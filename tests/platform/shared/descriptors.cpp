#include "tests/platform/shared/descriptors.h"

#include <filesystem>
#include <iterator>
#include <string>

#include <netinet/in.h>
#include <sys/socket.h>

namespace {

using NameOfEnd = int (*)(int, sockaddr*, socklen_t*);

/// 0 for what is no connection.
std::uint16_t portOf(int descriptor, NameOfEnd name) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (name(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
    return address.sin_family == AF_INET ? ntohs(address.sin_port) : std::uint16_t{0};
}

}  // namespace

std::size_t countDescriptors() {
    // The iterator itself has one open while it counts.
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries))) - 1;
}

int descriptorTo(std::uint16_t port) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int descriptor = std::stoi(entry.path().filename().string());
        if (portOf(descriptor, getpeername) == port) return descriptor;
    }
    return -1;
}

std::uint16_t localPortOf(int descriptor) { return portOf(descriptor, getsockname); }
