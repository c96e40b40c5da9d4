#include "tests/movies/Screening.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// How a program ended, and what it said.
struct Outcome {
    int status;
    std::string said;
};

Outcome outcomeOf(const std::string& command) {
    FILE* const program = popen((command + " 2>&1").c_str(), "r");
    if (program == nullptr) return {-1, "no program"};
    std::string said;
    std::array<char, 256> piece{};
    while (std::fgets(piece.data(), piece.size(), program) != nullptr)
        said += piece.data();
    return {pclose(program), said};
}

/// What the program that makes movies says to a description, and that it fails.
std::string complaintAbout(const std::string& description) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "bad.movie";
    const auto movie = folder.path() / "bad.swf";
    std::ofstream(path) << description;
    const Outcome outcome =
        outcomeOf(COBWEAVE_MAKE_MOVIE " 1.2.3 " + path.string() + ' ' + movie.string());
    EXPECT_NE(outcome.status, 0);
    EXPECT_FALSE(std::filesystem::exists(movie));
    const std::size_t name = outcome.said.find("bad.movie:");
    return name == std::string::npos ? outcome.said : outcome.said.substr(name);
}

TEST(MakeMovie, SaysWhereADescriptionIsWrong) {
    EXPECT_EQ(complaintAbout("size 10 10\n\n  nonsense\n"),
              "bad.movie:3: nothing begins with \"nonsense\"\n");
    EXPECT_EQ(complaintAbout("size 10 ten\n"),
              "bad.movie:1: \"ten\" is no number, where one is needed: a height\n");
    EXPECT_EQ(complaintAbout("size 10 10\nshape a\nfill none rect 0 0 1 1\nend\n"),
              "bad.movie:3: no colour is called \"none\"\n");
    EXPECT_EQ(complaintAbout("size 10 10\nshow it at 1\n"),
              "bad.movie:2: nothing is called \"it\"\n");
    EXPECT_EQ(complaintAbout("size 10 10\nshape a\n"), "bad.movie:2: its end is missing\n");
    EXPECT_EQ(complaintAbout("-- nothing\n"), "bad.movie:0: a movie has a size\n");
    EXPECT_EQ(complaintAbout("color a #12345\n"), "bad.movie:1: no colour is called \"#12345\"\n");
}

TEST(MakeMovie, IsSilentWhereTheBuilderHasNoRuntimeFolder) {
    const TemporaryFolder folder;
    const auto path = folder.path() / "good.movie";
    const auto movie = folder.path() / "good.swf";
    std::ofstream(path) << "size 10 10\n";
    const Outcome outcome = outcomeOf("env -u XDG_RUNTIME_DIR " COBWEAVE_MAKE_MOVIE " 1.2.3 " +
                                      path.string() + ' ' + movie.string());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.said, "");
    EXPECT_TRUE(std::filesystem::exists(movie));
}

/// By a reader that has nothing to do with ours.
TEST(MadeMovies, AreReadByOthersAsWell) {
    for (const char* const name : {"button", "about", "generaloptions", "signingin", "tsmessages",
                                   "alerts", "windowrename"}) {
        const std::string file = std::string(name) + ".swf";
        const auto path = std::filesystem::path(COBWEAVE_MOVIES) / file;
        const auto movie = swf::readMovie(readFile(path));
        const std::string frames = std::to_string(movie->timeline.frameCount());
        EXPECT_EQ(outcomeOf("/usr/bin/python3 " COBWEAVE_OTHER_READER " " + path.string()).said,
                  file + " 6 " + frames + ' ' + frames + '\n');
    }
}

}  // namespace
