#include "tests/support/Recording.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

const std::filesystem::path folder = COBWEAVE_CAPTURES;

std::string fromHexadecimal(const std::string& digits) {
    std::string bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

}  // namespace

std::vector<RecordedRead> readRecording(const std::string& name) {
    std::ifstream file(folder / name);
    std::vector<RecordedRead> reads;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        std::istringstream fields(line);
        std::string seconds;
        std::string side;
        std::string digits;
        fields >> seconds >> side >> digits;
        if (side != "C" && side != "S") throw std::runtime_error("no recorded read: " + line);
        reads.push_back({side == "C", fromHexadecimal(digits)});
    }
    if (reads.empty()) throw std::runtime_error("nothing recorded in " + name);
    return reads;
}

std::vector<std::string> recordingNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".txt") names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}
