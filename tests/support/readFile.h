#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

/// All bytes of a file; none when it cannot be read.
[[nodiscard]] inline std::string readFile(const std::filesystem::path& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return std::move(bytes).str();
}
