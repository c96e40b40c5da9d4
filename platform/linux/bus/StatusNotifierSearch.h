#pragma once

#include "base/Event.h"
#include "platform/linux/bus/BusConnection.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <memory>

/// Finds out, over the session bus, whether a panel shows the icons that programs announce there.
/// It takes two: a watcher, who keeps the list of icons, and a host, who shows them.
///
/// Never waits for the bus or for a watcher. Needs a `QCoreApplication`, from whose loop the event
/// is raised.
class StatusNotifierSearch final : public QObject {
    Q_OBJECT

public:
    enum class State {
        /// Nothing is known yet.
        Searching,
        /// Nobody shows icons, or there is no bus. May change whenever a program starts.
        NoHost,
        /// The bus or the watcher does not answer. A call that blocks on them may take long.
        Unresponsive,
        /// Icons are shown.
        Host,
    };
    /// `state` answers with another one.
    Event<> changed;

    /// `interval` is the limit for one answer, and the time from one try to the next. At the start
    /// of a session, a watcher is there some seconds before its host.
    explicit StatusNotifierSearch(std::chrono::milliseconds interval = std::chrono::seconds(5));

    /// Begins to search; call it once. Five tries are made for a host, and a host that comes later
    /// is noticed when it announces itself.
    void search();
    /// What is known by now.
    [[nodiscard]] State state() const { return now; }

private Q_SLOTS:
    void changeWatcher(const QString& name, const QString& before, const QString& owner);
    void queryHost();

private:
    void queryWatcher();
    void onHostAnswer(const QDBusMessage& answer);
    /// Drops the answers to calls before this one.
    void call(const QDBusMessage& message, BusConnection::Answered answered);
    void setState(State state);

    const std::chrono::milliseconds interval;
    State now = State::Searching;
    /// Null before the search.
    std::unique_ptr<BusConnection> bus;
    QTimer nextTry;
    int tries = 0;
    int lastCall = 0;
};
