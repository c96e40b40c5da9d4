#include "base/FileStamp.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>

namespace {

using namespace std::chrono_literals;

class StampedFile : public testing::Test {
protected:
    TemporaryFolder folder;
    std::filesystem::path path = folder.path() / "file";
    FileStamp stamp{path};

    void write(const std::string& text) const { std::ofstream(path) << text; }
    /// As if the last change had been so long ago.
    void age(std::chrono::seconds past) const {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(path, now - past);
    }
};

TEST_F(StampedFile, MayHaveChangedAtTheFirstLook) {
    write("one");
    age(1h);
    EXPECT_TRUE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, HasNotChangedWhenItsLastChangeIsLongPast) {
    write("one");
    age(1h);
    (void)stamp.mayHaveChanged();
    EXPECT_FALSE(stamp.mayHaveChanged());
    EXPECT_FALSE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, MayHaveChangedAgainWhileItsLastChangeIsFresh) {
    write("one");
    // A time to come stands for a change just now, however slowly this test runs.
    age(-1h);
    EXPECT_TRUE(stamp.mayHaveChanged());
    EXPECT_TRUE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, MayHaveChangedAfterAWrite) {
    write("one");
    age(1h);
    (void)stamp.mayHaveChanged();
    write("two");
    EXPECT_TRUE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, MayHaveChangedWhenAnOlderOneTookItsPlace) {
    write("one");
    age(1h);
    (void)stamp.mayHaveChanged();
    age(2h);
    EXPECT_TRUE(stamp.mayHaveChanged());
    EXPECT_FALSE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, AlwaysMayHaveChangedWhileItIsMissing) {
    EXPECT_TRUE(stamp.mayHaveChanged());
    EXPECT_TRUE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, MayHaveChangedWhenItIsGone) {
    write("one");
    age(1h);
    (void)stamp.mayHaveChanged();
    std::filesystem::remove(path);
    EXPECT_TRUE(stamp.mayHaveChanged());
    EXPECT_TRUE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, MayHaveChangedWhenItComesBack) {
    write("one");
    age(1h);
    (void)stamp.mayHaveChanged();
    std::filesystem::remove(path);
    (void)stamp.mayHaveChanged();
    write("two");
    age(1h);
    EXPECT_TRUE(stamp.mayHaveChanged());
    EXPECT_FALSE(stamp.mayHaveChanged());
}

}  // namespace
