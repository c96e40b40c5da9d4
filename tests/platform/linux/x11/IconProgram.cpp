#include "tests/platform/linux/x11/IconProgram.h"

#include "platform/ForeignWindows.h"
#include "platform/OwnWindows.h"
#include "platform/TrayHost.h"

#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>

#include <iostream>
#include <memory>

int IconProgram::run() {
    // All that the program has of the desktop.
    const auto windows = makeForeignWindows();
    const auto own = makeOwnWindows();
    const auto tray = makeTrayHost();
    std::unique_ptr<QSystemTrayIcon> icon;
    tray->found = [&] {
        icon = std::make_unique<QSystemTrayIcon>();
        QPixmap picture(22, 22);
        picture.fill(Qt::red);
        icon->setIcon(picture);
        icon->show();
        std::cout << "found" << std::endl;
    };
    tray->search();
    std::cout << "searching" << std::endl;
    return QApplication::exec();
}
