#include "platform/MessageBox.h"
#include "platform/qt/text.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QMessageBox>

#include <iostream>
#include <string>

namespace {

class QtMessageBox final : public MessageBox {
public:
    void critical(std::string_view text) override {
        if (QGuiApplication::platformName() == "offscreen") {
            std::cerr << codePage::toUtf8(text) << std::endl;
            return;
        }
        QMessageBox box;
        box.setIcon(QMessageBox::Critical);
        box.setWindowTitle(QCoreApplication::applicationName());
        box.setTextFormat(Qt::PlainText);
        box.setText(toQString(text));
        box.exec();
    }
};

}  // namespace

std::unique_ptr<MessageBox> makeMessageBox() { return std::make_unique<QtMessageBox>(); }
