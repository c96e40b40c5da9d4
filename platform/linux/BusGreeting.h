#pragma once

#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>

/// Finds out whether a bus answers at all. The D-Bus library waits for a bus that does not, for
/// ever, and all that uses the library with it, so a bus is greeted before the library meets it.
class BusGreeting {
public:
    /// It does. Comes at most once.
    std::function<void()> answered = [] {};

    BusGreeting() = default;
    ~BusGreeting();
    BusGreeting(const BusGreeting&) = delete;
    BusGreeting& operator=(const BusGreeting&) = delete;

    /// Greets the first of these addresses where somebody listens; false without one.
    [[nodiscard]] bool greet(const QString& addresses);

private:
    void take();

    int connected = -1;
    std::unique_ptr<QSocketNotifier> readiness;
};
