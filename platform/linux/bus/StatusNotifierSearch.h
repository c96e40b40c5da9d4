#pragma once

#include "base/Event.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

/// Finds out, over the session bus, whether a panel shows the icons that programs announce there.
/// It takes two: a watcher, who keeps the list of icons, and a host, who shows them.
///
/// Never waits, for the bus or for a watcher. Needs a `QCoreApplication`, on whose events it tells.
class StatusNotifierSearch final : public QObject {
    Q_OBJECT

public:
    enum class State {
        Open,
        /// Nobody shows icons, or there is no bus. May change whenever somebody comes.
        Nobody,
        /// The bus or the watcher does not answer. Whoever asks them and waits for it may wait for
        /// long.
        Mute,
        Host,
    };
    Event<> changed;

    /// `interval`: for one answer, and from one try to the next. At the start of a session, a
    /// watcher is there some seconds before its host.
    explicit StatusNotifierSearch(std::chrono::milliseconds interval = std::chrono::seconds(5));
    ~StatusNotifierSearch() override;
    StatusNotifierSearch(const StatusNotifierSearch&) = delete;
    StatusNotifierSearch& operator=(const StatusNotifierSearch&) = delete;

    void search();
    [[nodiscard]] State state() const { return now; }

private Q_SLOTS:
    void changeWatcher(const QString& name, const QString& before, const QString& owner);
    void askForHost();

private:
    using Answered = std::function<void(const QDBusMessage& answer)>;

    void askForWatcher();
    void takeHost(const QDBusMessage& answer);
    void ask(QDBusMessage message, Answered answered);
    void become(State state);

    const std::chrono::milliseconds interval;
    State now = State::Open;
    std::unique_ptr<QDBusConnection> connection;
    QTimer nextTry;
    int tries = 0;
    /// Answers to questions before the last one are not heard.
    int question = 0;
};
