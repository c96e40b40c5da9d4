#pragma once

#include "platform/windows/win32.h"

/// A window that is never seen and gets messages, in the thread that has made it.
class HiddenWindow {
public:
    enum class Kind {
        /// Other programs do not find it, and it needs no desktop.
        MessagesOnly,
        /// It gets what the system sends to all windows. Without a desktop it is the other kind.
        TopLevel,
    };

    HiddenWindow(const HiddenWindow&) = delete;
    HiddenWindow& operator=(const HiddenWindow&) = delete;

    [[nodiscard]] HWND handle() const { return window; }

protected:
    /// Top-level windows have the class "CobweaveWindow", by which a setup finds them.
    explicit HiddenWindow(Kind kind);
    ~HiddenWindow();

    /// Does with a message what the system does with it.
    [[nodiscard]] LRESULT ignore(UINT message, WPARAM first, LPARAM second) const {
        return DefWindowProcW(window, message, first, second);
    }

private:
    /// Handles a message and returns its result.
    [[nodiscard]] virtual LRESULT onMessage(UINT message, WPARAM first, LPARAM second) = 0;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second);

    HWND window = nullptr;
};
