#pragma once

#include <concepts>
#include <exception>
#include <utility>

/// Says on standard error that an event was broken off, and why; of very many only the first ones.
/// Throws nothing.
void reportBrokenEvent(const char* reason) noexcept;

/// Runs one event that the system brings: of a socket, a timer or a window. An exception that gets
/// out of it ends that event alone, at the place where it was thrown, and is reported on
/// standard error; the program goes on.
template <std::invocable Event>
void runEvent(Event&& event) {
    try {
        std::forward<Event>(event)();
    } catch (const std::exception& exception) {
        reportBrokenEvent(exception.what());
    } catch (...) {
        reportBrokenEvent("of an unknown kind");
    }
}
