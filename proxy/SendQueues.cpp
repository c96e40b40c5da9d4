#include "proxy/SendQueues.h"

#include <utility>

namespace {

constexpr std::size_t lowWaterMark = SendQueues::highWaterMark / 2;

}  // namespace

void SendQueues::Direction::nowWaits(std::size_t bytes) {
    // For nearly all chunks nothing has to wait.
    if (bytes == 0 && waiting == 0) return;
    if (waiting == 0) all.directions.insert(this);
    all.sum += bytes - waiting;
    waiting = bytes;
    if (waiting > highWaterMark) isFull = true;
    if (waiting < lowWaterMark) isFull = false;
    if (waiting == 0) {
        isLargest = false;
        all.directions.erase(this);
    }
    pause();
    all.balance();
}

void SendQueues::Direction::pause() { source.SetReading(!isFull && !isLargest); }

void SendQueues::balance() {
    // Nearly always there is room.
    if (sum <= most && !isPausing) return;
    isPausing = sum > most;
    Direction* largest = nullptr;
    for (Direction* const direction : directions) {
        if (sum <= most) {
            if (std::exchange(direction->isLargest, false)) direction->pause();
        } else if (!direction->isFull && !direction->isLargest &&
                   (largest == nullptr || direction->waiting > largest->waiting)) {
            largest = direction;
        }
    }
    if (largest == nullptr) return;
    largest->isLargest = true;
    largest->pause();
}
