#pragma once

#include <memory>
#include <string_view>

/// The user's web browser.
class Browser {
public:
    Browser() = default;
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;
    virtual ~Browser() = default;

    /// Opens a page and waits for nothing. The address is handed on exactly as it is, and no shell
    /// sees it. Fails when nothing can be started.
    virtual void open(std::string_view address) = 0;
};

[[nodiscard]] std::unique_ptr<Browser> makeBrowser();
