#include "platform/Platform.h"
#include "platform/linux/x11/X11Client.h"
#include "tests/platform/linux/x11/IconProgram.h"
#include "tests/support/linux/XServer.h"
#include "tests/support/waiting.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string_view>

int main(int argc, char* argv[]) {
    if (argc == 2 && std::string_view(argv[1]) == IconProgram::argument) {
        prepareProcess();
        const QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        return IconProgram::run();
    }
    testing::InitGoogleTest(&argc, argv);
    // A busy machine's X server answers later than a program may wait that serves connections.
    X11Client::longestWait = waitLimit;
    const XServer server;
    setenv("DISPLAY", server.name().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
