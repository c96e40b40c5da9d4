#include "platform/Platform.h"

#include "platform/Console.h"
#include "platform/linux/EndSignals.h"
#include "platform/linux/Reactor.h"
#include "platform/linux/bus/sessionBus.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/shared/StreamSocket.h"

#include <QSocketNotifier>

#include <csignal>

namespace {

class LinuxPlatform final : public Platform {
public:
    LinuxPlatform() {
        QObject::connect(&readiness, &QSocketNotifier::activated, &readiness,
                         [this] { reactor.dispatch(); });
    }

    [[nodiscard]] EventLoop& loop() override { return eventLoop; }
    [[nodiscard]] Network& network() override { return sockets; }

private:
    QtEventLoop eventLoop;
    Reactor reactor;
    // One notifier for all sockets: Qt looks at each one that there is on every turn.
    QSocketNotifier readiness{reactor.descriptor(), QSocketNotifier::Read};
    StreamNetwork sockets{reactor, eventLoop};
    EndSignals endSignals{reactor, [this] { endRequested(); }};
};

}  // namespace

void prepareProcess() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    console::prepare();
    sessionBus::select();
}

std::string commandLine(int count, const char* const* words) {
    std::string line;
    for (int index = 0; index < count; ++index) {
        if (index > 0) line += ' ';
        line += words[index];
    }
    return line;
}

std::unique_ptr<Platform> makePlatform() { return std::make_unique<LinuxPlatform>(); }
