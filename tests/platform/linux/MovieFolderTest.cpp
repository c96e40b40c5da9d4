#include "platform/Folders.h"
#include "platform/linux/Folders.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace {

TEST(MovieFolder, IsTheProgramsOwnWhereTheFileIsThere) {
    const TemporaryFolder prefix;
    const auto program = prefix.path() / "bin";
    std::filesystem::create_directory(program);
    std::ofstream(program / "button.swf") << "movie";
    EXPECT_EQ(folders::movieFor(program, "button.swf"), program / "button.swf");
    EXPECT_EQ(folders::movieFor(program, "about.swf"),
              prefix.path() / "share" / "cobweave" / "about.swf");
}

TEST(MovieFolder, OfThisProgramIsBesideIt) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(folders::movie(program.filename().c_str()), program);
}

}  // namespace
