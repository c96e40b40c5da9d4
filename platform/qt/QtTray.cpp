#include "platform/Tray.h"

#include "platform/TrayHost.h"
#include "platform/qt/text.h"
#include "platform/qt/waitingBoxes.h"

#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>

#include <memory>
#include <vector>

namespace {

QString toolTip(const std::string& tip) { return toQString(tip).replace("\r\n", "\n"); }

class QtTray final : public Tray {
public:
    explicit QtTray(std::chrono::milliseconds patience) {
        host->found = [this] { show(); };
        waiting.setSingleShot(true);
        waiting.setInterval(patience);
        waiting.callOnTimeout([this] { noPlace(); });
    }

    void add(std::string_view text, const std::vector<MenuEntry>& entries) override {
        tip = text;
        menuEntries = entries;
        waiting.start();
        host->search();
    }

    void modify(std::string_view text) override {
        tip = text;
        if (icon) icon->setToolTip(toolTip(tip));
    }

    void remove() override {
        waiting.stop();
        host.reset();
        icon.reset();
    }

private:
    void makeMenu() {
        menu = std::make_unique<QMenu>();
        menu->setTitle("&PopUp Menu");
        for (const MenuEntry& entry : menuEntries) {
            if (entry.caption == "-") {
                menu->addSeparator();
                continue;
            }
            QAction* const action = menu->addAction(toQString(entry.caption));
            action->setObjectName(entry.name.c_str());
            QObject::connect(action, &QAction::triggered, menu.get(), entry.action);
        }
    }

    // Nothing is made before there is a place: with the first icon Qt decides, for the whole run,
    // which kind of place it uses, and with the first menu it begins to look at fonts.
    void show() {
        waiting.stop();
        makeMenu();
        icon = std::make_unique<QSystemTrayIcon>(QApplication::windowIcon());
        icon->setContextMenu(menu.get());
        icon->setToolTip(toolTip(tip));
        QObject::connect(icon.get(), &QSystemTrayIcon::activated, icon.get(),
                         [] { waitingBoxes::raise(); });
        icon->show();
    }

    std::string tip;
    std::vector<MenuEntry> menuEntries;
    std::unique_ptr<QMenu> menu;
    QTimer waiting;
    std::unique_ptr<TrayHost> host = makeTrayHost();
    std::unique_ptr<QSystemTrayIcon> icon;
};

}  // namespace

std::unique_ptr<Tray> makeTray(std::chrono::milliseconds patience) {
    return std::make_unique<QtTray>(patience);
}
