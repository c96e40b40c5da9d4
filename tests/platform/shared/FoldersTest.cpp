#include "platform/Folders.h"

#include "tests/support/system.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

const std::filesystem::path program = std::filesystem::canonical(testSystem::programFile());

TEST(Folders, KeepTheNotesBesideTheProgramWhereItsFolderCanBeWritten) {
    EXPECT_EQ(std::filesystem::canonical(folders::notes()), program.parent_path());
}

TEST(Folders, HaveTheMoviesBesideTheProgram) {
    const std::string name = program.filename().string();
    EXPECT_EQ(std::filesystem::canonical(folders::movie(name.c_str())), program);
}

TEST(Folders, HaveAPlaceForMoviesThatAreNotBesideTheProgram) {
    const auto movie = folders::movie("no such movie.swf");
    EXPECT_EQ(movie.filename(), "no such movie.swf");
    EXPECT_TRUE(movie.is_absolute());
}

TEST(Folders, KeepTheSettingsAtOnePlaceOfTheUsers) {
    EXPECT_TRUE(folders::settings().is_absolute());
    EXPECT_EQ(folders::settings(), folders::settings());
}

}  // namespace
