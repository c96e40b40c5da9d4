#include "tests/support/FakeDesktop.h"
#include "tests/support/FakeFacilities.h"
#include "tests/support/FakeWinsock.h"
#include "ui/frmlog.h"
#include "ui/frmnotes.h"
#include "ui/frmpopup.h"
#include "ui/look.h"

#include <QApplication>
#include <QPixmap>
#include <QTest>

#include <cstdlib>
#include <filesystem>
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
}

void showLog(Album& album) {
    ToldBoxes boxes;
    frmlog log(boxes);
    for (const char* const line :
         {"bob@example.com has opened a conversation window. (20:14:07)",
          "carol@example.com is now offline. (20:21:55)",
          "bob@example.com has left the conversation window. (20:40:00)"}) {
        log.append(line);
    }
    log.show();
    log.List1.setCurrentIndex(log.List1.model()->index(1, 0));
    album.add(log, "log");
}

void showNotes(Album& album) {
    FakeFacilities facilities;
    for (const char* const note :
         {"buy milk\r\nand bread", "call home on Sunday", "Bob's new address: 12 Mill Lane"}) {
        facilities.notes.add(note);
    }
    ToldBoxes boxes;
    frmnotes notes(facilities.notes, boxes);
    notes.show();
    auto* const list = notes.findChild<QListWidget*>("List1");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    album.add(notes, "notes");
}

}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName("Cobweave");
    look::apply();
    Album album(argc > 1 ? argv[1] : ".");
    showToast(album);
    showLog(album);
    showNotes(album);
    return album.isComplete() ? EXIT_SUCCESS : EXIT_FAILURE;
}
