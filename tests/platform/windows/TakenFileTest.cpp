#include "platform/windows/win32.h"
#include "tests/stores/NotesFile.h"
#include "tests/stores/UnusableFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>

namespace {

using namespace std::chrono_literals;
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

TEST_P(TakenSettings, KeepNobodyWaitingForLong) {
    const Taken file(path);
    const auto before = std::chrono::steady_clock::now();
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "");
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1s);
}

INSTANTIATE_TEST_SUITE_P(Folders, TakenSettings, anyFolder, folderName);

}  // namespace
