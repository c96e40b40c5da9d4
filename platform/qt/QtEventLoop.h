#pragma once

#include "platform/EventLoop.h"
#include "platform/shared/TimerQueue.h"

#include <QTimer>

#include <memory>

/// Qt's event loop of the thread that this is made on, with one timer of Qt's for all of ours.
class QtEventLoop final : public EventLoop {
public:
    /// Needs the application.
    QtEventLoop();

    [[nodiscard]] std::unique_ptr<Timer> makeTimer() override { return timers.makeTimer(); }
    void turn() override;

private:
    void waitForNextDue();

    TimerQueue timers;
    QTimer alarm;
    bool turning = false;
};
