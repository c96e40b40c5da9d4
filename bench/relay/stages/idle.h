#pragma once

#include "bench/relay/Plan.h"
#include "bench/relay/contenders/Contender.h"
#include "bench/relay/report/Results.h"
#include "bench/relay/server/ServerProcess.h"

#include <vector>

/// Lets all relays rest at the same time, each with ten open connections, and counts what they do
/// all the same.
void measureIdleRelays(const std::vector<Contender>& contenders, const Plan& plan,
                       const ServerProcess& server, const std::filesystem::path& folder,
                       Results& results);
