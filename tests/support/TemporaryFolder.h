#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

/// A folder that is gone with its owner, for this user alone.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            folder = std::filesystem::temp_directory_path() /
                     ("cobweave-" + std::to_string(random()) + std::to_string(random()));
        } while (!std::filesystem::create_directory(folder));
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path folder;
};
