#include "platform/Folders.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace {

namespace fs = std::filesystem;

/// The folder for settings while the variable has this value.
fs::path settingsWith(const std::optional<std::string>& value) {
    const Variable given("APPDATA", value);
    return folders::settings();
}

TEST(SettingsFolder, IsWhereTheVariableSaysInAllLetters) {
    for (const fs::path& folder :
         {fs::path("C:\\users\\ann"), fs::path(u8"C:\\users\\\u0416\u0443\u043A \u65E5\u672C"),
          fs::path(u8"Z:\\home\\\U0001F577 \u00E4")}) {
        EXPECT_EQ(settingsWith(folder.string()), folder);
    }
}

TEST(SettingsFolder, IsWhereTheSystemSaysWithoutTheVariable) {
    const fs::path bySystem = settingsWith(std::nullopt);
    EXPECT_TRUE(bySystem.is_absolute());
    EXPECT_EQ(bySystem.filename(), "Roaming");
    EXPECT_EQ(settingsWith("relative"), bySystem);
    EXPECT_EQ(settingsWith(""), bySystem);
}

class NotesPlace : public testing::Test {
protected:
    TemporaryFolder temporary;
    fs::path program = temporary.path() / "program";
    fs::path data = temporary.path() / "data";

    [[nodiscard]] fs::path chosen() const { return folders::notesIn(program, data); }
};

TEST_F(NotesPlace, IsThatOfTheProgramWhereFilesCanBeMadeAndNothingIsLeftThere) {
    for (const fs::path& name : {fs::path("program"), fs::path(u8"\u0416\u0443\u043A \u65E5")}) {
        program = temporary.path() / name;
        fs::create_directory(program);
        EXPECT_EQ(chosen(), program);
        EXPECT_TRUE(fs::is_empty(program));
    }
    EXPECT_FALSE(fs::exists(data));
}

TEST_F(NotesPlace, IsTheUsersWhereNoFileCanBeMade) {
    EXPECT_EQ(chosen(), data);
    std::ofstream(program) << "a file";
    EXPECT_EQ(chosen(), data);
    EXPECT_FALSE(fs::exists(data));
}

}  // namespace
