#include "tests/support/linux/BadBus.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {

using namespace std::string_literals;

const std::string welcome = "OK 0123456789abcdef0123456789abcdef\r\n";

/// A message without a body whose one field says which call it answers.
std::string message(char type, char answeredCall) {
    return "l"s + type + "\1\1\0\0\0\0\1\0\0\0\x08\0\0\0\5\1u\0"s + answeredCall + "\0\0\0"s;
}

bool isLogin(std::string_view bytes) { return bytes.find("AUTH") != std::string_view::npos; }
bool isCall(std::string_view bytes) { return bytes.find("Hello") != std::string_view::npos; }

}  // namespace

BadBus::BadBus(Manner manner)
    : manner(manner), listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    const std::string path = (folder.path() / "bus").string();
    std::memcpy(place.sun_path, path.c_str(), path.size());
    std::array<int, 2> ends{};
    if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0 ||
        listen(listener.get(), 10) != 0 || pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no socket for a bus");
    }
    endReader = Descriptor(ends[0]);
    endWriter = Descriptor(ends[1]);
    server = std::thread([this] { serve(); });
}

BadBus::~BadBus() {
    endWriter.reset();
    server.join();
}

std::string BadBus::address() const { return "unix:path=" + (folder.path() / "bus").string(); }

void BadBus::serve() {
    std::vector<Descriptor> connections;
    while (true) {
        std::vector<pollfd> entries{{endReader.get(), POLLIN, 0}, {listener.get(), POLLIN, 0}};
        for (const Descriptor& each : connections)
            entries.push_back({each.get(), POLLIN, 0});
        poll(entries.data(), entries.size(), -1);
        if (entries[0].revents != 0) return;
        for (std::size_t index = connections.size(); index > 0; --index) {
            if (entries[index + 1].revents == 0 || answer(connections[index - 1].get())) continue;
            connections.erase(connections.begin() + static_cast<std::ptrdiff_t>(index) - 1);
        }
        if (entries[1].revents == 0) continue;
        Descriptor connection(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (manner != Manner::Closing) connections.push_back(std::move(connection));
    }
}

bool BadBus::answer(int connection) const {
    std::array<char, 4096> buffer{};
    const ssize_t count = recv(connection, buffer.data(), buffer.size(), 0);
    if (count <= 0) return false;
    const std::string_view bytes(buffer.data(), static_cast<std::size_t>(count));
    std::string answer;
    switch (manner) {
        case Manner::Silent:
        case Manner::Closing: break;
        case Manner::Nonsense: answer = "What is that?\r\n"; break;
        case Manner::EndlessLine: answer = "O"; break;
        case Manner::Rejection: answer = "REJECTED\r\n"; break;
        case Manner::SilentAfterLogin:
        case Manner::NonsenseAfterLogin:
        case Manner::OtherAnswer:
        case Manner::Refusal:
            if (isLogin(bytes)) answer = welcome;
            if (bytes.find("NEGOTIATE") != std::string_view::npos) answer = "AGREE_UNIX_FD\r\n";
            break;
    }
    if (isCall(bytes)) {
        if (manner == Manner::NonsenseAfterLogin) answer = std::string(1000, '\xA5');
        if (manner == Manner::OtherAnswer) answer = message(2, 77);
        if (manner == Manner::Refusal) answer = message(3, 1);
    }
    return answer.empty() || send(connection, answer.data(), answer.size(), MSG_NOSIGNAL) > 0;
}
