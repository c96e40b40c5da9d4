#pragma once

#include "tests/support/linux/Child.h"

#include <string>

/// A program of its own that shows an icon when there is a place for it: Qt decides once in a
/// process how it shows icons. It says "searching" and, when the place is found, "found".
class IconProgram {
public:
    IconProgram() : program({"/proc/self/exe", argument}) {}

    /// What it says next.
    [[nodiscard]] std::string word() { return program.readLine(); }
    [[nodiscard]] pid_t number() const { return program.number(); }

    /// To be called by the main function of this program when it is started as that one.
    static constexpr const char* argument = "icon";
    static int run();

private:
    Child program;
};
