#include "desktop/mdlFunctions.h"

#include "platform/Registry.h"
#include "tests/support/FakeDesktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using mdlFunctions::Base256ToInteger;
using mdlFunctions::CodesToText;
using mdlFunctions::StatusCodeFromName;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(Base256ToInteger, IsZeroForFewerThanThreeCharactersWhateverTheyAre) {
    EXPECT_EQ(Base256ToInteger(""sv), 0);
    EXPECT_EQ(Base256ToInteger("\xFF"sv), 0);
    EXPECT_EQ(Base256ToInteger("\xFF\xFF"sv), 0);
}

TEST(Base256ToInteger, ReadsTheMostSignificantByteFirst) {
    EXPECT_EQ(Base256ToInteger("\0\x07\x47"sv), 1863);
    EXPECT_EQ(Base256ToInteger("\0\0\xFF"sv), 255);
    EXPECT_EQ(Base256ToInteger("\0\0\0"sv), 0);
}

TEST(Base256ToInteger, ReadsThreeCharactersAndNoMore) {
    EXPECT_EQ(Base256ToInteger("\0\0\x01\xFF\xFF"sv), 1);
}

TEST(Base256ToInteger, HasACeiling) {
    EXPECT_EQ(Base256ToInteger("\0\x7F\xFF"sv), 32767);
    EXPECT_EQ(Base256ToInteger("\0\x80\0"sv), std::nullopt);
    EXPECT_EQ(Base256ToInteger("\0\xFF\xFF"sv), std::nullopt);
    EXPECT_EQ(Base256ToInteger("\x01\0\0"sv), std::nullopt);
    EXPECT_EQ(Base256ToInteger("\xFF\xFF\xFF"sv), std::nullopt);
}

struct CodeList {
    const char* name;
    std::string_view list;
    std::string_view text;
};

void PrintTo(const CodeList& codes, std::ostream* stream) { *stream << codes.list; }

class Codes : public testing::TestWithParam<CodeList> {};

TEST_P(Codes, GiveTheirCharacters) {
    EXPECT_EQ(CodesToText(GetParam().list, [] {}), GetParam().text);
}

constexpr CodeList codeLists[] = {
    {"Nothing", ""sv, ""sv},
    {"TwoNuls", "0 0"sv, "\0\0"sv},
    {"Decimal", "65 10 255"sv, "A\n\xFF"sv},
    {"LeadingZeros", "065 00"sv, "A\0"sv},
    {"Hexadecimal", "H41 H4f HFF"sv, "AO\xFF"sv},
    {"Mixed", "41 H41"sv, ")A"sv},
};

INSTANTIATE_TEST_SUITE_P(Table, Codes, testing::ValuesIn(codeLists),
                         [](const auto& info) { return info.param.name; });

class NoCodes : public testing::TestWithParam<const char*> {};

TEST_P(NoCodes, GiveNothing) {
    EXPECT_EQ(CodesToText(GetParam(), [] {}), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Table, NoCodes,
                         testing::Values("1  2", " 1", "1 ", " ", "x", "4x", "h41", "H", "HG", "-1",
                                         "+1", "256", "H100", "1.5", "0x41", "99999999999"));

TEST(CodesToText, GivesTheLoopATurnAfterEachItem) {
    int turns = 0;
    EXPECT_EQ(CodesToText("65 66 67", [&] { ++turns; }), "ABC");
    EXPECT_EQ(turns, 3);
}

TEST(CodesToText, GivesTurnsUpToTheItemThatIsNone) {
    int turns = 0;
    EXPECT_EQ(CodesToText("65 x 67", [&] { ++turns; }), std::nullopt);
    EXPECT_EQ(turns, 1);
}

TEST(CodesToText, GivesNoTurnForAnEmptyList) {
    int turns = 0;
    (void)CodesToText("", [&] { ++turns; });
    EXPECT_EQ(turns, 0);
}

TEST(CodesToText, MayRunAgainWhileItRuns) {
    std::string inner;
    const auto outer = CodesToText("65 66", [&] { inner += *CodesToText("97 98", [] {}); });
    EXPECT_EQ(outer, "AB");
    EXPECT_EQ(inner, "abab");
}

TEST(SetTopMost, PutsTheWindowAboveAllOthersWhenEnabled) {
    FakeOwnWindows windows;
    mdlFunctions::SetTopMost("Enabled", 7, windows);
    EXPECT_THAT(windows.topMost, ElementsAre(Pair(7, true)));
}

TEST(SetTopMost, PutsTheWindowBackWhenDisabled) {
    FakeOwnWindows windows;
    mdlFunctions::SetTopMost("Disabled", 7, windows);
    EXPECT_THAT(windows.topMost, ElementsAre(Pair(7, false)));
}

TEST(SetTopMost, DoesNothingForAnyOtherWord) {
    FakeOwnWindows windows;
    for (const char* const word : {"", "enabled", "DISABLED", "Enabled ", "True"})
        mdlFunctions::SetTopMost(word, 7, windows);
    EXPECT_THAT(windows.topMost, IsEmpty());
}

class Opacity : public testing::TestWithParam<std::pair<std::int16_t, int>> {};

TEST_P(Opacity, IsTheWholePartOnTheScaleOf255AndIsLeftWithTheCaller) {
    FakeOwnWindows windows;
    std::int16_t percentage = GetParam().first;
    mdlFunctions::SetWindowOpacity(7, percentage, windows);
    EXPECT_EQ(percentage, GetParam().second);
    EXPECT_THAT(windows.alphas, ElementsAre(Pair(7, GetParam().second)));
}

INSTANTIATE_TEST_SUITE_P(Percentages, Opacity,
                         testing::Values(std::pair{100, 254}, std::pair{90, 229},
                                         std::pair{50, 127}, std::pair{10, 25}, std::pair{1, 2},
                                         std::pair{0, 0}));

TEST(SetWindowOpacity, LeavesAWindowWhoseOpacityDoesNotFit) {
    FakeOwnWindows windows;
    std::int16_t percentage = 101;
    mdlFunctions::SetWindowOpacity(7, percentage, windows);
    EXPECT_EQ(percentage, 257);
    percentage = -1;
    mdlFunctions::SetWindowOpacity(7, percentage, windows);
    EXPECT_THAT(windows.alphas, IsEmpty());
}

TEST(SetWindowOpacity, LeavesAPercentageThatWouldWrap) {
    FakeOwnWindows windows;
    std::int16_t percentage = 32767;
    mdlFunctions::SetWindowOpacity(7, percentage, windows);
    EXPECT_EQ(percentage, 32767);
    EXPECT_THAT(windows.alphas, IsEmpty());
}

class StatusName : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(StatusName, HasItsCode) {
    EXPECT_EQ(StatusCodeFromName(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Names, StatusName,
    testing::Values(std::pair{"Online", "NLN"}, std::pair{"Away", "AWY"}, std::pair{"Busy", "BSY"},
                    std::pair{"Be Right Back", "BRB"}, std::pair{"On The Phone", "PHN"},
                    std::pair{"Out To Lunch", "LUN"}, std::pair{"Appear Offline", "HDN"}));

INSTANTIATE_TEST_SUITE_P(OtherWords, StatusName,
                         testing::Values(std::pair{"", "NLN"}, std::pair{"online", "NLN"},
                                         std::pair{"away", "NLN"}, std::pair{"BUSY", "NLN"},
                                         std::pair{"Busy ", "NLN"}, std::pair{"BSY", "NLN"}));

class AskedRegistry final : public Registry {
public:
    bool answer = false;
    std::vector<std::string> asked;

    [[nodiscard]] bool currentUserHasKey(std::string_view path) override {
        asked.emplace_back(path);
        return answer;
    }
};

TEST(MessengerPlusPresent, AsksForTheKeyOfTheAddOnEachTime) {
    AskedRegistry registry;
    EXPECT_FALSE(mdlFunctions::MessengerPlusPresent(registry));
    registry.answer = true;
    EXPECT_TRUE(mdlFunctions::MessengerPlusPresent(registry));
    EXPECT_THAT(registry.asked,
                ElementsAre("Software\\Patchou\\MsgPlus2", "Software\\Patchou\\MsgPlus2"));
}

}  // namespace
