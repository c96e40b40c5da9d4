/// Another program on the desktop, as tests need one: its windows are what its standard input asks
/// for, line by line, and each line is answered by one on its standard output.
///
///     open CLASS|TITLE    a window; its number
///     title NUMBER|TITLE  another title
///     close NUMBER
///     tell EVENT|NUMBER   the system's event of this number; Wine tells of few by itself
///     activate NUMBER     the user works in this window from now on
///     hang NUMBER         takes no messages any more; not answered
///     commands            the numbers of all commands that its windows have been given, and
///                         "shutdown:NUMBER" for each time that Messenger is asked to end
///
/// Under another name it leaves a file of its own name and ".started" beside itself, in which its
/// only argument is, waits while there is one with ".gate", leaves one with ".ended", and ends.
#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <thread>

#include <shellapi.h>

namespace {

constexpr UINT onLine = WM_APP;

std::string commands;

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
    static const UINT shutDown = RegisterWindowMessageW(L"TryMsnMsgrShutdown");
    if (message == shutDown) commands += "shutdown:" + std::to_string(first) + ' ';
    if (message == WM_COMMAND) {
        commands += std::to_string(LOWORD(first)) + ' ';
        return 0;
    }
    return DefWindowProcW(window, message, first, second);
}

HWND open(const std::wstring& className, const std::wstring& title) {
    static std::set<std::wstring> classes;
    if (classes.insert(className).second) {
        WNDCLASSW kind{};
        kind.lpfnWndProc = procedure;
        kind.hInstance = GetModuleHandleW(nullptr);
        kind.lpszClassName = className.c_str();
        RegisterClassW(&kind);
    }
    return CreateWindowExW(0, className.c_str(), title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                           10, 10, 200, 100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
}

/// What a line asks for; the answer.
std::string answer(std::string_view line) {
    const std::string_view verb = line.substr(0, line.find(' '));
    const std::string_view rest = line.substr(std::min(line.size(), verb.size() + 1));
    const std::string_view first = rest.substr(0, rest.find('|'));
    const std::string_view second = rest.substr(std::min(rest.size(), first.size() + 1));
    if (verb == "commands") return commands;
    if (verb == "open") {
        const HWND opened = open(wideText::fromUtf8(first), wideText::fromUtf8(second));
        return std::to_string(fromSystem(opened));
    }
    if (verb == "tell") {
        NotifyWinEvent(static_cast<DWORD>(std::stoul(std::string(first))),
                       toSystem(std::stoull(std::string(second))), OBJID_WINDOW, CHILDID_SELF);
        return "done";
    }
    const HWND window = toSystem(std::stoull(std::string(first)));
    if (verb == "title") SetWindowTextW(window, wideText::fromUtf8(second).c_str());
    if (verb == "close") DestroyWindow(window);
    if (verb == "activate") SetForegroundWindow(window);
    if (verb == "hang") Sleep(INFINITE);
    return "done";
}

/// Has the thread of the windows do what each line asks for, until the end of them.
void read(DWORD windows) {
    std::string line;
    while (std::getline(std::cin, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        PostThreadMessageW(windows, onLine, 0, reinterpret_cast<LPARAM>(new std::string(line)));
    }
    std::_Exit(0);
}

std::filesystem::path ownFile() {
    std::array<wchar_t, MAX_PATH> file{};
    GetModuleFileNameW(nullptr, file.data(), static_cast<DWORD>(file.size()));
    return file.data();
}

/// What one who starts programs has started.
int runAsAnother() {
    const auto beside = [](const char* ending) { return ownFile() += ending; };
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::ofstream(beside(".new"), std::ios::binary)
        << (count == 2 ? wideText::toUtf8(words[1]) : "");
    std::filesystem::rename(beside(".new"), beside(".started"));
    while (std::filesystem::exists(beside(".gate")))
        Sleep(10);
    std::ofstream(beside(".ended")) << '\n';
    return 0;
}

}  // namespace

int main() {
    if (ownFile().stem() != "stand_in") return runAsAnother();
    MSG message{};
    // The thread has a queue from here on.
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    std::thread(read, GetCurrentThreadId()).detach();
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.hwnd == nullptr && message.message == onLine) {
            const std::unique_ptr<std::string> line(reinterpret_cast<std::string*>(message.lParam));
            std::cout << answer(*line) << std::endl;
        } else {
            DispatchMessageW(&message);
        }
    }
}
