#include "desktop/frmTitle.h"
#include "platform/Client.h"
#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "ui/about/frmabout.h"
#include "ui/common/FlashButton.h"
#include "ui/common/look.h"
#include "ui/help/frmhelp.h"
#include "ui/log/frmlog.h"
#include "ui/notes/frmnotes.h"
#include "ui/options/frmoptions.h"
#include "ui/toasts/frmpopup.h"

#include <QApplication>
#include <QMessageBox>
#include <QPixmap>
#include <QTest>

#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <iostream>
#include <string>

namespace {

/// Writes a picture of a window that is shown, as this run's scale has it.
class Album {
public:
    explicit Album(std::filesystem::path folder) : folder(std::move(folder)) {}

    void add(QWidget& window, const std::string& name) {
        window.show();
        QCoreApplication::processEvents();
        const auto file = folder / (name + (window.devicePixelRatio() > 1 ? "-2x" : "") + ".png");
        if (!window.grab().save(file.c_str())) complete = false;
        std::cout << file.string() << '\n';
    }

    [[nodiscard]] bool isComplete() const { return complete; }

private:
    std::filesystem::path folder;
    bool complete = true;
};

void showToast(Album& album) {
    FakeLoop loop;
    FakeOwnWindows windows;
    frmpopup toast(loop, windows);
    toast.Label1.setText("Your nick name has been changed to:\r\nAnn (at home)");
    toast.Image1.setHovered(true);
    album.add(toast, "toast");
    toast.Label1.setText(
        "Zo\u00EB \u041F\u0440\u0438\u0432\u0435\u0442 \u0645\u0631\u062D\u0628\u0627 "
        "\u05E9\u05DC\u05D5\u05DD \U0001F600 has opened a conversation window, "
        "and says more than a toast has room for, so that its last line ends in an ellipsis.");
    toast.Image1.setHovered(false);
    album.add(toast, "toast-long");
}

void showLog(Album& album) {
    FakeFacilities::FixedClock clock;
    FakeMessageBox boxes;
    frmlog log(clock, boxes);
    const std::pair<const char*, const char*> entries[] = {
        {"20:14:07", "bob@example.com has opened a conversation window."},
        {"20:21:55", "carol@example.com is now offline."},
        {"20:40:00", "bob@example.com has left the conversation window."},
    };
    for (const auto& [time, text] : entries) {
        clock.time = time;
        log.AddItem(text);
    }
    log.show();
    log.List1.setCurrentIndex(log.List1.model()->index(1, 0));
    album.add(log, "log");
}

void showBoxes(Album& album) {
    const auto boxes = makeMessageBox();
    QWidget window;
    window.show();
    const auto add = [&](const std::string& name) {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        album.add(*box, name);
        box->close();
    };
    boxes->question(window.winId(), "Are you sure you want to clear the log?", {});
    add("box-question");
    boxes->information(window.winId(),
                       "You are about to be signed out of MSN Messenger.\r\n\r\n"
                       "Please click \"OK\" once you are fully signed out of MSN Messenger.",
                       {});
    add("box-information");
    boxes->exclamation(window.winId(), "Please select a note to edit.");
    add("box-exclamation");
    boxes->critical(window.winId(), "Please select some settings before running Cobweave", {});
    add("box-critical");
}

void showEmpty(Album& album) {
    FakeFacilities facilities;
    FakeMessageBox boxes;
    frmlog log(facilities.clock, boxes);
    album.add(log, "log-empty");
    frmnotes notes(facilities.notes, boxes);
    album.add(notes, "notes-empty");
}

void showNotes(Album& album) {
    FakeFacilities facilities;
    for (const char* const note :
         {"buy milk\r\nand bread", "call home on Sunday", "Bob's new address: 12 Mill Lane"}) {
        facilities.notes.add(note);
    }
    FakeMessageBox boxes;
    frmnotes notes(facilities.notes, boxes);
    notes.show();
    auto* const list = notes.findChild<QListWidget*>("List1");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    album.add(notes, "notes");
}

/// Shows the pages of a window one after the other, each when its movie has come to rest.
void showPages(Album& album, QWidget& form, const std::string& name,
               std::initializer_list<int> pages) {
    form.show();
    for (const int page : pages) {
        const QString button = QString("UserControl11(%1)").arg(page);
        ShockwaveFlash& face = form.findChild<FlashButton*>(button)->b1;
        QTest::mouseClick(&face, Qt::LeftButton);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&face, &leave);
        QTest::qWait(4000);
        album.add(form, name + "-" + std::to_string(page));
    }
}

void showOptions(Album& album) {
    FakeFacilities facilities;
    FakeForeignWindows others;
    FakeLoop loop;
    FakeMessageBox boxes;
    struct NoClient final : Client {
        void start() override {}
    } client;
    frmTitle title(facilities.settings, others, loop);
    facilities.registry.hasAddOn = true;
    for (const char* const key : {"alertjoinwindow", "alertopenwindow", "constants", "timestamp"}) {
        facilities.settings.WriteSetting("Options", key, "True");
    }
    facilities.settings.WriteSetting("Options", "progress", "1");
    frmoptions form({facilities.settings,
                     title,
                     facilities.registry,
                     boxes,
                     others,
                     client,
                     facilities.clock,
                     "",
                     {}});
    showPages(album, form, "options", {0, 1, 2, 4, 5});
}

void showHelp(Album& album) {
    frmhelp form;
    showPages(album, form, "help", {0, 5, 7, 2, 3, 1, 6});
}

void showAbout(Album& album) {
    frmabout form;
    form.show();
    QTest::qWait(5000);
    album.add(form, "about");
}

}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName("Cobweave");
    look::apply();
    Album album(argc > 1 ? argv[1] : ".");
    showToast(album);
    showBoxes(album);
    showEmpty(album);
    showLog(album);
    showNotes(album);
    showOptions(album);
    showHelp(album);
    showAbout(album);
    return album.isComplete() ? EXIT_SUCCESS : EXIT_FAILURE;
}
