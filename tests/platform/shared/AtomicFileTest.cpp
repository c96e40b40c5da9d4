#include "platform/AtomicFile.h"

#include "tests/platform/shared/ReplacedFile.h"
#include "tests/support/allBytes.h"
#include "tests/support/system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

TEST_F(ReplacedFile, HasTheNewContentAndNothingOfTheOld) {
    write("a long old content");
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_EQ(read(), "new");
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(ReplacedFile, HoldsAnyBytes) {
    for (const std::string& content : {std::string(), allBytes(), std::string(20'000'000, 'x')}) {
        EXPECT_THAT(replaceFile(path, content), succeeds());
        EXPECT_TRUE(read() == content) << content.size() << " bytes";
    }
}

TEST_F(ReplacedFile, CanStandInTheCurrentFolder) {
    const fs::path before = fs::current_path();
    fs::current_path(folder);
    EXPECT_THAT(replaceFile("file", "new"), succeeds());
    fs::current_path(before);
    EXPECT_EQ(read(), "new");
}

TEST_F(ReplacedFile, LeavesNoDescriptorsOpen) {
    // The system may keep some from the first time on.
    EXPECT_THAT(replaceFile(path, "first"), succeeds());
    EXPECT_THAT(replaceFile(folder, "first"), fails());
    const std::size_t before = testSystem::countDescriptors();
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_THAT(replaceFile(folder, "new"), fails());
    EXPECT_EQ(testSystem::countDescriptors(), before);
}

TEST_F(ReplacedFile, IsMadeWithItsFolders) {
    path = folder / "deep" / "deeper" / "file";
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_EQ(read(), "new");
}

TEST_F(ReplacedFile, MayBeReplacedAgainAndAgain) {
    for (const char* const content : {"one", "two", "three"}) {
        EXPECT_THAT(replaceFile(path, content), succeeds());
        EXPECT_EQ(read(), content);
    }
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(ReplacedFile, MayHaveANameBeyondAnyCodePage) {
    path = folder / fs::path(u8"\u00E4\u0416\u65E5 \U0001F577");
    EXPECT_THAT(replaceFile(path, "new"), succeeds());
    EXPECT_EQ(read(), "new");
}

TEST_F(ReplacedFile, IsNotAFolder) {
    EXPECT_THAT(replaceFile(folder, "new"), fails());
    expectUntouched();
}

TEST_F(ReplacedFile, IsNotInAFile) {
    EXPECT_THAT(replaceFile(path / "file", "new"), fails());
    EXPECT_THAT(replaceFile(path / "deeper" / "file", "new"), fails());
    expectUntouched();
}

TEST_F(ReplacedFile, HasNoNameThatTheSystemDoesNotTake) {
    EXPECT_THAT(replaceFile(folder / std::string(256, 'x'), "new"), fails());
    expectUntouched();
}

}  // namespace
