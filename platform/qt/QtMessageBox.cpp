#include "platform/Console.h"
#include "platform/MessageBox.h"
#include "platform/qt/text.h"

#include <QApplication>
#include <QMessageBox>

#include <string>

namespace {

class QtMessageBox final : public MessageBox {
public:
    void critical(std::string_view text) override {
        ask(QMessageBox::Critical, QMessageBox::Ok, text);
    }
    void exclamation(std::string_view text) override {
        ask(QMessageBox::Warning, QMessageBox::Ok, text);
    }
    void information(std::string_view text) override {
        ask(QMessageBox::Information, QMessageBox::Ok, text);
    }
    [[nodiscard]] bool question(std::string_view text) override {
        return ask(QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, text) ==
               QMessageBox::Yes;
    }
    [[nodiscard]] bool isEnding() const override { return ending; }

private:
    int ask(QMessageBox::Icon icon, QMessageBox::StandardButtons buttons, std::string_view text) {
        // Over the window that asks, when it is one of ours.
        QMessageBox box(QApplication::activeWindow());
        box.setIcon(icon);
        box.setStandardButtons(buttons);
        box.setWindowTitle(QApplication::applicationName());
        box.setTextFormat(Qt::PlainText);
        box.setText(toQString(text));
        const int answer = box.exec();
        // Closing presses a button as well; the end of the program presses none.
        ending = ending || box.clickedButton() == nullptr;
        return answer;
    }

    bool ending = false;
};

class UnseenMessageBox final : public MessageBox {
public:
    void critical(std::string_view text) override { console::error(userText::shown(text)); }
    void exclamation(std::string_view /*text*/) override {}
    void information(std::string_view /*text*/) override {}
    [[nodiscard]] bool question(std::string_view /*text*/) override { return false; }
};

}  // namespace

std::unique_ptr<MessageBox> makeMessageBox() { return std::make_unique<QtMessageBox>(); }

std::unique_ptr<MessageBox> makeMessageBoxWithoutWindows() {
    return std::make_unique<UnseenMessageBox>();
}
