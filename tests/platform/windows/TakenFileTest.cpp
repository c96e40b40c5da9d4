#include "platform/windows/win32.h"
#include "tests/stores/NotesFile.h"
#include "tests/stores/UnusableFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A file that another program has opened for itself alone, as backups and virus scanners do.
class Taken {
public:
    explicit Taken(const std::filesystem::path& file)
        : handle(CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    }
    ~Taken() { CloseHandle(handle); }
    Taken(const Taken&) = delete;
    Taken& operator=(const Taken&) = delete;

private:
    HANDLE handle;
};

class TakenNotes : public NotesFile {
protected:
    TakenNotes() { write("old\r\n\r\n"); }
};

TEST_F(TakenNotes, AreNotReplacedWhileTheyCannotBeRead) {
    NotesStore notes = store();
    {
        const Taken file(path);
        notes.load();
        EXPECT_THAT(notes.list(), IsEmpty());
        EXPECT_THAT(reported, IsEmpty());
        notes.add("new");
        notes.savenotes();
    }
    notes.savenotes();
    EXPECT_THAT(reported, ElementsAre(unread(), unread()));
    EXPECT_EQ(read(), "old\r\n\r\n");
    EXPECT_THAT(notes.list(), ElementsAre("new"));
}

TEST_F(TakenNotes, AreReportedAndSavedOnceTheirFileIsFree) {
    NotesStore notes = store();
    notes.load();
    notes.add("new");
    {
        const Taken file(path);
        notes.savenotes();
        EXPECT_THAT(reported,
                    ElementsAre(AllOf(HasSubstr(path.string() + ": "), HasSubstr("writable"))));
    }
    EXPECT_EQ(read(), "old\r\n\r\n");
    notes.savenotes();
    EXPECT_EQ(reported.size(), 1U);
    EXPECT_EQ(read(), "old\r\nnew\r\n\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(temporary.path()), {}), 1);
}

class TakenSettings : public UnusableFile {};

TEST_P(TakenSettings, AreDoneWithoutAndWrittenOnceTheirFileIsFree) {
    std::optional<Taken> file(path);
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "");
    expectToGoOnInMemory(store);
    file.reset();
    store.WriteSetting("Options", "constants", "False");
    EXPECT_EQ(other().get("callby"), "fn");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_EQ(other().get("constants"), "False");
}

TEST_F(StoreFolder, OfWhichAFileIsTakenKeepsNobodyWaitingForLong) {
    sqlite3* opened = nullptr;
    std::filesystem::create_directories(folder);
    EXPECT_EQ(sqlite3_open(path.string().c_str(), &opened), SQLITE_OK);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> database(opened, &sqlite3_close);
    // How often SQLite tries again, and the milliseconds by which it waits longer each time.
    int attempts[] = {-1, -1};
    EXPECT_EQ(sqlite3_file_control(opened, "main", SQLITE_FCNTL_WIN32_AV_RETRY, attempts),
              SQLITE_OK);
    EXPECT_GT(attempts[0], 0);
    EXPECT_LE(attempts[0] * (attempts[0] + 1) / 2 * attempts[1], 100);
}

INSTANTIATE_TEST_SUITE_P(Folders, TakenSettings, anyFolder, folderName);

}  // namespace
