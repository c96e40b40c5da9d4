#pragma once

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"
#include "tests/support/readFile.h"
#include "tests/support/waiting.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

/// A folder for programs that comes first, with one of the test's own.
class ProgramFolder {
public:
    explicit ProgramFolder(std::string program) : program(std::move(program)) {}

    /// The program runs these lines; "$out" is the folder.
    void script(const std::string& lines) const {
        const std::filesystem::path file = path() / program;
        std::ofstream(file) << "#!/bin/sh\nout='" << path().string() << "'\n" << lines;
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    /// What the program has left under this name, once it has. Waits for that.
    [[nodiscard]] std::string left(const std::string& name) const {
        EXPECT_TRUE(becomesTrue([&] { return has(name); })) << name;
        return readFile(path() / name);
    }
    /// There is something of this name now.
    [[nodiscard]] bool has(const std::string& name) const {
        return std::filesystem::exists(path() / name);
    }
    [[nodiscard]] const std::filesystem::path& path() const { return folder.path(); }

private:
    std::string program;
    TemporaryFolder folder;
    Variable variable{"PATH", folder.path().string() + ":" + std::getenv("PATH")};
};
