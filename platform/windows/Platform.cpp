#include "platform/Platform.h"

#include "base/codePage.h"
#include "platform/Console.h"
#include "platform/qt/QtEventLoop.h"
#include "platform/shared/StreamSocket.h"
#include "platform/windows/EndSignals.h"
#include "platform/windows/Reactor.h"
#include "platform/windows/wideText.h"

namespace {

class WindowsPlatform final : public Platform {
public:
    [[nodiscard]] EventLoop& loop() override { return eventLoop; }
    [[nodiscard]] Network& network() override { return sockets; }

private:
    QtEventLoop eventLoop;
    Reactor reactor;
    StreamNetwork sockets{reactor, eventLoop};
    EndSignals endSignals{[this] { endRequested(); }};
};

}  // namespace

void prepareProcess() {
    // No boxes of the system's for missing disks and the like.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    console::prepare();
}

std::string commandLine(int /*count*/, const char* const* /*words*/) {
    // What `main` was given has lost quotes and what the machine's code page lacks.
    return codePage::fromUtf8(wideText::toUtf8(GetCommandLineW()));
}

std::unique_ptr<Platform> makePlatform() { return std::make_unique<WindowsPlatform>(); }
