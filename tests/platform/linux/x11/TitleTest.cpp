#include "base/codePage.h"
#include "tests/platform/linux/x11/Desktop.h"

#include <string>

namespace {

using looks::ofProcess;

class Title : public Desktop {
protected:
    Title() { start(); }
    /// Writes it, and waits until all of it is there.
    void write(const std::string& text) {
        windows->SetWindowText(window, text);
        const auto before = written;
        // The one that is written last.
        written = other.bytes(window, "WM_ICON_NAME");
        ASSERT_TRUE(becomesTrue([&] {
            written = other.bytes(window, "WM_ICON_NAME");
            return written != before;
        })) << text.substr(0, 80);
    }
    [[nodiscard]] std::string title() { return other.bytes(window, "_NET_WM_NAME").value_or("?"); }

    xcb_window_t window = open(ofProcess("MSN Messenger"));

private:
    std::optional<std::string> written;
};

TEST_F(Title, IsWrittenInTheOldAndTheNewWay) {
    write("Hello");
    EXPECT_EQ(title(), "Hello");
    EXPECT_EQ(other.typeOf(window, "_NET_WM_NAME"), "UTF8_STRING");
    EXPECT_EQ(other.bytes(window, "WM_NAME"), "Hello");
    EXPECT_EQ(other.typeOf(window, "WM_NAME"), "STRING");
    EXPECT_EQ(other.bytes(window, "_NET_WM_ICON_NAME"), "Hello");
}

TEST_F(Title, IsInTheOldWayLatin1WhereThatCanSayIt) {
    write("caf\xE9");
    EXPECT_EQ(title(), "caf\xC3\xA9");
    EXPECT_EQ(other.bytes(window, "WM_NAME"), "caf\xE9");
    EXPECT_EQ(other.typeOf(window, "WM_NAME"), "STRING");
    write("5 \x80");
    EXPECT_EQ(title(), "5 \xE2\x82\xAC");
    EXPECT_EQ(other.bytes(window, "WM_NAME"), "5 \xE2\x82\xAC");
    EXPECT_EQ(other.typeOf(window, "WM_NAME"), "UTF8_STRING");
}

TEST_F(Title, IsOfAnyScript) {
    write("Zo\u00EB");
    EXPECT_EQ(title(), "Zo\u00EB");
    EXPECT_EQ(other.bytes(window, "WM_NAME"), "Zo\xEB");
    EXPECT_EQ(other.typeOf(window, "WM_NAME"), "STRING");
    const std::string others = "\u041F\u0440\u0438 \u05E9\u05DC \u4F60\u597D \U0001F600";
    write(others);
    EXPECT_EQ(title(), others);
    EXPECT_EQ(other.bytes(window, "WM_NAME"), others);
    EXPECT_EQ(other.typeOf(window, "WM_NAME"), "UTF8_STRING");
}

TEST_F(Title, MayBeEmpty) {
    write("x");
    write("");
    EXPECT_EQ(title(), "");
    EXPECT_EQ(other.bytes(window, "WM_NAME"), "");
}

TEST_F(Title, MayHoldEveryByteButZero) {
    std::string all;
    for (int code = 1; code < 256; ++code)
        all += static_cast<char>(code);
    write(all);
    EXPECT_EQ(title(), codePage::toUtf8(all));
}

TEST_F(Title, EndsAtAZeroByte) {
    write(std::string("before\0after", 12));
    EXPECT_EQ(title(), "before");
    EXPECT_EQ(other.bytes(window, "WM_NAME"), "before");
}

TEST_F(Title, IsCutBetweenCharactersAt4096Bytes) {
    write(std::string(100'000, 'x'));
    EXPECT_EQ(title(), std::string(4096, 'x'));
    // A character of three bytes.
    write(std::string(100'000, '\x80'));
    std::string euros;
    for (int count = 0; count < 4096 / 3; ++count)
        euros += "\xE2\x82\xAC";
    EXPECT_EQ(title(), euros);
    EXPECT_EQ(other.bytes(window, "WM_NAME"), euros);
}

TEST_F(Title, OfAWindowThatIsGoneIsWrittenToNobody) {
    other.close(window);
    windows->SetWindowText(window, "x");
    windows->SetWindowText(0, "x");
    windows->SetWindowText(other.root() + 12'345, "x");
    const auto next = open(ofProcess("MSN Messenger"));
    EXPECT_TRUE(finds(next));
}

TEST_F(Title, OfAWindowThatOpensAfterwardsIsFreshAgain) {
    write("Mine");
    other.close(window);
    EXPECT_TRUE(finds(0));
    window = open(ofProcess("MSN Messenger"));
    EXPECT_TRUE(finds(window));
    EXPECT_EQ(title(), "MSN Messenger");
}

class Closing : public Desktop {
protected:
    Closing() { start(); }
};

TEST_F(Closing, IsAskedOfAWindowThatUnderstands) {
    StandIn::Look look = ofProcess("x");
    look.isClosable = true;
    const auto window = open(look);
    ASSERT_TRUE(finds(window));
    windows->requestMessengerEnd();
    std::optional<std::uint32_t> asked;
    EXPECT_TRUE(comesTrue([&] {
        asked = other.message("WM_PROTOCOLS");
        return asked.has_value();
    }));
    EXPECT_EQ(asked, other.atom("WM_DELETE_WINDOW"));
}

TEST_F(Closing, IsNotForcedOnAWindowThatDoesNotUnderstand) {
    const auto window = open(ofProcess("x"));
    EXPECT_TRUE(finds(window));
    windows->requestMessengerEnd();
    EXPECT_TRUE(stays(window));
    EXPECT_EQ(other.message("WM_PROTOCOLS"), std::nullopt);
    EXPECT_EQ(other.geometry(window).width, 200);
}

TEST_F(Closing, OfAWindowThatIsGoneIsNothing) {
    const auto window = open(ofProcess("x"));
    EXPECT_TRUE(finds(window));
    other.close(window);
    windows->requestMessengerEnd();
    EXPECT_TRUE(finds(0));
    windows->requestMessengerEnd();
}

}  // namespace
