#pragma once

#include <string>

/// Each byte there is, from 0 to 255.
[[nodiscard]] inline std::string allBytes() {
    std::string bytes;
    for (int code = 0; code < 256; ++code)
        bytes += static_cast<char>(code);
    return bytes;
}
