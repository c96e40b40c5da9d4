#pragma once

#include "platform/Winsock.h"

#include <cstddef>
#include <set>

/// What waits to be sent on all connections, and the pauses that bound it: a peer that does not
/// take what it is sent makes the one that sends it wait.
///
/// A direction of its own with much to be sent is not read for until half of that has gone. When
/// all together have too much, the one with the most is not read for until they have less; those
/// that have nothing waiting go on.
class SendQueues {
public:
    static constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
    /// The most that may wait one way of one connection: so little that its memory stays in the
    /// cache. With 8 MiB, 7 % less got through a second.
    static constexpr std::size_t highWaterMark = mebibyte / 4;
    /// The most that may wait in all.
    static constexpr std::size_t mostInAll = 256 * mebibyte;

    /// At most `most` bytes are to wait in all.
    explicit SendQueues(std::size_t most = mostInAll) : most(most) {}
    SendQueues(const SendQueues&) = delete;
    SendQueues& operator=(const SendQueues&) = delete;

    /// How many bytes wait now.
    [[nodiscard]] std::size_t size() const { return sum; }

    /// What waits to be sent one way of one connection.
    class Direction {
    public:
        /// `source` is where the bytes come from. Both have to outlive this.
        Direction(SendQueues& all, Winsock& source) : all(all), source(source) {}
        ~Direction() { nowWaits(0); }
        Direction(const Direction&) = delete;
        Direction& operator=(const Direction&) = delete;

        /// Takes notice that so many bytes wait now.
        void nowWaits(std::size_t bytes);

    private:
        friend SendQueues;

        void pause();

        SendQueues& all;
        Winsock& source;
        std::size_t waiting = 0;
        /// This direction has too much.
        bool isFull = false;
        /// All together have too much, and this one has the most.
        bool isLargest = false;
    };

private:
    void balance();

    std::size_t most;
    std::size_t sum = 0;
    /// All together had too much when it was last looked at, so directions are paused for that.
    bool isPausing = false;
    /// The directions that have something waiting.
    std::set<Direction*> directions;
};
