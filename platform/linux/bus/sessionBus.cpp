#include "platform/linux/bus/sessionBus.h"

#include "platform/linux/Descriptor.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using namespace std::string_literals;

using Steady = std::chrono::steady_clock;

/// Far more than there is in what a bus says to a new connection.
constexpr std::uint32_t longestAnswer = 65536;

constexpr std::uint8_t methodReturn = 2;
constexpr std::uint8_t replySerialField = 5;
constexpr std::uint32_t helloSerial = 1;

std::size_t aligned(std::size_t position, std::size_t unit) {
    return (position + unit - 1) / unit * unit;
}

/// A connection that is given up at the deadline.
class Stream {
public:
    explicit Stream(Steady::time_point deadline) : deadline(deadline) {}

    [[nodiscard]] bool connect(std::string_view socketName) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        if (socketName.empty() || socketName.size() >= sizeof address.sun_path) return false;
        std::memcpy(address.sun_path, socketName.data(), socketName.size());
        const auto size =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + socketName.size());
        descriptor = Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        return ::connect(descriptor.get(), reinterpret_cast<const sockaddr*>(&address), size) == 0;
    }

    /// What is sent here always fits into the buffer of a connection on which nothing waits.
    [[nodiscard]] bool send(std::string_view bytes) const {
        return ::send(descriptor.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(bytes.size());
    }

    /// The next `count` bytes.
    [[nodiscard]] std::optional<std::string> read(std::size_t count) {
        while (received.size() < count) {
            if (!receive()) return std::nullopt;
        }
        std::string bytes = received.substr(0, count);
        received.erase(0, count);
        return bytes;
    }

    /// The next line, without its end.
    [[nodiscard]] std::optional<std::string> readLine() {
        std::size_t end = 0;
        while ((end = received.find("\r\n")) == std::string::npos) {
            if (received.size() > longestAnswer || !receive()) return std::nullopt;
        }
        std::string line = received.substr(0, end);
        received.erase(0, end + 2);
        return line;
    }

private:
    /// False when nothing comes any more, or not in time.
    [[nodiscard]] bool receive() {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Steady::now());
        if (left.count() <= 0) return false;
        pollfd entry{descriptor.get(), POLLIN, 0};
        const int ready = poll(&entry, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) return true;
        if (ready != 1) return false;
        char bytes[4096];
        const ssize_t count = recv(descriptor.get(), bytes, sizeof bytes, 0);
        if (count <= 0) return false;
        received.append(bytes, static_cast<std::size_t>(count));
        return true;
    }

    Steady::time_point deadline;
    Descriptor descriptor;
    std::string received;
};

/// The fixed head of a message and the fields behind it. The numbers come in the order of bytes
/// that the first byte names.
class Message {
public:
    /// The next message, whose body is left out; nothing where the bytes are none.
    [[nodiscard]] static std::optional<Message> readFrom(Stream& stream) {
        Message message;
        const auto head = stream.read(headSize);
        if (!head || ((*head)[0] != 'l' && (*head)[0] != 'B') || (*head)[3] != 1) {
            return std::nullopt;
        }
        message.bytes = *head;
        const std::uint32_t bodySize = message.number(4);
        const std::uint32_t fieldsSize = message.number(12);
        if (bodySize > longestAnswer || fieldsSize > longestAnswer) return std::nullopt;
        const auto fields = stream.read(aligned(fieldsSize, 8));
        if (!fields || !stream.read(bodySize)) return std::nullopt;
        message.bytes += fields->substr(0, fieldsSize);
        return message;
    }

    [[nodiscard]] std::uint8_t type() const { return static_cast<std::uint8_t>(bytes[1]); }

    /// The number of the call that this message answers; nothing where it answers none.
    [[nodiscard]] std::optional<std::uint32_t> replySerial() const {
        // Each field is a code, a signature of one letter with its length and a zero byte, and a
        // value.
        for (std::size_t at = headSize; at + 8 <= bytes.size(); at = aligned(at, 8)) {
            const auto code = static_cast<std::uint8_t>(bytes[at]);
            const char signature = bytes[at + 2];
            const std::uint32_t value = number(at + 4);
            if (signature == 'u') {
                if (code == replySerialField) return value;
                at += 8;
            } else if (signature == 's' || signature == 'o') {
                at += 8 + std::size_t{value} + 1;
            } else if (signature == 'g') {
                at += 4 + 1 + std::size_t{static_cast<std::uint8_t>(bytes[at + 4])} + 1;
            } else {
                break;
            }
        }
        return std::nullopt;
    }

private:
    static constexpr std::size_t headSize = 16;

    [[nodiscard]] std::uint32_t number(std::size_t at) const {
        std::uint32_t value = 0;
        for (std::size_t index = 0; index < 4; ++index) {
            const std::size_t place = bytes[0] == 'B' ? at + index : at + 3 - index;
            value = value << 8 | static_cast<std::uint8_t>(bytes[place]);
        }
        return value;
    }

    std::string bytes;
};

std::string bytesOf(std::uint32_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift & 0xFF);
    return bytes;
}

/// The first call on each connection, which asks the bus for the connection's name.
std::string helloCall() {
    std::string fields;
    const auto add = [&](char code, char type, std::string_view value) {
        fields.resize(aligned(fields.size(), 8));
        fields += {code, 1, type, 0};
        fields += bytesOf(static_cast<std::uint32_t>(value.size()));
        fields.append(value) += '\0';
    };
    add(1, 'o', "/org/freedesktop/DBus");
    add(2, 's', "org.freedesktop.DBus");
    add(3, 's', "Hello");
    add(6, 's', "org.freedesktop.DBus");
    const std::uint32_t size = static_cast<std::uint32_t>(fields.size());
    fields.resize(aligned(fields.size(), 8));
    return "l\1\0\1"s + bytesOf(0) + bytesOf(helloSerial) + bytesOf(size) + fields;
}

std::string inHexadecimal(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hexadecimal;
    for (const char byte : text) {
        const auto code = static_cast<std::uint8_t>(byte);
        hexadecimal += {digits[code >> 4], digits[code & 0xF]};
    }
    return hexadecimal;
}

/// Whether a message bus listens at a socket of the family AF_UNIX and answers by `deadline` as a
/// bus does: it lets this user in and gives the new connection a name. `socketName` begins with a
/// zero byte where the name is an abstract one.
///
/// The D-Bus library waits for a part of that without a limit, and for another 25 s, so it is not
/// let near a bus that does not pass.
bool isAnsweringBus(std::string_view socketName, Steady::time_point deadline) {
    Stream stream(deadline);
    const std::string user = inHexadecimal(std::to_string(getuid()));
    if (!stream.connect(socketName) || !stream.send("\0AUTH EXTERNAL "s + user + "\r\n")) {
        return false;
    }
    const auto answer = stream.readLine();
    if (!answer || !answer->starts_with("OK ")) return false;
    if (!stream.send("BEGIN\r\n" + helloCall())) return false;
    // Other messages may come before the answer.
    while (const auto message = Message::readFrom(stream)) {
        if (message->replySerial() == helloSerial) return message->type() == methodReturn;
    }
    return false;
}

constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";
constexpr std::chrono::seconds longestWait{2};

/// The name of the socket in an address such as "unix:path=/run/user/1000/bus,guid=0123"; empty in
/// one of another kind.
std::string socketName(const QString& address) {
    for (const QString& pair : address.mid(QString("unix:").size()).split(',')) {
        std::string value =
            QByteArray::fromPercentEncoding(pair.section('=', 1).toLocal8Bit()).toStdString();
        if (pair.startsWith("path=")) return value;
        if (pair.startsWith("abstract=")) return '\0' + value;
    }
    return {};
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

void sessionBus::select() {
    const QString known = address();
    // There is nothing to select from, and the environment stays as it is.
    if (known.isEmpty() && qEnvironmentVariableIsEmpty(variable)) return;
    const auto deadline = std::chrono::steady_clock::now() + longestWait;
    QByteArray selected = "disabled:";
    for (const QString& each : known.split(';', Qt::SkipEmptyParts)) {
        if (!isAnsweringBus(socketName(each), deadline)) continue;
        selected = each.toLocal8Bit();
        break;
    }
    qputenv(variable, selected);
}
