#pragma once

#include "bench/relay/system/socketTools.h"

#include <filesystem>

/// The smallest configurations under which these two relay between ports of loopback. Each writes a
/// file to `folder` and returns its path.

[[nodiscard]] std::filesystem::path writeDantedConfiguration(const std::filesystem::path& folder,
                                                             Port port);
[[nodiscard]] std::filesystem::path writeHAProxyConfiguration(const std::filesystem::path& folder,
                                                              Port port, Port server);
