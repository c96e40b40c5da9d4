#include "ui/about/frmabout.h"

#include "platform/Folders.h"
#include "platform/qt/text.h"
#include "ui/common/labels.h"
#include "ui/common/roles.h"

#include <QApplication>

frmabout::frmabout(std::string_view howToConnect) : Form("Cobweave - About", 7410, 4065) {
    fixSize();
    roles::set(ShockwaveFlash1, QAccessible::StaticText);
    ShockwaveFlash1.setAccessibleName(
        "Cobweave, version " + QApplication::applicationVersion() +
        ". A companion for MSN Messenger 6. In Messenger: SOCKS version 4, "
        "port 1090, server 127.0.0.1. Your network can use it too; "
        "README says how to close it.");
    setAccessibleDescription(ShockwaveFlash1.accessibleName());
    setTip(ShockwaveFlash1, toQString(howToConnect));
    ShockwaveFlash1.setExactFit(true);
    ShockwaveFlash1.setMovie(folders::movie("about.swf"));
    Command1.setAutoDefault(true);
    connect(&Command1, &QPushButton::clicked, this, [this] { close(); });
}
