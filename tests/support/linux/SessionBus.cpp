#include "tests/support/linux/SessionBus.h"

#include <fstream>

namespace {

constexpr const char* head = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
)";

}  // namespace

SessionBus::SessionBus() {
    const std::string place = folder().string();
    std::ofstream(folder() / "bus.conf") << head << "  <listen>" << address() << "</listen>\n"
                                         << "  <servicedir>" << place << "</servicedir>\n"
                                         << "</busconfig>\n";
    std::ofstream(folder() / "sleeper.service")
        << "[D-BUS Service]\nName=" << sleeper << "\nExec=/usr/bin/touch " << place << "/awake\n";
    daemon = Child({"dbus-daemon", "--nofork", "--print-address=1",
                    "--config-file=" + (folder() / "bus.conf").string()});
    (void)daemon.readLine();
}

std::string SessionBus::address() const { return "unix:path=" + (folder() / "bus").string(); }

bool SessionBus::isSleeperAwake() const { return std::filesystem::exists(folder() / "awake"); }
