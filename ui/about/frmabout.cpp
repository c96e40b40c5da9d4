#include "ui/about/frmabout.h"

#include "platform/Folders.h"

frmabout::frmabout() : Form("Cobweave - About", 7410, 4065) {
    fixSize();
    ShockwaveFlash1.setExactFit(true);
    ShockwaveFlash1.setMovie(folders::movie("about.swf"));
    Command1.setAutoDefault(true);
    connect(&Command1, &QPushButton::clicked, this, [this] { close(); });
}
