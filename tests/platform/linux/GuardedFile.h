#pragma once

#include "tests/platform/shared/ReplacedFile.h"
#include "tests/support/linux/forked.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <system_error>

#include <unistd.h>

/// A file that is to be replaced, and who may: its folder is open to a user whom permission bits
/// bind.
class GuardedFile : public ReplacedFile {
protected:
    GuardedFile() { allow(temporary.path(), 0755); }
    ~GuardedFile() override { allow(folder, 0700); }

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
    /// Fails with the system's words for this error.
    [[nodiscard]] static auto failsWith(int error) {
        return testing::Optional(std::generic_category().message(error));
    }
};
