#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <string>

#include <net/if.h>
#include <sched.h>
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

}  // namespace

/// The program's port is fixed. In a network of their own the tests neither disturb a Cobweave that
/// somebody uses nor each other.
int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    if (leaveNetwork()) raiseLoopback();
    return RUN_ALL_TESTS();
}
