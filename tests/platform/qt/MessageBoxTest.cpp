#include "platform/MessageBox.h"

#include "tests/ui/windows.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

class Boxes : public testing::Test {
protected:
    std::unique_ptr<MessageBox> boxes = makeMessageBox();

    /// Presses a button of the box that opens meanwhile.
    static Answers::Seen answer(QMessageBox::StandardButton button,
                                const std::function<void()>& open) {
        const Answers answers({button});
        open();
        return answers.boxes.at(0);
    }
};

TEST_F(Boxes, HaveTheProgramsTitleTheirIconAndAnOk) {
    const std::pair<std::function<void(std::string_view)>, QMessageBox::Icon> kinds[] = {
        {[&](auto text) { boxes->critical(text); }, QMessageBox::Critical},
        {[&](auto text) { boxes->exclamation(text); }, QMessageBox::Warning},
        {[&](auto text) { boxes->information(text); }, QMessageBox::Information},
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
        bool said = !expected;
        const Answers::Seen seen = answer(button, [&] { said = boxes->question("Sure?"); });
        EXPECT_EQ(said, expected);
        EXPECT_EQ(seen.icon, QMessageBox::Question);
        EXPECT_EQ(seen.buttons, QMessageBox::Yes | QMessageBox::No);
    }
}

TEST_F(Boxes, TellThatTheProgramEndsInsteadOfAnAnswer) {
    (void)answer(QMessageBox::NoButton, [&] { boxes->information("Closed."); });
    EXPECT_FALSE(boxes->isEnding());
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QApplication::exit(); });
        boxes->information("Wait.");
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(boxes->isEnding());
}

TEST(BoxesWithoutWindows, WaitForNobody) {
    const auto boxes = makeMessageBoxWithoutWindows();
    testing::internal::CaptureStderr();
    boxes->critical("bad news");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "bad news\n");
    boxes->information("nothing");
    boxes->exclamation("nothing");
    EXPECT_FALSE(boxes->question("Sure?"));
}

}  // namespace
