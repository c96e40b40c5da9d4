#include "bench/relay/contenders/EpollRelay.h"

#include <QApplication>
#include <QSocketNotifier>

#include <chrono>
#include <exception>
#include <iostream>

namespace {

/// Takes all that is ready, but lets a window have its turn in between.
void serveForAWhile(EpollRelay& relay) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(4);
    while (relay.serve(0) && Clock::now() < end)
        continue;
}

}  // namespace

int main(int count, char** arguments) {
    try {
        const auto port = portArgument(count, arguments);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication application(count, arguments);
        EpollRelay relay(port);
        const QSocketNotifier notifier(relay.descriptor(), QSocketNotifier::Read);
        QObject::connect(&notifier, &QSocketNotifier::activated, [&] { serveForAWhile(relay); });
        std::cout << "qepoll_relay listens on port " << port << std::endl;
        return QApplication::exec();
    } catch (const std::exception& error) {
        std::cerr << "qepoll_relay: " << error.what() << '\n';
        return 1;
    }
}
