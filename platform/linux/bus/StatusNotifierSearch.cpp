#include "platform/linux/bus/StatusNotifierSearch.h"

#include "platform/linux/bus/sessionBus.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* busName = "org.freedesktop.DBus";
constexpr const char* busPath = "/org/freedesktop/DBus";

constexpr int mostTries = 5;

bool isUnanswered(const QDBusMessage& answer) {
    return QDBusError(answer).type() == QDBusError::NoReply;
}

}  // namespace

StatusNotifierSearch::StatusNotifierSearch(std::chrono::milliseconds interval)
    : interval(interval) {
    nextTry.setSingleShot(true);
    nextTry.callOnTimeout(this, [this] { askForHost(); });
}

StatusNotifierSearch::~StatusNotifierSearch() {
    if (connection != nullptr) QDBusConnection::disconnectFromBus(connection->name());
}

void StatusNotifierSearch::search() {
    const QString address = sessionBus::address();
    if (address.isEmpty()) return become(State::Nobody);
    static int count = 0;
    const QString name = "Cobweave tray " + QString::number(++count);
    connection = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(address, name));
    if (!connection->isConnected()) return become(State::Nobody);
    // Before anything is asked for, so that no change gets lost in between. The host's signal from
    // whoever sends it: for one sender the library would ask the bus who that is, and wait.
    connection->connect(busName, busPath, busName, "NameOwnerChanged", {watcherName}, "sss", this,
                        SLOT(changeWatcher(QString, QString, QString)));
    connection->connect({}, watcherPath, watcherName, "StatusNotifierHostRegistered", this,
                        SLOT(askForHost()));
    askForWatcher();
}

void StatusNotifierSearch::askForWatcher() {
    auto message = QDBusMessage::createMethodCall(busName, busPath, busName, "NameHasOwner");
    message << watcherName;
    ask(message, [this](const QDBusMessage& answer) {
        if (isUnanswered(answer)) {
            become(State::Mute);
        } else if (answer.arguments().value(0).toBool()) {
            askForHost();
        } else {
            become(State::Nobody);
        }
    });
}

void StatusNotifierSearch::changeWatcher(const QString& /*name*/, const QString& /*before*/,
                                         const QString& owner) {
    tries = 0;
    nextTry.stop();
    if (owner.isEmpty()) {
        ++question;
        become(State::Nobody);
    } else {
        askForHost();
    }
}

void StatusNotifierSearch::askForHost() {
    auto message = QDBusMessage::createMethodCall(watcherName, watcherPath,
                                                  "org.freedesktop.DBus.Properties", "Get");
    message << watcherName << "IsStatusNotifierHostRegistered";
    ask(message, [this](const QDBusMessage& answer) { takeHost(answer); });
}

void StatusNotifierSearch::takeHost(const QDBusMessage& answer) {
    const bool isMute = isUnanswered(answer);
    const auto value = answer.arguments().value(0).value<QDBusVariant>();
    if (answer.type() == QDBusMessage::ReplyMessage && value.variant().toBool()) {
        nextTry.stop();
        return become(State::Host);
    }
    if (tries < mostTries && ++tries < mostTries) {
        // Where no answer came, the pause is over already.
        nextTry.start(isMute ? 0ms : interval);
    } else {
        become(isMute ? State::Mute : State::Nobody);
    }
}

void StatusNotifierSearch::ask(QDBusMessage message, Answered answered) {
    message.setAutoStartService(false);
    const auto limit = static_cast<int>(interval.count());
    auto* const pending = new QDBusPendingCallWatcher(connection->asyncCall(message, limit), this);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, this,
                     [this, pending, mine = ++question, answered = std::move(answered)] {
                         pending->deleteLater();
                         if (mine == question) answered(pending->reply());
                     });
}

void StatusNotifierSearch::become(State state) {
    if (std::exchange(now, state) != state) changed();
}
