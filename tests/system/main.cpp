#include "tests/support/Program.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

void write(const char* file, const std::string& text) { std::ofstream(file) << text; }

/// Leaves the machine's network for one of the process's own, where the system allows it.
bool leaveNetwork() {
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    if (unshare(CLONE_NEWNET) == 0) return true;
    if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return false;
    write("/proc/self/setgroups", "deny");
    write("/proc/self/uid_map", user + " " + user + " 1");
    write("/proc/self/gid_map", group + " " + group + " 1");
    return true;
}

void raiseLoopback() {
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    ioctl(descriptor, SIOCSIFFLAGS, &request);
    close(descriptor);
}

/// Waits until no other of these programs runs, and holds others back until this one ends.
void takeTurn() {
    const std::string user = std::to_string(getuid());
    const auto file = std::filesystem::temp_directory_path() / ("cobweave-tests-1090-" + user);
    const int descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    flock(descriptor, LOCK_EX);
}

}  // namespace

/// The program's port is fixed. In a network of their own the tests neither disturb a Cobweave that
/// somebody uses nor each other; where there can be none, there is one of them at a time. Under
/// Wine it is Wine's own server that opens all ports, so there the tests stay in its network.
int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    if (!Program::isForWindows() && leaveNetwork()) {
        raiseLoopback();
    } else {
        takeTurn();
    }
    return RUN_ALL_TESTS();
}
