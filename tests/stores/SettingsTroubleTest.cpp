#include "stores/SettingsStore.h"

#include "tests/stores/UnusableFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

/// Something else stands where the file is to be.
class FileInTheWay : public UnusableFile {};

TEST_P(FileInTheWay, ThatIsAFolderIsDoneWithout) {
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    SettingsStore store = open();
    expectToGoOnInMemory(store);
    EXPECT_TRUE(std::filesystem::is_empty(path));
}

TEST_P(FileInTheWay, GetsAValueThatIsWrittenAsItWasWhileAnotherThingStoodInItsPlace) {
    SettingsStore store = open();
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(option(store, "callby"), "e");
    store.WriteSetting("Options", "callby", "e");
    std::filesystem::remove(path);
    store.WriteSetting("Options", "timestamp", "True");
    EXPECT_EQ(other().get("callby"), "e");
    EXPECT_EQ(other().get("timestamp"), "True");
    EXPECT_THAT(reported, saysOnceWhatToDo());
}

TEST_P(FileInTheWay, WhoseFolderIsAFileIsDoneWithout) {
    path = path / "settings.db";
    SettingsStore store = open();
    expectToGoOnInMemory(store);
}

INSTANTIATE_TEST_SUITE_P(Folders, FileInTheWay, anyFolder, folderName);

/// Folders for settings may have letters that no code page has together.
class AnyLetters : public AnyFolder {};

TEST_P(AnyLetters, OfItsFolderLeadToTheFile) {
    folder =
        temporary.path() / std::filesystem::path(u8"\u0416\u0443\u043A caf\u00E9 \u65E5\u672C");
    path = folder / "settings.db";
    {
        SettingsStore store = open();
        store.WriteSetting("Options", "callby", "fn");
        EXPECT_EQ(option(store, "callby"), "fn");
    }
    EXPECT_EQ(other().get("callby"), "fn");
    other().set("callby", "e");
    SettingsStore store = open();
    EXPECT_EQ(option(store, "callby"), "e");
    EXPECT_TRUE(reported.empty());
}

INSTANTIATE_TEST_SUITE_P(Folders, AnyLetters, anyFolder, folderName);

}  // namespace
