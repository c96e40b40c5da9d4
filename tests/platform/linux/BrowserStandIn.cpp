#include "tests/platform/shared/BrowserStandIn.h"

#include "tests/support/linux/ProgramFolder.h"

#include <fstream>

/// A program of the name that opens pages. While the file "gate" is there it does not end.
struct BrowserStandIn::System {
    System() {
        folder.script(R"(printf '%s' "$1" >"$out/new" && mv "$out/new" "$out/address"
while [ -e "$out/gate" ]; do sleep 0.01; done
touch "$out/ended"
)");
    }

    ProgramFolder folder{"xdg-open"};
};

BrowserStandIn::BrowserStandIn() : system(std::make_unique<System>()) {}

BrowserStandIn::~BrowserStandIn() {
    if (!isStarted()) return;
    std::filesystem::remove(system->folder.path() / "gate");
    (void)system->folder.left("ended");
}

std::string BrowserStandIn::address() const { return system->folder.left("address"); }

bool BrowserStandIn::isStarted() const { return system->folder.has("address"); }

void BrowserStandIn::keepRunning() { std::ofstream(system->folder.path() / "gate") << '\n'; }

bool BrowserStandIn::isRunning() const { return isStarted() && !system->folder.has("ended"); }
