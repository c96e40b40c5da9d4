#pragma once

#include "tests/support/system.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

/// Sets a variable of the environment, or takes it out, until the end of the test.
class Variable {
public:
    Variable(std::string name, const std::optional<std::string>& value) : name(std::move(name)) {
        if (const char* const old = std::getenv(this->name.c_str())) before = old;
        set(value);
    }
    ~Variable() { set(before); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const std::optional<std::string>& value) const {
        testSystem::setVariable(name, value);
    }

    std::string name;
    std::optional<std::string> before;
};
