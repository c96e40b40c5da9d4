#include "platform/qt/Application.h"
#include "platform/qt/qtPlatform.h"
#include "tests/ui/windows.h"
#include "ui/common/look.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

int main(int argc, char* argv[]) {
    testing::InitGoogleTest(&argc, argv);
    std::string option = "-platform";
    std::string platform =
        qtPlatform(COBWEAVE_ON_DESKTOP && std::getenv("COBWEAVE_OFFSCREEN") == nullptr);
    std::array arguments{argv[0], option.data(), platform.data()};
    int count = arguments.size();
    const Application application(count, arguments.data());
    QApplication::setApplicationName("Cobweave");
    QApplication::setQuitOnLastWindowClosed(false);
    look::apply();
    chooseLetters();
    return RUN_ALL_TESTS();
}
