#pragma once

#include <string>
#include <vector>

/// Starts a program, found through PATH, and waits for nothing. It has nothing of this process but
/// its user, its environment, its folder and its standard error, and each word reaches it exactly
/// as it is: no shell sees them. Fails when it cannot be started.
void startProgram(std::vector<std::string> command);
