#include "platform/linux/bus/sessionBus.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <cstddef>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr int patience = 2000;

/// The name of the socket in an address such as "unix:path=/run/user/1000/bus,guid=0123"; empty in
/// one of another kind.
QByteArray socketName(const QString& address) {
    for (const QString& pair : address.mid(QString("unix:").size()).split(',')) {
        QByteArray value = QByteArray::fromPercentEncoding(pair.section('=', 1).toLocal8Bit());
        if (pair.startsWith("path=")) return value;
        if (pair.startsWith("abstract=")) return '\0' + value;
    }
    return {};
}

bool connectTo(int descriptor, const QByteArray& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const auto length = static_cast<std::size_t>(name.size());
    if (length == 0 || length >= sizeof address.sun_path) return false;
    std::memcpy(address.sun_path, name.data(), length);
    const auto whole = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + length);
    return connect(descriptor, reinterpret_cast<const sockaddr*>(&address), whole) == 0;
}

/// Somebody listens there and says nothing to the first words of the protocol. Who closes, or does
/// not listen at all, does not keep anybody waiting.
bool isMute(const QByteArray& name) {
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return false;
    bool mute = false;
    if (connectTo(descriptor, name)) {
        const QByteArray user = QByteArray::number(getuid()).toHex();
        const QByteArray words = '\0' + QByteArray("AUTH EXTERNAL ") + user + "\r\n";
        (void)send(descriptor, words.data(), static_cast<std::size_t>(words.size()), MSG_NOSIGNAL);
        pollfd entry{descriptor, POLLIN, 0};
        mute = poll(&entry, 1, patience) == 0;
    } else {
        // The queue of those who want to connect is full.
        mute = errno == EAGAIN;
    }
    close(descriptor);
    return mute;
}

}  // namespace

QString sessionBus::address() {
    if (qEnvironmentVariableIsEmpty(variable)) {
        const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus";
        return QFileInfo::exists(socket) ? "unix:path=" + socket : QString();
    }
    QStringList addresses = qEnvironmentVariable(variable).split(';');
    addresses.removeIf([](const QString& address) { return !address.startsWith("unix:"); });
    return addresses.join(';');
}

void sessionBus::avoidIfMute() {
    for (const QString& each : address().split(';', Qt::SkipEmptyParts)) {
        if (isMute(socketName(each))) qputenv(variable, "disabled:");
    }
}
