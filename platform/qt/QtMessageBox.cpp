#include "platform/MessageBox.h"

#include "platform/Console.h"
#include "platform/qt/text.h"
#include "platform/qt/waitingBoxes.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QStyle>
#include <QWidget>

#include <string>

namespace {

/// The icon in a word, for those who cannot see it.
QString nameOf(QMessageBox::Icon icon) {
    switch (icon) {
        case QMessageBox::Information: return "Information";
        case QMessageBox::Warning: return "Warning";
        case QMessageBox::Critical: return "Error";
        case QMessageBox::Question: return "Question";
        case QMessageBox::NoIcon: break;
    }
    return {};
}

void fill(QMessageBox& box, QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
          std::string_view text) {
    box.setIcon(icon);
    if (auto* const label = box.findChild<QLabel*>("qt_msgboxex_icon_label"))
        label->setAccessibleName(nameOf(icon));
    box.setStandardButtons(buttons);
    box.setWindowTitle(QApplication::applicationName());
    box.setTextFormat(Qt::PlainText);
    box.setText(toQString(text));
    // A text of one line is beside the middle of the icon. The row and not the label has the icon's
    // height: a label with a minimum of its own would be cut to that, however long its text is.
    if (auto* const label = box.findChild<QLabel*>("qt_msgbox_label"))
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    if (auto* const rows = qobject_cast<QGridLayout*>(box.layout()))
        rows->setRowMinimumHeight(0, box.style()->pixelMetric(QStyle::PM_MessageBoxIconSize));
}

class QtMessageBox final : public MessageBox {
public:
    ~QtMessageBox() override { delete notice; }

    void critical(std::string_view text) override {
        QMessageBox box;
        fill(box, QMessageBox::Critical, QMessageBox::Ok, text);
        // It blocks no window, since it has none.
        box.setWindowModality(Qt::WindowModal);
        box.exec();
    }

    void notify(std::string_view text) override {
        if (notice == nullptr) {
            notice = new QMessageBox;
            notice->setWindowModality(Qt::NonModal);
            notice->setAttribute(Qt::WA_DeleteOnClose);
            // Whoever is typing elsewhere would press its button without having read it.
            notice->setAttribute(Qt::WA_ShowWithoutActivating);
        }
        fill(*notice, QMessageBox::Warning, QMessageBox::Ok, text);
        notice->show();
    }

    void critical(WindowHandle window, std::string_view text, Event<> answered) override {
        ask(window, QMessageBox::Critical, QMessageBox::Ok, text,
            [answered](bool /*yes*/) { answered(); });
    }
    void exclamation(WindowHandle window, std::string_view text) override {
        ask(window, QMessageBox::Warning, QMessageBox::Ok, text, {});
    }
    void information(WindowHandle window, std::string_view text, Event<> answered) override {
        ask(window, QMessageBox::Information, QMessageBox::Ok, text,
            [answered](bool /*yes*/) { answered(); });
    }
    void question(WindowHandle window, std::string_view text, Event<bool> answered) override {
        ask(window, QMessageBox::Question, QMessageBox::Yes | QMessageBox::No, text, answered);
    }

private:
    static void ask(WindowHandle window, QMessageBox::Icon icon,
                    QMessageBox::StandardButtons buttons, std::string_view text,
                    const Event<bool>& answered) {
        QWidget* const owner = QWidget::find(static_cast<WId>(window));
        if (QMessageBox* const open = waitingBoxes::raiseThatOf(owner)) {
            QObject::connect(open, &QMessageBox::finished, owner, [=, text = std::string(text)] {
                ask(window, icon, buttons, text, answered);
            });
            return;
        }
        // The box belongs to the window, with which it ends.
        auto* const box = new QMessageBox(owner);
        fill(*box, icon, buttons, text);
        box->setWindowModality(Qt::WindowModal);
        box->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(box, &QMessageBox::finished, box,
                         [answered](int answer) { answered(answer == QMessageBox::Yes); });
        box->show();
    }

    QPointer<QMessageBox> notice;
};

class UnseenMessageBox final : public MessageBox {
public:
    void critical(std::string_view text) override { console::error(userText::shown(text)); }
    void notify(std::string_view text) override { console::error(userText::shown(text)); }
    void critical(WindowHandle /*window*/, std::string_view /*text*/, Event<> answered) override {
        answered();
    }
    void exclamation(WindowHandle /*window*/, std::string_view /*text*/) override {}
    void information(WindowHandle /*window*/, std::string_view /*text*/,
                     Event<> answered) override {
        answered();
    }
    void question(WindowHandle /*window*/, std::string_view /*text*/,
                  Event<bool> answered) override {
        answered(false);
    }
};

}  // namespace

std::unique_ptr<MessageBox> makeMessageBox() { return std::make_unique<QtMessageBox>(); }

std::unique_ptr<MessageBox> makeMessageBoxWithoutWindows() {
    return std::make_unique<UnseenMessageBox>();
}
