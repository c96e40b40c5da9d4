#include "tests/support/linux/XServer.h"

#include "tests/support/Peer.h"

#include <stdexcept>
#include <vector>

namespace {

std::vector<std::string> serverCommand(int screens, XServer::WhenLeft whenLeft) {
    // The display has the number of the process. Servers that look for a free one find the same
    // in networks of their own, and then share its files.
    const char* const start = R"sh(exec Xvfb ":$(($$ % 50000 + 100))" "$@")sh";
    std::vector<std::string> words{"sh",         "-c", start,       "Xvfb",
                                   "-displayfd", "1",  "-nolisten", "tcp"};
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
          {"env", "DISPLAY=" + display, "openbox", "--sm-disable", "--startup", "echo started"}),
      other(display) {
    while (manager.readLine() != "started") {
    }
    // It loses windows that are shown before its loop runs, of which it gives no sign.
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
