#include "platform/Registry.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/linux/forked.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

#include <sys/resource.h>

namespace {

using namespace std::chrono_literals;

constexpr const char* addOn = "Software\\Patchou\\MsgPlus2";

/// As Wine writes it, with some other keys and values around `lines`.
std::string registryWith(const std::string& lines) {
    return R"(WINE REGISTRY Version 2
;; All keys relative to \\User\\S-1-5-21-0-0-0-1000

#arch=win64

[Control Panel\\Desktop] 1700000000
#time=1da1a1a1a1a1a1a
"CaretWidth"=dword:00000001
"Path"="[Software\\Patchou\\MsgPlus2]"

)" + lines +
           R"(
[Volatile Environment] 1700000000
"Bytes"=hex:01,02,\
  03,04
)";
}

class PrefixRegistry : public testing::Test {
protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder.path() / "user.reg";

    void write(const std::string& text) const { std::ofstream(file) << text; }
    /// As if the last change had been so long ago.
    void age(std::chrono::seconds past) const {
        const auto now = std::filesystem::file_time_type::clock::now();
        std::filesystem::last_write_time(file, now - past);
    }
    [[nodiscard]] std::unique_ptr<Registry> open() const {
        const Variable prefix("WINEPREFIX", folder.path().string());
        return makeRegistry();
    }
    [[nodiscard]] bool hasKey(const std::string& lines, const std::string& path = addOn) const {
        write(registryWith(lines));
        return open()->currentUserHasKey(path);
    }
};

TEST_F(PrefixRegistry, HasAKeyThatStandsInTheFile) {
    EXPECT_TRUE(hasKey(R"([Software\\Patchou\\MsgPlus2] 1700000000)"));
}

TEST_F(PrefixRegistry, HasAKeyWhateverTheCapitals) {
    EXPECT_TRUE(hasKey(R"([SOFTWARE\\patchou\\MSGPLUS2] 1700000000)"));
    EXPECT_TRUE(
        hasKey(R"([Software\\Patchou\\MsgPlus2] 1700000000)", "software\\PATCHOU\\msgplus2"));
}

TEST_F(PrefixRegistry, HasAKeyThatOnlyHoldsOthers) {
    EXPECT_TRUE(hasKey(R"([Software\\Patchou\\MsgPlus2\\Preferences\\ann] 1700000000)"));
    EXPECT_TRUE(hasKey(R"([Software\\Patchou\\MsgPlus2\\Preferences] 1700000000)", "Software"));
}

TEST_F(PrefixRegistry, HasAKeyWithoutATimeAndOneOnTheLastLine) {
    write("WINE REGISTRY Version 2\n[Software\\\\Patchou\\\\MsgPlus2]");
    EXPECT_TRUE(open()->currentUserHasKey(addOn));
}

TEST_F(PrefixRegistry, HasAKeyWithBracketsInItsName) {
    EXPECT_TRUE(hasKey(R"([Software\\a\[b\]c\\d] 1700000000)", "Software\\a[b]c\\d"));
}

class OtherKeys : public PrefixRegistry, public testing::WithParamInterface<const char*> {};

TEST_P(OtherKeys, AreNotTheOneThatIsAskedFor) { EXPECT_FALSE(hasKey(GetParam())); }

INSTANTIATE_TEST_SUITE_P(Table, OtherKeys,
                         testing::Values("",                                                 //
                                         R"([Software\\Patchou\\MsgPlus20] 1700000000)",     //
                                         R"([Software\\Patchou\\MsgPlus2a] 1700000000)",     //
                                         R"([Software\\Patchou\\MsgPlus] 1700000000)",       //
                                         R"([Software\\Patchou\\MsgPlus2 ] 1700000000)",     //
                                         R"([Software\\Patchou\\MsgPlus2!\\a] 1700000000)",  //
                                         R"([Software\\Patchou] 1700000000)",                //
                                         R"([Patchou\\MsgPlus2] 1700000000)",                //
                                         R"([a\\Software\\Patchou\\MsgPlus2] 1700000000)",   //
                                         R"(;[Software\\Patchou\\MsgPlus2] 1700000000)",     //
                                         R"("[Software\\Patchou\\MsgPlus2]"="")"));

TEST_F(PrefixRegistry, HasNoKeyWithoutAFile) { EXPECT_FALSE(open()->currentUserHasKey(addOn)); }

TEST_F(PrefixRegistry, HasNoKeyInAnEmptyFile) {
    write("");
    EXPECT_FALSE(open()->currentUserHasKey(addOn));
}

TEST_F(PrefixRegistry, HasNoKeyWhereTheFileIsAFolder) {
    std::filesystem::create_directory(file);
    EXPECT_FALSE(open()->currentUserHasKey(addOn));
}

const std::string present = registryWith(R"([Software\\Patchou\\MsgPlus2] 1700000000)");
const std::string absent = registryWith("");

TEST_F(PrefixRegistry, SeesAFileThatAppearsLater) {
    const auto registry = open();
    EXPECT_FALSE(registry->currentUserHasKey(addOn));
    write(present);
    EXPECT_TRUE(registry->currentUserHasKey(addOn));
}

TEST_F(PrefixRegistry, SeesAFileThatGoes) {
    write(present);
    age(1h);
    const auto registry = open();
    EXPECT_TRUE(registry->currentUserHasKey(addOn));
    std::filesystem::remove(file);
    EXPECT_FALSE(registry->currentUserHasKey(addOn));
}

TEST_F(PrefixRegistry, SeesChangesDirectlyAfterEachOther) {
    write(absent);
    const auto registry = open();
    for (int round = 0; round < 5; ++round) {
        EXPECT_FALSE(registry->currentUserHasKey(addOn));
        write(present);
        EXPECT_TRUE(registry->currentUserHasKey(addOn));
        write(absent);
    }
}

TEST_F(PrefixRegistry, SeesAChangeOfAFileThatHasLongBeenTheSame) {
    write(absent);
    age(1h);
    const auto registry = open();
    EXPECT_FALSE(registry->currentUserHasKey(addOn));
    EXPECT_FALSE(registry->currentUserHasKey(addOn));
    write(present);
    EXPECT_TRUE(registry->currentUserHasKey(addOn));
}

TEST_F(PrefixRegistry, SeesAFileThatReplacesTheOther) {
    write(absent);
    age(1h);
    const auto registry = open();
    EXPECT_FALSE(registry->currentUserHasKey(addOn));
    const std::filesystem::path fresh = folder.path() / "reg1234.tmp";
    std::ofstream(fresh) << present;
    std::filesystem::rename(fresh, file);
    EXPECT_TRUE(registry->currentUserHasKey(addOn));
}

TEST_F(PrefixRegistry, StaysAsItWasWhileTheFileCannotBeOpened) {
    EXPECT_TRUE(passesForked([this] {
        write(present);
        const auto registry = open();
        EXPECT_TRUE(registry->currentUserHasKey(addOn));
        write(absent);
        age(1h);
        const rlimit before = refuseDescriptors();
        EXPECT_TRUE(registry->currentUserHasKey(addOn));
        setrlimit(RLIMIT_NOFILE, &before);
        EXPECT_FALSE(registry->currentUserHasKey(addOn));
    }));
}

TEST(HomeRegistry, IsTheOneInTheHomeFolderWithoutAPrefix) {
    const TemporaryFolder home;
    std::filesystem::create_directory(home.path() / ".wine");
    std::ofstream(home.path() / ".wine" / "user.reg") << present;
    const Variable noPrefix("WINEPREFIX", std::nullopt);
    const Variable homeVariable("HOME", home.path().string());
    EXPECT_TRUE(makeRegistry()->currentUserHasKey(addOn));
}

TEST(HomeRegistry, IsNotReadWhereThereIsAPrefix) {
    const TemporaryFolder home;
    const TemporaryFolder prefix;
    std::filesystem::create_directory(home.path() / ".wine");
    std::ofstream(home.path() / ".wine" / "user.reg") << present;
    const Variable prefixVariable("WINEPREFIX", prefix.path().string());
    const Variable homeVariable("HOME", home.path().string());
    EXPECT_FALSE(makeRegistry()->currentUserHasKey(addOn));
}

}  // namespace
