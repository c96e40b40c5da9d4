#pragma once

#include <cstddef>
#include <memory>
#include <new>
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
///
/// There may be thousands of them, so one takes half of what a `std::function` does. A listener
/// that is more than a pointer (what `[this]` is) takes memory of its own besides.
template <typename... Args>
class Event {
public:
    Event() = default;
    // Qt's moc, which reads this header, cannot read concepts.
    template <typename Listener, std::enable_if_t<std::is_invocable_v<Listener&, Args...> &&
                                                      !std::is_same_v<Listener, Event>,
                                                  int> = 0>
    Event(Listener listener) : ways(&waysOf<Listener>) {
        Held<Listener>::hold(place, std::move(listener));
    }
    Event(const Event& other) : ways(other.ways) {
        if (ways != nullptr) ways->copy(place, other.place);
    }
    Event(Event&& other) noexcept : ways(std::exchange(other.ways, nullptr)), place(other.place) {}
    Event& operator=(Event other) noexcept {
        std::swap(ways, other.ways);
        std::swap(place, other.place);
        return *this;
    }
    ~Event() {
        if (ways != nullptr) ways->drop(place);
    }

    /// Raises the event.
    void operator()(Args... args) const {
        if (ways != nullptr) ways->call(place, std::forward<Args>(args)...);
    }

private:
    /// A listener that may be moved about as bytes, or the address of one.
    struct Place {
        alignas(void*) std::byte bytes[sizeof(void*)];
    };

    struct Ways {
        void (*call)(Place&, Args&&...);
        void (*copy)(Place&, Place&);
        void (*drop)(Place&) noexcept;
    };

    template <typename Listener>
    struct Held {
        static constexpr bool isInPlace = sizeof(Listener) <= sizeof(Place) &&
                                          alignof(Place) >= alignof(Listener) &&
                                          std::is_trivially_copyable_v<Listener>;
        using Kept = std::conditional_t<isInPlace, Listener, Listener*>;

        static void hold(Place& place, Listener listener) {
            if constexpr (isInPlace) {
                new (place.bytes) Kept(std::move(listener));
            } else {
                new (place.bytes) Kept(std::make_unique<Listener>(std::move(listener)).release());
            }
        }
        static Listener& in(Place& place) {
            Kept& kept = *std::launder(reinterpret_cast<Kept*>(place.bytes));
            if constexpr (isInPlace) {
                return kept;
            } else {
                return *kept;
            }
        }
        static void call(Place& place, Args&&... args) { in(place)(std::forward<Args>(args)...); }
        static void copy(Place& to, Place& from) { hold(to, in(from)); }
        static void drop(Place& place) noexcept {
            if constexpr (!isInPlace) std::default_delete<Listener>()(&in(place));
        }
    };

    template <typename Listener>
    static constexpr Ways waysOf{&Held<Listener>::call, &Held<Listener>::copy,
                                 &Held<Listener>::drop};

    const Ways* ways = nullptr;
    mutable Place place{};
};
