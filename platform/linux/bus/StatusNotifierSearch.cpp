#include "platform/linux/bus/StatusNotifierSearch.h"

#include <QDBusError>
#include <QDBusVariant>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";

constexpr int mostTries = 5;

bool isUnanswered(const QDBusMessage& answer) {
    return QDBusError(answer).type() == QDBusError::NoReply;
}

}  // namespace

StatusNotifierSearch::StatusNotifierSearch(std::chrono::milliseconds interval)
    : interval(interval) {
    nextTry.setSingleShot(true);
    nextTry.callOnTimeout(this, [this] { queryHost(); });
}

void StatusNotifierSearch::search() {
    bus = std::make_unique<BusConnection>();
    if (!bus->isConnected()) return setState(State::NoHost);
    // This comes before the first query, so that no change gets lost in between. The host's signal
    // may have any sender: for a certain one the library would ask the bus for its name, and block.
    bus->handle().connect(BusConnection::busName, BusConnection::busPath, BusConnection::busName,
                          "NameOwnerChanged", {watcherName}, "sss", this,
                          SLOT(changeWatcher(QString, QString, QString)));
    bus->handle().connect({}, watcherPath, watcherName, "StatusNotifierHostRegistered", this,
                          SLOT(queryHost()));
    queryWatcher();
}

void StatusNotifierSearch::queryWatcher() {
    auto message = BusConnection::callOfBus("NameHasOwner");
    message << watcherName;
    call(message, [this](const QDBusMessage& answer) {
        if (isUnanswered(answer)) {
            setState(State::Unresponsive);
        } else if (answer.arguments().value(0).toBool()) {
            queryHost();
        } else {
            setState(State::NoHost);
        }
    });
}

void StatusNotifierSearch::changeWatcher(const QString& /*name*/, const QString& /*before*/,
                                         const QString& owner) {
    tries = 0;
    nextTry.stop();
    if (owner.isEmpty()) {
        ++lastCall;
        setState(State::NoHost);
    } else {
        queryHost();
    }
}

void StatusNotifierSearch::queryHost() {
    auto message = QDBusMessage::createMethodCall(watcherName, watcherPath,
                                                  "org.freedesktop.DBus.Properties", "Get");
    message << watcherName << "IsStatusNotifierHostRegistered";
    call(message, [this](const QDBusMessage& answer) { onHostAnswer(answer); });
}

void StatusNotifierSearch::onHostAnswer(const QDBusMessage& answer) {
    const bool isLate = isUnanswered(answer);
    const auto value = answer.arguments().value(0).value<QDBusVariant>();
    if (answer.type() == QDBusMessage::ReplyMessage && value.variant().toBool()) {
        nextTry.stop();
        return setState(State::Host);
    }
    if (tries < mostTries && ++tries < mostTries) {
        // Where no answer came, the interval is over already.
        nextTry.start(isLate ? 0ms : interval);
    } else {
        setState(isLate ? State::Unresponsive : State::NoHost);
    }
}

void StatusNotifierSearch::call(const QDBusMessage& message, BusConnection::Answered answered) {
    bus->call(
        message,
        [this, number = ++lastCall, answered = std::move(answered)](const QDBusMessage& answer) {
            if (number == lastCall) answered(answer);
        },
        static_cast<int>(interval.count()));
}

void StatusNotifierSearch::setState(State state) {
    if (std::exchange(now, state) != state) changed();
}
