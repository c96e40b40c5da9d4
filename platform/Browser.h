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

    /// Opens a page and does not wait for it. The browser gets the address byte for byte, and no
    /// shell sees it. Fails when nothing can be started.
    virtual void open(std::string_view address) = 0;
};

/// The browser that the user has chosen on the desktop.
[[nodiscard]] std::unique_ptr<Browser> makeBrowser();
