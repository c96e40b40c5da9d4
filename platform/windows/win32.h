#pragma once

/// The one include of what Windows declares, so that its order is right everywhere.
#include <winsock2.h>

#include <windows.h>

#include <cstdint>

// Macros that would rename functions and classes of ours.
#undef MessageBox
#undef SetWindowText

/// A window, as the interfaces number it.
inline HWND toSystem(std::uintptr_t window) { return reinterpret_cast<HWND>(window); }
inline std::uintptr_t fromSystem(HWND window) { return reinterpret_cast<std::uintptr_t>(window); }

/// Whether a window is this program's.
inline bool isOurs(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId();
}

/// Whether the system is Wine.
inline bool isWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}
