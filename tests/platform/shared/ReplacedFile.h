#pragma once

#include "platform/AtomicFile.h"
#include "tests/platform/linux/forked.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <system_error>

#include <unistd.h>

/// A folder with a file that is to be replaced, open to a user whom permission bits bind.
class ReplacedFile : public testing::Test {
protected:
    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "folder";
    std::filesystem::path path = folder / "file";

    ReplacedFile() {
        allow(temporary.path(), 0755);
        std::filesystem::create_directory(folder);
        write("old");
    }
    ~ReplacedFile() override { allow(folder, 0700); }

    static void allow(const std::filesystem::path& which, unsigned bits) {
        std::filesystem::permissions(which, static_cast<std::filesystem::perms>(bits));
    }
    [[nodiscard]] static unsigned mode(const std::filesystem::path& which) {
        return static_cast<unsigned>(std::filesystem::status(which).permissions());
    }
    /// Makes the user whom `becomeNobody` makes of the superuser the owner of all that is there.
    void giveAway() const {
        if (geteuid() != 0) return;
        for (const auto& given : {folder, path})
            (void)!chown(given.c_str(), nobody, nobody);
    }
    void write(std::string_view content) const { std::ofstream(path, std::ios::binary) << content; }
    [[nodiscard]] std::string read() const {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    /// The names of all that stands in the folder.
    [[nodiscard]] std::set<std::string> names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.insert(entry.path().filename());
        }
        return names;
    }
    /// That the old content is there, and nothing else.
    void expectUntouched() const {
        EXPECT_EQ(read(), "old");
        EXPECT_THAT(names(), testing::ElementsAre("file"));
    }
    [[nodiscard]] static auto fails(int error) {
        return testing::Optional(std::generic_category().message(error));
    }
    [[nodiscard]] static auto succeeds() { return testing::Eq(std::nullopt); }
};
