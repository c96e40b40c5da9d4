#include "tests/platform/linux/bus/ScriptedPlayer.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    if (argc == 2 && misbehaving::run(argv[1])) return 0;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
