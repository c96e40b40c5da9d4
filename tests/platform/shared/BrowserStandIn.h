#pragma once

#include <memory>
#include <string>

/// The user's browser, as a test has it. Each system has its own way to be this; the tests are the
/// same.
class BrowserStandIn {
public:
    BrowserStandIn();
    ~BrowserStandIn();
    BrowserStandIn(const BrowserStandIn&) = delete;
    BrowserStandIn& operator=(const BrowserStandIn&) = delete;

    /// The address that it was started with, once it was. Waits for that.
    [[nodiscard]] std::string address() const;
    [[nodiscard]] bool isStarted() const;

    /// From its next start on it runs until this object goes.
    void keepRunning();
    [[nodiscard]] bool isRunning() const;

private:
    struct System;
    std::unique_ptr<System> system;
};
