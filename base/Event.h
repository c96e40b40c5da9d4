#pragma once

#include <functional>
#include <type_traits>
#include <utility>

/// Something that can happen to an object, for one listener. While nobody listens, nothing happens.
///
///     Event<std::size_t> DataArrival;                               // in the class that raises it
///     socket.DataArrival = [](std::size_t bytesTotal) { ... };      // whoever listens
///     DataArrival(buffer.size());                                   // when it happens
///
/// A listener that may destroy the object, or set another listener, while it runs needs a copy of
/// the event to be raised.
template <typename... Args>
class Event {
public:
    Event() = default;
    // Qt's moc, which reads this header, cannot read concepts.
    template <typename Listener, std::enable_if_t<std::is_invocable_v<Listener&, Args...> &&
                                                      !std::is_same_v<Listener, Event>,
                                                  int> = 0>
    Event(Listener listener) : listener(std::move(listener)) {}

    /// Raises the event.
    void operator()(Args... args) const {
        if (listener) listener(std::forward<Args>(args)...);
    }

private:
    std::function<void(Args...)> listener;
};
