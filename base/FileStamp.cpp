#include "base/FileStamp.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace {

/// Longer than the coarsest time of a file system in use, FAT's two seconds.
constexpr std::chrono::seconds settlingTime{3};

}  // namespace

FileStamp::FileStamp(std::filesystem::path path) : path(std::move(path)) {}

bool FileStamp::mayHaveChanged() {
    std::error_code error;
    const auto change = std::filesystem::last_write_time(path, error);
    if (settled && !error && change == lastChange) return false;
    lastChange = change;
    const auto now = std::filesystem::file_time_type::clock::now();
    settled = !error && change + settlingTime < now;
    return true;
}
