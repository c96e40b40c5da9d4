#pragma once

#include "base/Event.h"
#include "platform/windows/win32.h"

#include <string>

/// A top-level window of another program, known by its class, and followed by the system's events:
/// nothing is looked for while nothing happens.
class WindowOfClass {
public:
    /// `className` is the name under which the other program has registered the class.
    explicit WindowOfClass(std::wstring className);
    ~WindowOfClass();
    WindowOfClass(const WindowOfClass&) = delete;
    WindowOfClass& operator=(const WindowOfClass&) = delete;

    /// A window of the class has come, gone or got another title.
    Event<> changed;

    /// The window; where there are several, the one that was found first, as long as it exists.
    /// Null without one.
    [[nodiscard]] HWND handle();

private:
    friend class WindowEvents;

    void onEvent(DWORD event, HWND subject);

    std::wstring className;
    HWND known = nullptr;
    /// The one before, until the system says that it has gone.
    HWND lost = nullptr;
    bool mayHaveCome = true;
};
