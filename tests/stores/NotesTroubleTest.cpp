#include "stores/NotesStore.h"

#include "tests/stores/NotesFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

/// Notes where something else is in their place.
class NotesInTrouble : public NotesFile {
protected:
    /// The one report names the file, says why in the system's words, and what to do.
    [[nodiscard]] auto saysWhatToDo() const {
        return ElementsAre(AllOf(HasSubstr(path.string() + ": "), HasSubstr("writable")));
    }
};

TEST_F(NotesInTrouble, AreReportedWhateverTheFolderIsCalled) {
    const fs::path file = temporary.path() / "file";
    std::ofstream(file) << "a file";
    path = file / fs::path(u8"caf\u00E9 \u0416") / "notes.cwv";
    store().savenotes();
    EXPECT_THAT(reported, saysWhatToDo());
    EXPECT_THAT(reported, ElementsAre(HasSubstr("caf\xC3\xA9 \xD0\x96")));
}

TEST_F(NotesInTrouble, AreAnEmptyListWhenAFolderHasTheirName) {
    fs::create_directory(path);
    NotesStore notes = store();
    notes.load();
    EXPECT_THAT(notes.list(), IsEmpty());
    notes.savenotes();
    EXPECT_THAT(reported, ElementsAre(unread()));
    EXPECT_TRUE(fs::is_empty(path));
}

TEST_F(NotesInTrouble, AreReportedWhenAFolderHasTakenTheirName) {
    NotesStore notes = store();
    notes.load();
    fs::create_directory(path);
    notes.add("new");
    notes.savenotes();
    EXPECT_THAT(reported, saysWhatToDo());
    EXPECT_THAT(notes.list(), ElementsAre("new"));
    EXPECT_TRUE(fs::is_empty(path));
}

TEST_F(NotesInTrouble, AreReportedWhenTheirFolderIsAFile) {
    write("a file");
    path = path / "notes.cwv";
    NotesStore notes = store();
    notes.load();
    notes.add("new");
    notes.savenotes();
    EXPECT_THAT(reported, saysWhatToDo());
    EXPECT_THAT(notes.list(), ElementsAre("new"));
}

TEST_F(NotesInTrouble, AreSavedInAFolderWithAnyLetters) {
    path =
        temporary.path() / fs::path(u8"\u0416\u0443\u043A \u65E5\u672C \U0001F577") / "notes.cwv";
    save({"a"});
    EXPECT_EQ(read(), "a\r\n\r\n");
    EXPECT_THAT(loaded(), ElementsAre("a"));
    EXPECT_THAT(reported, IsEmpty());
}

}  // namespace
