#include "tests/support/linux/ownNetwork.h"

#include "platform/linux/Descriptor.h"

#include <cstring>
#include <fstream>
#include <string>

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace {

void writeTo(const char* file, const std::string& text) { std::ofstream(file) << text; }

/// Asks for a change of an interface.
bool change(unsigned long what, ifreq& request) {
    const Descriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    return ioctl(any.get(), what, &request) == 0;
}

/// The same, where the change is an address.
bool change(unsigned long what, const char* interface, const char* address) {
    ifreq request{};
    std::strcpy(request.ifr_name, interface);
    sockaddr_in internet{};
    internet.sin_family = AF_INET;
    inet_pton(AF_INET, address, &internet.sin_addr);
    std::memcpy(&request.ifr_addr, &internet, sizeof internet);
    return change(what, request);
}

}  // namespace

bool leaveNetwork() {
    if (unshare(CLONE_NEWNET) != 0) {
        const std::string user = std::to_string(getuid());
        const std::string group = std::to_string(getgid());
        if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return false;
        writeTo("/proc/self/setgroups", "deny");
        writeTo("/proc/self/uid_map", user + " " + user + " 1");
        writeTo("/proc/self/gid_map", group + " " + group + " 1");
    }
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    (void)change(SIOCSIFFLAGS, request);
    return true;
}

bool leaveNetworkForTheInternet() {
    // What the far end of an address of loopback stands for is of this machine, and the network of
    // the near end is the interface's.
    return leaveNetwork() && change(SIOCSIFADDR, "lo:1", "10.203.0.1") &&
           change(SIOCSIFNETMASK, "lo:1", "255.255.255.0") &&
           change(SIOCSIFDSTADDR, "lo:1", "203.0.113.0") &&
           change(SIOCSIFADDR, "lo:2", "198.51.100.1");
}
