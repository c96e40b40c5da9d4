#include "platform/Display.h"
#include "platform/Folders.h"
#include "platform/MessageBox.h"
#include "platform/Platform.h"
#include "proxy/frmMain.h"
#include "proxy/hostForms.h"
#include "stores/SettingsStore.h"

#include <QApplication>
#include <QSysInfo>
#include <QTimer>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string_view>

namespace {

void tellTrouble(std::string_view text) { std::cerr << "Cobweave: " << text << '.' << std::endl; }

void tellHowToConnect() {
    std::cout << "Cobweave is ready. In Messenger, use a proxy server of type SOCKS version 4, "
                 "server 127.0.0.1 (from another machine: "
              << QSysInfo::machineHostName().toStdString() << "), port " << frmMain::listeningPort
              << '.' << std::endl;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (const auto reason = chooseDisplay()) {
        tellTrouble(*reason + ", so it runs without windows");
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName("Cobweave");
    QApplication::setQuitOnLastWindowClosed(false);

    const std::unique_ptr<Platform> platform = makePlatform();
    platform->endRequested = [] { QApplication::exit(EXIT_SUCCESS); };
    const std::unique_ptr<MessageBox> messageBox = makeMessageBox();
    SettingsStore settings(folders::settings() / "Cobwaeve" / "settings.db", tellTrouble);

    TrayForm tray;
    TitleForm title;
    NotesForm notes;
    LogForm log;
    OptionsForm options;
    Popups popups;
    frmMain host(platform->network(), platform->loop(), settings, *messageBox,
                 {tray, title, notes, log, options, popups});

    // Inside the loop, so that a box at start-up can be ended like everything else.
    QTimer::singleShot(0, [&host] {
        switch (host.Load()) {
            case frmMain::Start::Listening: tellHowToConnect(); break;
            case frmMain::Start::Deaf: break;
            case frmMain::Start::SecondCopy: QApplication::exit(EXIT_FAILURE); break;
        }
    });
    return QApplication::exec();
}
