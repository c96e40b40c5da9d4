#include "tests/support/linux/Display.h"

#include "tests/support/Peer.h"

#include <cstdlib>
#include <stdexcept>

namespace {

std::string search(const std::string& title) {
    return "xdotool search --onlyvisible --name '^" + title + "$'";
}

}  // namespace

void Display::waitForWindow(const std::string& title) const {
    if (!becomesTrue([&] { return runs(search(title)); })) {
        throw std::runtime_error("no window " + title);
    }
}

void Display::press(const std::string& title, const std::string& key) const {
    // Apart from each other: the window may be gone before the key is let go.
    if (!runs(search(title) + " windowactivate --sync") || !runs("xdotool key " + key)) {
        throw std::runtime_error("cannot press " + key + " in " + title);
    }
}

bool Display::runs(const std::string& command) const {
    const std::string whole = "export DISPLAY=" + displayName + "; " + command + " >/dev/null 2>&1";
    return std::system(whole.c_str()) == 0;
}
