#include "platform/shared/TimerQueue.h"

#include "platform/shared/runEvent.h"

class TimerQueue::QueuedTimer final : public Timer {
public:
    explicit QueuedTimer(TimerQueue& queue) : queue(queue) {}
    ~QueuedTimer() override { leaveQueue(); }

    void enable(std::chrono::milliseconds newInterval) override {
        enableAtRest(newInterval);
        wake();
    }

    void enableAtRest(std::chrono::milliseconds newInterval) override {
        leaveQueue();
        interval = newInterval;
        begin = Clock::now();
        enabled = true;
        resting = true;
    }

    void disable() override {
        enabled = false;
        leaveQueue();
    }

    void rest() override {
        resting = true;
        leaveQueue();
    }

    void wake() override {
        if (!enabled || !resting) return;
        resting = false;
        enterQueue();
    }

    void run() {
        queued = false;
        runEvent([this] { tick(); });
        if (enabled && !resting && !queued) enterQueue();
    }

private:
    /// Waits for the next tick that is still to come.
    void enterQueue() {
        const auto intervals = (Clock::now() - begin) / interval + 1;
        due = begin + intervals * interval;
        queued = true;
        queue.waiting.emplace(due, this);
        if (isNext()) queue.nextDueChanged();
    }

    void leaveQueue() {
        if (!queued) return;
        const bool wasNext = isNext();
        queued = false;
        queue.waiting.erase({due, this});
        if (wasNext) queue.nextDueChanged();
    }

    [[nodiscard]] bool isNext() const { return queue.waiting.begin()->second == this; }

    TimerQueue& queue;
    std::chrono::milliseconds interval{1};
    Clock::time_point begin;
    Clock::time_point due;
    bool enabled = false;
    bool resting = false;
    bool queued = false;
};

TimerQueue::TimerQueue(Event<> nextDueChanged) : nextDueChanged(std::move(nextDueChanged)) {}

std::unique_ptr<Timer> TimerQueue::makeTimer() { return std::make_unique<QueuedTimer>(*this); }

std::optional<TimerQueue::Clock::time_point> TimerQueue::nextDue() const {
    if (waiting.empty()) return std::nullopt;
    return waiting.begin()->first;
}

void TimerQueue::tickDue() {
    const Clock::time_point now = Clock::now();
    while (!waiting.empty() && waiting.begin()->first <= now) {
        QueuedTimer& timer = *waiting.begin()->second;
        waiting.erase(waiting.begin());
        // The loop learns of the next one before this one ticks: a tick may open a box, under
        // which the others go on.
        nextDueChanged();
        timer.run();
    }
}
