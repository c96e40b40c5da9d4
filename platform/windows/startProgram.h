#pragma once

#include <string>

/// Has the system open a program, or an address with the program that the user has chosen for
/// such, in a normal window that gets the keyboard, and does not wait for it. Fails when nothing
/// can be started.
void startProgram(const std::wstring& what);
