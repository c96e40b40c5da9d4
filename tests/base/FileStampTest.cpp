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
        std::filesystem::last_write_time(path, now() - past);
    }
    [[nodiscard]] static std::filesystem::file_time_type now() {
        return std::filesystem::file_time_type::clock::now();
    }
    /// As if the last change had been about a second ago, the part of a second being `fraction`.
    void changeWith(std::chrono::milliseconds fraction) const {
        const auto second = std::chrono::floor<std::chrono::seconds>(now()) - 1s;
        std::filesystem::last_write_time(path, second + fraction);
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

TEST_F(StampedFile, HasNotChangedSoonAfterAChangeWhoseTimeHasAFraction) {
    write("one");
    changeWith(1ms);
    (void)stamp.mayHaveChanged();
    EXPECT_FALSE(stamp.mayHaveChanged());
}

TEST_F(StampedFile, MayHaveChangedSoonAfterAChangeWhereTimesAreWholeSeconds) {
    write("one");
    bool mayHaveChanged = false;
    // Again, should it have taken so long that the seconds are over.
    for (auto begin = now() - 1h; now() - begin > 500ms;) {
        begin = now();
        changeWith(0ms);
        (void)stamp.mayHaveChanged();
        mayHaveChanged = stamp.mayHaveChanged();
    }
    EXPECT_TRUE(mayHaveChanged);
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
