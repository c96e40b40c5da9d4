#include "platform/linux/BusGreeting.h"

#include <QByteArray>
#include <QStringList>

#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// The name of the socket in an address such as "unix:path=/run/user/1000/bus,guid=0123"; empty in
/// one of another kind.
QByteArray socketName(const QString& address) {
    for (const QString& pair : address.mid(QString("unix:").size()).split(',')) {
        const QByteArray value =
            QByteArray::fromPercentEncoding(pair.section('=', 1).toLocal8Bit());
        if (pair.startsWith("path=")) return value;
        if (pair.startsWith("abstract=")) return '\0' + value;
    }
    return {};
}

int connectTo(const QByteArray& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(name.size());
    if (length == 0 || length >= sizeof address.sun_path) return -1;
    std::memcpy(address.sun_path, name.data(), length);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const auto whole = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    if (descriptor >= 0 &&
        connect(descriptor, reinterpret_cast<const sockaddr*>(&address), whole) != 0) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

}  // namespace

BusGreeting::~BusGreeting() {
    readiness.reset();
    if (connected >= 0) close(connected);
}

bool BusGreeting::greet(const QString& addresses) {
    for (const QString& address : addresses.split(';')) {
        connected = connectTo(socketName(address));
        if (connected >= 0) break;
    }
    if (connected < 0) return false;
    readiness = std::make_unique<QSocketNotifier>(connected, QSocketNotifier::Read);
    QObject::connect(readiness.get(), &QSocketNotifier::activated, readiness.get(),
                     [this] { take(); });
    const QByteArray user = QByteArray::number(getuid()).toHex();
    const QByteArray words = '\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n";
    const ssize_t sent =
        send(connected, words.data(), static_cast<std::size_t>(words.size()), MSG_NOSIGNAL);
    return sent == words.size();
}

void BusGreeting::take() {
    readiness->setEnabled(false);
    char first = '\0';
    if (recv(connected, &first, 1, 0) == 1) answered();
}
