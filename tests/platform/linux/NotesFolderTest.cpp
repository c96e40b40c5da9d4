#include "platform/Folders.h"

#include "platform/linux/Folders.h"
#include "tests/platform/linux/forked.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include <unistd.h>

namespace {

using std::filesystem::path;

/// Notes that were changed so many seconds after some moment.
using Changed = std::optional<int>;

void makeNotes(const path& folder, int changed) {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "notes.cwv") << "a note\r\n\r\n";
    static const auto start = std::filesystem::file_time_type::clock::now();
    std::filesystem::last_write_time(folder / "notes.cwv", start + std::chrono::seconds{changed});
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
    Changed programNotes;
    Changed dataNotes;
    const char* expected;
};

void PrintTo(const Place& place, std::ostream* stream) { *stream << place.name; }

class NotesFolder : public NotesPlace, public testing::WithParamInterface<Place> {};

TEST_P(NotesFolder, IsThatOfTheProgramIfItCanBeWritten) {
    if (GetParam().programNotes) makeNotes(program, *GetParam().programNotes);
    if (GetParam().dataNotes) makeNotes(data, *GetParam().dataNotes);
    giveAway();
    allow(program, GetParam().programRights);
    EXPECT_EQ(chosen(), GetParam().expected);
}

constexpr unsigned writable = 0700;
constexpr unsigned readOnly = 0500;

const Place places[] = {
    {"ThatOfTheProgram", writable, {}, {}, "program"},
    {"ThatOfTheProgramThoughTheUsersHasNotes", writable, {}, 0, "program"},
    {"ThatOfTheUserWhenTheOtherIsReadOnly", readOnly, {}, {}, "data"},
    {"ThatOfTheUserWhenTheOtherIsReadOnlyAndHasNotes", readOnly, 0, {}, "data"},
    {"ThatOfTheUserWhenTheOtherCannotBeReached", 0, {}, {}, "data"},
    {"ThatOfTheUserWhenTheOtherCannotBeListed", 0300, {}, {}, "data"},
};

INSTANTIATE_TEST_SUITE_P(Table, NotesFolder, testing::ValuesIn(places),
                         [](const auto& info) { return info.param.name; });

TEST_F(NotesPlace, IsTheUsersWhenThatOfTheProgramIsNotKnown) {
    EXPECT_TRUE(passesForked([this] {
        makeNotes(program, 0);
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

TEST_F(NotesPlace, IsThatOfThisProgram) {
    const Variable special("XDG_DATA_HOME", data);
    EXPECT_EQ(folders::notes(), std::filesystem::canonical("/proc/self/exe").parent_path());
}

struct DataFolder {
    const char* name;
    std::optional<std::string> special;
    /// From the folder that stands for the root.
    const char* expected;
};

void PrintTo(const DataFolder& folder, std::ostream* stream) { *stream << folder.name; }

class UsersNotesFolder : public testing::TestWithParam<DataFolder> {};

TEST_P(UsersNotesFolder, IsFoundFromTheEnvironment) {
    const TemporaryFolder root;
    std::optional<std::string> value = GetParam().special;
    if (value && value->starts_with('/')) value = root.path().string() + *value;
    const Variable special("XDG_DATA_HOME", value);
    const Variable home("HOME", root.path() / "ann");
    EXPECT_EQ(folders::userData(), root.path() / GetParam().expected);
}

const DataFolder dataFolders[] = {
    {"GivenItself", "/given", "given/cobweave"},
    {"FromHome", std::nullopt, "ann/.local/share/cobweave"},
    {"FromHomeWhenEmpty", "", "ann/.local/share/cobweave"},
    {"FromHomeWhenRelative", "given", "ann/.local/share/cobweave"},
};

INSTANTIATE_TEST_SUITE_P(Table, UsersNotesFolder, testing::ValuesIn(dataFolders),
                         [](const auto& info) { return info.param.name; });

}  // namespace
