#pragma once

#include <string>
#include <vector>

/// One read of a recorded connection.
struct RecordedRead {
    bool fromClient = false;
    std::string bytes;
};

/// Reads a file of tests/captures. Throws `std::runtime_error` for what is no recording.
[[nodiscard]] std::vector<RecordedRead> readRecording(const std::string& name);

/// The names of all recordings.
[[nodiscard]] std::vector<std::string> recordingNames();
