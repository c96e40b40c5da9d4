#pragma once

#include "bench/relay/system/BenchError.h"

#include <cstdlib>
#include <filesystem>
#include <string>

/// A folder for configurations, logs and settings of the relays, gone at the end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        auto pattern = (std::filesystem::temp_directory_path() / "relay-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throwSystemError("cannot make the folder " + pattern);
        folder = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path folder;
};
