#pragma once

#include "platform/AtomicFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/readFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <string_view>

/// A folder with a file that is to be replaced.
class ReplacedFile : public testing::Test {
protected:
    TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path() / "folder";
    std::filesystem::path path = folder / "file";

    ReplacedFile() {
        std::filesystem::create_directory(folder);
        write("old");
    }

    void write(std::string_view content) const { std::ofstream(path, std::ios::binary) << content; }
    [[nodiscard]] std::string read() const { return readFile(path); }
    /// The names of all that stands in the folder.
    [[nodiscard]] std::set<std::string> names() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }
    /// That the old content is there, and nothing else.
    void expectUntouched() const {
        EXPECT_EQ(read(), "old");
        EXPECT_THAT(names(), testing::ElementsAre("file"));
    }
    [[nodiscard]] static auto succeeds() { return testing::Eq(std::nullopt); }
    /// Fails, and says why.
    [[nodiscard]] static auto fails() {
        return testing::Optional(testing::Not(testing::IsEmpty()));
    }
};
