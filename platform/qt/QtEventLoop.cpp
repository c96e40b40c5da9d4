#include "platform/qt/QtEventLoop.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>

QtEventLoop::QtEventLoop() : timers([this] { waitForNextDue(); }) {
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    QObject::connect(&alarm, &QTimer::timeout, &alarm, [this] {
        timers.tickDue();
        waitForNextDue();
    });
}

void QtEventLoop::turn() {
    if (turning) return;
    turning = true;
    QCoreApplication::processEvents();
    turning = false;
}

void QtEventLoop::waitForNextDue() {
    const auto next = timers.nextDue();
    if (!next) {
        alarm.stop();
        return;
    }
    // Rounded up: a tick that comes early would find nothing due.
    const auto wait =
        std::chrono::ceil<std::chrono::milliseconds>(*next - TimerQueue::Clock::now());
    alarm.start(std::max(wait, std::chrono::milliseconds{0}));
}
