#pragma once

#include <string>
#include <vector>

/// Starts a program, found through PATH, and does not wait for it. From this process it inherits
/// the user, the environment, the folder and standard error, and nothing else. It gets each word of
/// the command byte for byte: no shell sees them. Fails when it cannot be started.
void startProgram(std::vector<std::string> command);
