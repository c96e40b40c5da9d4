#pragma once

#include <filesystem>

/// Finds out, for the price of one system call, whether a file may have changed since it was last
/// looked at.
class FileStamp {
public:
    /// Watches the file at `path`, which need not be there.
    explicit FileStamp(std::filesystem::path path);

    /// False only when the file is surely what it was at the last call. File systems count the time
    /// of a change coarsely, so a file that has just changed counts as changing for a while; one
    /// that is missing always counts.
    [[nodiscard]] bool mayHaveChanged();

private:
    std::filesystem::path path;
    std::filesystem::file_time_type lastChange{};
    bool settled = false;
};
