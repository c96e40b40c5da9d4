#include "platform/shared/runEvent.h"

#include "platform/Console.h"

#include <atomic>
#include <string>

void reportBrokenEvent(const char* reason) noexcept {
    // A peer that has found a way to break events is not to fill the disk with lines too. Qt has
    // events in threads of its own.
    constexpr int mostReports = 100;
    static std::atomic<int> reports{0};
    if (reports >= mostReports || ++reports > mostReports) return;
    try {
        console::error("Cobweave: an event was broken off: " + std::string(reason) + '.');
    } catch (const std::exception&) {
        // Without memory for the line it is lost.
    }
}
