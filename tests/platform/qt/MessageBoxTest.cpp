#include "platform/MessageBox.h"

#include "tests/ui/windows.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QLabel>
#include <QPushButton>

#include <functional>
#include <memory>
#include <optional>
#include <tuple>

namespace {

class Boxes : public testing::Test {
protected:
    Boxes() {
        window.show();
        window.activateWindow();
        (void)QTest::qWaitForWindowActive(&window);
    }

    std::unique_ptr<MessageBox> boxes = makeMessageBox();
    QWidget window;
    int answered = 0;

    /// Presses a button of the box that opens meanwhile.
    static Answers::Seen answer(QMessageBox::StandardButton button,
                                const std::function<void()>& open) {
        const Answers answers({button});
        open();
        EXPECT_TRUE(answers.areGiven());
        return answers.boxes.at(0);
    }
    [[nodiscard]] static std::vector<QMessageBox*> open() {
        std::vector<QMessageBox*> found;
        for (QWidget* const widget : QApplication::topLevelWidgets()) {
            auto* const box = qobject_cast<QMessageBox*>(widget);
            if (box != nullptr && box->isVisible()) found.push_back(box);
        }
        return found;
    }
};

TEST_F(Boxes, HaveTheProgramsTitleTheirIconAndAnOk) {
    const std::pair<std::function<void(std::string_view)>, QMessageBox::Icon> kinds[] = {
        {[&](auto text) { boxes->critical(text); }, QMessageBox::Critical},
        {[&](auto text) { boxes->critical(window.winId(), text, {}); }, QMessageBox::Critical},
        {[&](auto text) { boxes->exclamation(window.winId(), text); }, QMessageBox::Warning},
        {[&](auto text) { boxes->information(window.winId(), text, {}); },
         QMessageBox::Information},
    };
    for (const auto& [show, icon] : kinds) {
        const Answers::Seen seen = answer(QMessageBox::Ok, [&show = show] { show("<b>text</b>"); });
        EXPECT_EQ(seen.title, "Cobweave");
        EXPECT_EQ(seen.text, "<b>text</b>");
        EXPECT_EQ(seen.format, Qt::PlainText);
        EXPECT_EQ(seen.icon, icon);
        EXPECT_EQ(seen.buttons, QMessageBox::Ok);
    }
}

TEST_F(Boxes, AQuestionIsAnsweredByYesAlone) {
    const std::pair<QMessageBox::StandardButton, bool> answers[] = {
        {QMessageBox::Yes, true}, {QMessageBox::No, false}, {QMessageBox::NoButton, false}};
    for (const auto& [button, expected] : answers) {
        std::optional<bool> said;
        const Answers::Seen seen = answer(button, [&] {
            boxes->question(window.winId(), "Sure?", [&](bool yes) { said = yes; });
            EXPECT_FALSE(said);
        });
        EXPECT_EQ(said, expected);
        EXPECT_EQ(seen.icon, QMessageBox::Question);
        EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    }
}

TEST_F(Boxes, BlockTheirWindowAndNoOther) {
    QPushButton own("Own", &window);
    own.show();
    QPushButton other("Other");
    other.show();
    int pressed = 0;
    for (QPushButton* const button : {&own, &other})
        QObject::connect(button, &QPushButton::clicked, button, [&] { ++pressed; });
    boxes->question(window.winId(), "Sure?", {});
    ASSERT_EQ(open().size(), 1U);
    EXPECT_EQ(open().front()->windowModality(), Qt::WindowModal);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(pressed, 0);
    QTest::mouseClick(other.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_EQ(pressed, 1);
    EXPECT_FALSE(window.close() && window.isHidden() && open().empty());
    open().front()->close();
}

TEST_F(Boxes, OfOneWindowComeOneAfterTheOther) {
    std::vector<std::string> order;
    boxes->question(window.winId(), "first", [&](bool /*yes*/) { order.emplace_back("first"); });
    boxes->information(window.winId(), "second", [&] { order.emplace_back("second"); });
    ASSERT_EQ(open().size(), 1U);
    Answers answers({QMessageBox::No, QMessageBox::Ok});
    EXPECT_TRUE(answers.areGiven());
    EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
}

TEST_F(Boxes, OfTwoWindowsAreAnsweredInAnyOrder) {
    QWidget other;
    other.show();
    std::vector<std::string> order;
    boxes->question(window.winId(), "first", [&](bool /*yes*/) { order.emplace_back("first"); });
    boxes->question(other.winId(), "second", [&](bool /*yes*/) { order.emplace_back("second"); });
    ASSERT_EQ(open().size(), 2U);
    for (const QString text : {"first", "second"}) {
        for (QMessageBox* const box : open()) {
            if (box->text() == text)
                QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
}

TEST_F(Boxes, EndWithTheirWindowWithoutAnAnswer) {
    auto other = std::make_unique<QWidget>();
    other->show();
    boxes->question(other->winId(), "Sure?", [&](bool /*yes*/) { ++answered; });
    ASSERT_EQ(open().size(), 1U);
    other.reset();
    EXPECT_TRUE(open().empty());
    EXPECT_EQ(answered, 0);
}

TEST_F(Boxes, ThatNotifyBlockNobodyAndShowTheNewestText) {
    boxes->notify("first");
    boxes->notify("second");
    ASSERT_EQ(open().size(), 1U);
    EXPECT_EQ(open().front()->text(), "second");
    EXPECT_FALSE(open().front()->isModal());
    EXPECT_TRUE(open().front()->testAttribute(Qt::WA_ShowWithoutActivating));
    QTest::mouseClick(open().front()->button(QMessageBox::Ok), Qt::LeftButton);
    EXPECT_TRUE(open().empty());
    boxes->notify("third");
    EXPECT_EQ(open().size(), 1U);
}

TEST_F(Boxes, HaveDrawnIconsAndNoneOnTheirButtons) {
    boxes->question(window.winId(), "Sure?", {});
    ASSERT_EQ(open().size(), 1U);
    const QMessageBox& box = *open().front();
    EXPECT_TRUE(box.button(QMessageBox::Yes)->icon().isNull());
    // As sharp as the screen.
    EXPECT_EQ(box.iconPixmap().devicePixelRatio(), box.devicePixelRatio());
    EXPECT_EQ(box.iconPixmap().deviceIndependentSize(), QSizeF(32, 32));
    open().front()->close();
}

/// The label that shows a box's text.
QLabel* textOf(const QMessageBox& box) { return box.findChild<QLabel*>("qt_msgbox_label"); }

TEST_F(Boxes, ShowAllLinesOfTheirText) {
    std::string wide;
    for (int count = 0; count < 60; ++count)
        wide += "words of a text, ";
    const std::string texts[] = {
        "one line", "one line\r\n\r\nand another behind an empty one",
        "lines\r\n\r\nso many\r\n\r\nthat the icon\r\n\r\nis lower than they are", wide};
    for (const std::string& text : texts) {
        boxes->information(window.winId(), text, {});
        ASSERT_EQ(open().size(), 1U);
        const QLabel& label = *textOf(*open().front());
        const int needed =
            label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
        EXPECT_GE(label.height(), needed) << text.substr(0, 40);
        EXPECT_GE(label.height(), 32);
        open().front()->close();
    }
}

TEST_F(Boxes, AreAlertsWithANamedIconATextAndButtonsForAssistivePrograms) {
    boxes->question(window.winId(), "Sure?", {});
    ASSERT_EQ(open().size(), 1U);
    QMessageBox& box = *open().front();
    const std::tuple<QWidget*, QAccessible::Role, QString> parts[] = {
        {&box, QAccessible::AlertMessage, "Cobweave"},
        {box.findChild<QLabel*>("qt_msgboxex_icon_label"), QAccessible::Graphic, "Question"},
        {textOf(box), QAccessible::StaticText, "Sure?"},
        {box.button(QMessageBox::Yes), QAccessible::Button, "Yes"},
        {box.button(QMessageBox::No), QAccessible::Button, "No"},
    };
    for (const auto& [part, role, name] : parts) {
        ASSERT_NE(part, nullptr) << name.toStdString();
        const QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(part);
        EXPECT_EQ(face->role(), role) << name.toStdString();
        EXPECT_EQ(face->text(QAccessible::Name), name);
    }
    box.close();
}

TEST_F(Boxes, AtTheStartWaitForTheirAnswer) {
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QApplication::exit(); });
        boxes->critical("Wait.");
        ++answered;
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_EQ(answered, 1);
}

TEST(BoxesWithoutWindows, WaitForNobody) {
    const auto boxes = makeMessageBoxWithoutWindows();
    int answered = 0;
    testing::internal::CaptureStderr();
    boxes->critical("bad news");
    boxes->notify("more");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "bad news\nmore\n");
    boxes->critical(1, "nothing", [&] { ++answered; });
    boxes->information(1, "nothing", [&] { ++answered; });
    boxes->exclamation(1, "nothing");
    boxes->question(1, "Sure?", [&](bool yes) { answered += yes ? 10 : 1; });
    EXPECT_EQ(answered, 3);
}

}  // namespace
