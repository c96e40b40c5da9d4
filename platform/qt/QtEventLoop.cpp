#include "platform/qt/QtEventLoop.h"

#include "base/Failure.h"
#include "platform/Console.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>

namespace {

/// Events of sockets skip their failed steps themselves. A failed step of a timer ends the program.
void endAt(const Failure& failure) {
    console::error(std::string("Cobweave: ended, because a step of a timer failed: ") +
                   failure.what() + '.');
    std::_Exit(EXIT_FAILURE);
}

}  // namespace

QtEventLoop::QtEventLoop() : timers([this] { waitForNextDue(); }) {
    alarm.setSingleShot(true);
    alarm.setTimerType(Qt::PreciseTimer);
    QObject::connect(&alarm, &QTimer::timeout, &alarm, [this] {
        try {
            timers.tickDue();
        } catch (const Failure& failure) {
            endAt(failure);
        }
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
