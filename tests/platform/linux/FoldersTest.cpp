#include "platform/linux/Folders.h"

#include "platform/Folders.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <tuple>

#include <pwd.h>
#include <unistd.h>

namespace {

using std::filesystem::path;

void makeNotes(const path& folder) {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "notes.cwv") << "a note\r\n\r\n";
}

void allow(const path& which, unsigned bits) {
    std::filesystem::permissions(which, static_cast<std::filesystem::perms>(bits));
}

class NotesPlace : public testing::Test {
protected:
    TemporaryFolder temporary;
    path program = temporary.path() / "program";
    path data = temporary.path() / "data";

    NotesPlace() {
        allow(temporary.path(), 0755);
        std::filesystem::create_directory(program);
    }
    ~NotesPlace() override { allow(program, 0700); }

    /// Makes the user whom permission bits bind the owner of the program's folder.
    void giveAway() const {
        if (geteuid() == 0) (void)!chown(program.c_str(), nobody, nobody);
    }
    [[nodiscard]] path chosen() const {
        // Through a file, as the choice is made in another process.
        const path answer = temporary.path() / "answer";
        std::ofstream(answer).close();
        allow(answer, 0666);
        EXPECT_TRUE(passesForked([&] {
            becomeNobody();
            std::ofstream(answer) << folders::notesIn(program, data).string();
        }));
        std::string name;
        std::getline(std::ifstream(answer), name);
        return path(name).filename();
    }
};

struct Place {
    const char* name;
    unsigned programRights;
    bool programHasNotes;
    bool dataHasNotes;
    const char* expected;
};

void PrintTo(const Place& place, std::ostream* stream) { *stream << place.name; }

class NotesFolder : public NotesPlace, public testing::WithParamInterface<Place> {};

TEST_P(NotesFolder, IsThatOfTheProgramIfItCanBeWritten) {
    if (GetParam().programHasNotes) makeNotes(program);
    if (GetParam().dataHasNotes) makeNotes(data);
    giveAway();
    allow(program, GetParam().programRights);
    EXPECT_EQ(chosen(), GetParam().expected);
}

constexpr unsigned writable = 0700;
constexpr unsigned readOnly = 0500;

const Place places[] = {
    {"ThatOfTheProgram", writable, false, false, "program"},
    {"ThatOfTheProgramThoughTheUsersHasNotes", writable, false, true, "program"},
    {"ThatOfTheUserWhenTheOtherIsReadOnly", readOnly, false, false, "data"},
    {"ThatOfTheUserWhenTheOtherIsReadOnlyAndHasNotes", readOnly, true, false, "data"},
    {"ThatOfTheUserWhenTheOtherCannotBeReached", 0, false, false, "data"},
    {"ThatOfTheUserWhenTheOtherCannotBeListed", 0300, false, false, "data"},
};

INSTANTIATE_TEST_SUITE_P(Table, NotesFolder, testing::ValuesIn(places),
                         [](const auto& info) { return info.param.name; });

TEST_F(NotesPlace, IsTheUsersWhenThatOfTheProgramIsNotKnown) {
    EXPECT_TRUE(passesForked([this] {
        makeNotes(program);
        std::filesystem::current_path(program);
        EXPECT_EQ(folders::notesIn("", data), data);
    }));
}

TEST_F(NotesPlace, IsTheUsersWhenThatOfTheProgramIsGone) {
    EXPECT_EQ(folders::notesIn(program / "gone", data), data);
}

TEST_F(NotesPlace, IsNotMadeByAskingForIt) {
    std::filesystem::remove(program);
    EXPECT_EQ(folders::notesIn(program, data), data);
    EXPECT_FALSE(std::filesystem::exists(data));
    std::filesystem::create_directory(program);
}

/// A folder of the user's, which a variable of the environment may give.
struct UserFolder {
    const char* name;
    path (*folder)();
    const char* variable;
    /// Where it is in what the variable gives, and in the home folder.
    std::string inGiven;
    std::string inHome;
};

struct Environment {
    const char* name;
    std::optional<std::string> given;
    std::optional<std::string> home;
    /// The folder that counts, and whether it is the one that the variable gives.
    std::string counts;
    bool isGiven = false;
};

void PrintTo(const UserFolder& folder, std::ostream* stream) { *stream << folder.name; }
void PrintTo(const Environment& environment, std::ostream* stream) { *stream << environment.name; }

path homeOfUser() { return getpwuid(getuid())->pw_dir; }

class FolderOfTheUser : public testing::TestWithParam<std::tuple<UserFolder, Environment>> {};

TEST_P(FolderOfTheUser, IsFoundFromTheEnvironment) {
    const auto& [folder, environment] = GetParam();
    const Variable given(folder.variable, environment.given);
    const Variable home("HOME", environment.home);
    EXPECT_EQ(folder.folder(),
              environment.counts + (environment.isGiven ? folder.inGiven : folder.inHome));
}

const UserFolder userFolders[] = {
    {"Settings", folders::settings, "XDG_CONFIG_HOME", "", "/.config"},
    {"WinePrefix", folders::winePrefix, "WINEPREFIX", "", "/.wine"},
    {"Data", folders::userData, "XDG_DATA_HOME", "/cobweave", "/.local/share/cobweave"},
};

const Environment environments[] = {
    {"GivenItself", "/given", "/home/ann", "/given", true},
    {"FromHome", std::nullopt, "/home/ann", "/home/ann"},
    {"FromHomeWhenEmpty", "", "/home/ann", "/home/ann"},
    {"FromHomeWhenRelative", "given", "/home/ann", "/home/ann"},
    {"OfTheUserWithoutHome", std::nullopt, std::nullopt, homeOfUser()},
    {"OfTheUserWithARelativeHome", std::nullopt, "ann", homeOfUser()},
};

INSTANTIATE_TEST_SUITE_P(Table, FolderOfTheUser,
                         testing::Combine(testing::ValuesIn(userFolders),
                                          testing::ValuesIn(environments)),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).name) +
                                    std::get<1>(info.param).name;
                         });

TEST(MovieFolder, IsTheProgramsOwnWhereTheFileIsThere) {
    const TemporaryFolder prefix;
    const auto program = prefix.path() / "bin";
    std::filesystem::create_directory(program);
    std::ofstream(program / "button.swf") << "movie";
    EXPECT_EQ(folders::movieFor(program, "button.swf"), program / "button.swf");
    EXPECT_EQ(folders::movieFor(program, "about.swf"),
              prefix.path() / "share" / "cobweave" / "about.swf");
}

TEST(ProgramFolder, IsSharedWhereTheMoviesAreInTheFolderForData) {
    const TemporaryFolder prefix;
    const auto program = prefix.path() / "bin";
    const auto data = prefix.path() / "share" / "cobweave";
    std::filesystem::create_directories(program);
    std::filesystem::create_directories(data);
    EXPECT_FALSE(folders::isShared(program));
    std::ofstream(data / "button.swf") << "movie";
    EXPECT_TRUE(folders::isShared(program));
    std::ofstream(program / "button.swf") << "movie";
    EXPECT_FALSE(folders::isShared(program));
}

}  // namespace
