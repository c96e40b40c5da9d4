#pragma once

#include "platform/windows/win32.h"

#include <string>

/// The program of `standIn.cpp`, whose windows are another process's. It ends with this object.
class OtherProgram {
public:
    OtherProgram();
    ~OtherProgram();
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// Has it do what a line of its input asks for, and gives its answer.
    std::string ask(const std::string& line);
    /// The same for a line that is not answered.
    void tell(const std::string& line);

    /// Has it tell of one of its windows what Windows tells by itself and Wine 8 does not.
    void announce(DWORD event, HWND window);

    /// A window of this class and title, both UTF-8.
    [[nodiscard]] HWND open(const std::string& className, const std::string& title);

private:
    HANDLE process = nullptr;
    HANDLE input = nullptr;
    HANDLE output = nullptr;
};

/// The title of any window, as the system knows it.
[[nodiscard]] std::string titleOf(HWND window);
