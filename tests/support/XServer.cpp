#include "tests/support/XServer.h"

#include "tests/support/Peer.h"
#include "tests/support/StandIn.h"

#include <stdexcept>
#include <vector>

namespace {

std::vector<std::string> serverCommand(int screens, XServer::WhenLeft whenLeft) {
    std::vector<std::string> words{"Xvfb", "-displayfd", "1", "-nolisten", "tcp"};
    if (whenLeft == XServer::WhenLeft::StaysAsItIs) words.emplace_back("-noreset");
    if (whenLeft == XServer::WhenLeft::Ends) words.emplace_back("-terminate");
    for (int screen = 0; screen < screens; ++screen) {
        words.insert(words.end(), {"-screen", std::to_string(screen), "1024x768x24"});
    }
    return words;
}

}  // namespace

XServer::XServer(int screens, WhenLeft whenLeft)
    : server(serverCommand(screens, whenLeft)), displayName(":" + server.readLine()) {}

WindowManager::WindowManager(const std::string& display)
    : manager(
          {"env", "DISPLAY=" + display, "openbox", "--sm-disable", "--startup", "echo started"}) {
    while (manager.readLine() != "started") {
    }
    // It loses windows that are shown before its loop runs, of which it gives no sign.
    StandIn other(display);
    const xcb_window_t first = other.open({"first", "first", "first"});
    const bool manages = becomesTrue([&] {
        if (other.isListed(first)) return true;
        other.hide(first);
        other.show(first);
        return false;
    });
    if (!manages) throw std::runtime_error("the window manager does not start");
    other.close(first);
    if (!becomesTrue([&] { return !other.isListed(first); })) {
        throw std::runtime_error("the window manager does not notice that windows close");
    }
}
