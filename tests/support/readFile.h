#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// All bytes of a file; none when it cannot be read.
[[nodiscard]] inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
