#include "base/userText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;

struct Typed {
    const char* name;
    std::string_view utf8;
    std::string_view bytes;
};

void PrintTo(const Typed& typed, std::ostream* stream) { *stream << typed.name; }

class TypedText : public testing::TestWithParam<Typed> {};

TEST_P(TypedText, IsKeptAndComesBackAsItWasTyped) {
    EXPECT_EQ(userText::kept(GetParam().utf8), GetParam().bytes);
    EXPECT_EQ(userText::shown(GetParam().bytes), GetParam().utf8);
}

constexpr Typed typed[] = {
    {"Nothing", ""sv, ""sv},
    {"English", "Ann\r\n\x01"sv, "Ann\r\n\x01"sv},
    {"LatinInTheCodePage", "Zo\u00EB \u20AC"sv, "Zo\xEB \x80"sv},
    {"LatinOutsideOfIt", "\u0159"sv, "\u0159"sv},
    // These two letters are the bytes of another one in UTF-8.
    {"LatinThatWouldReadAsUtf8", "\u00C3\u00A9"sv, "\u00C3\u00A9"sv},
    {"Cyrillic", "\u041F\u0440\u0438\u0432\u0435\u0442"sv,
     "\u041F\u0440\u0438\u0432\u0435\u0442"sv},
    {"Arabic", "\u0645\u0631\u062D\u0628\u0627"sv, "\u0645\u0631\u062D\u0628\u0627"sv},
    {"Hebrew", "\u05E9\u05DC\u05D5\u05DD"sv, "\u05E9\u05DC\u05D5\u05DD"sv},
    {"Chinese", "\u4F60\u597D"sv, "\u4F60\u597D"sv},
    {"Emoji", "\U0001F600"sv, "\U0001F600"sv},
    {"Mixed", "Zo\u00EB \U0001F600"sv, "Zo\u00EB \U0001F600"sv},
};

INSTANTIATE_TEST_SUITE_P(Scripts, TypedText, testing::ValuesIn(typed),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(UserText, ShowsUtf8ThatTheCodePageCouldHoldToo) {
    EXPECT_EQ(userText::shown("Zo\u00EB"), "Zo\u00EB");
}

TEST(UserText, ShowsWhatIsNoUtf8InTheCodePage) {
    EXPECT_EQ(userText::shown("\xE9"), "\u00E9");
    EXPECT_EQ(userText::shown("\xC3"), "\u00C3");
    // One such byte makes all of it code page.
    EXPECT_EQ(userText::shown("\u00E9 \xE9"), "\u00C3\u00A9 \u00E9");
    EXPECT_EQ(userText::shown("\xED\xA0\x80"), "\u00ED\u00A0\u20AC");
}

TEST(UserText, HasABeginningThatCutsNoCharacter) {
    EXPECT_EQ(userText::beginning("abc", 5), "abc");
    EXPECT_EQ(userText::beginning("abc", 2), "ab");
    EXPECT_EQ(userText::beginning("a\U0001F600", 4), "a");
    EXPECT_EQ(userText::beginning("a\U0001F600", 5), "a\U0001F600");
    const std::string codePage(20, '\x80');
    EXPECT_EQ(userText::beginning(codePage, 10), codePage.substr(0, 10));
}

}  // namespace
