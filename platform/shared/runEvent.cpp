#include "platform/shared/runEvent.h"

#include "platform/Console.h"

#include <atomic>
#include <string>

void tellOfBrokenEvent(const char* reason) noexcept {
    // A peer that has found a way to break events is not to fill the disk with lines too. Qt has
    // events in threads of its own.
    constexpr int mostTold = 100;
    static std::atomic<int> told{0};
    if (told >= mostTold || ++told > mostTold) return;
    try {
        console::error("Cobweave: an event was broken off: " + std::string(reason) + '.');
    } catch (const std::exception&) {
        // Without memory for the line it is lost.
    }
}
