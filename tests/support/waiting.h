#pragma once

#include <chrono>
#include <thread>

/// How long a test waits for what must come. Nothing that goes well takes anywhere near it.
constexpr std::chrono::seconds waitLimit{60};

/// Waits for a condition to become true; false when the limit runs out before.
template <typename Condition>
[[nodiscard]] bool becomesTrue(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + waitLimit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}
