#pragma once

#include "platform/linux/BusGreeting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

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
        /// Nobody shows icons. May change whenever somebody comes.
        Nobody,
        /// As `Nobody`, because there is no bus, or it or the watcher does not answer. Whoever asks
        /// them and waits for the answer may wait for ever.
        Mute,
        Host,
    };
    std::function<void()> changed = [] {};

    StatusNotifierSearch();
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

    void connectToBus();
    void askForWatcher();
    void takeHost(const QDBusMessage& answer);
    void ask(QDBusMessage question, Answered answered);
    void become(State state);

    State now = State::Open;
    BusGreeting greeting;
    QTimer patience;
    std::unique_ptr<QDBusConnection> connection;
    QTimer nextTry;
    int tries = 0;
    /// Answers to questions before the last one are not heard.
    int question = 0;
};
