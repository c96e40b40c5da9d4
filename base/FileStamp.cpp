#include "base/FileStamp.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace {

using Time = std::filesystem::file_time_type;

/// How long after a change another one may get the same time. It is more than what the file system
/// counts in: FAT in two seconds, others in one, and those that count fractions of it, as the time
/// then shows, in a hundredth at the coarsest.
std::chrono::milliseconds settlingTime(Time change) {
    const bool isCoarse = change.time_since_epoch() % std::chrono::seconds(1) == Time::duration(0);
    return std::chrono::milliseconds(isCoarse ? 3000 : 100);
}

}  // namespace

FileStamp::FileStamp(std::filesystem::path path) : path(std::move(path)) {}

bool FileStamp::mayHaveChanged() {
    std::error_code error;
    const auto change = std::filesystem::last_write_time(path, error);
    if (settled && !error && change == lastChange) return false;
    lastChange = change;
    const auto now = Time::clock::now();
    settled = !error && change + settlingTime(change) < now;
    return true;
}
