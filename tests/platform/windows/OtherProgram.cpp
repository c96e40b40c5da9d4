#include "tests/platform/windows/OtherProgram.h"

#include "platform/windows/wideText.h"
#include "tests/support/system.h"

#include <array>
#include <stdexcept>

namespace {

/// A pipe whose end for this process the other one does not get.
struct Pipe {
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
};

Pipe makePipe() {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    Pipe pipe;
    if (CreatePipe(&pipe.reader, &pipe.writer, &inherited, 0) == 0) {
        throw std::runtime_error("no pipe");
    }
    return pipe;
}

}  // namespace

OtherProgram::OtherProgram() {
    const Pipe toIt = makePipe();
    const Pipe fromIt = makePipe();
    input = toIt.writer;
    output = fromIt.reader;
    SetHandleInformation(input, HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(output, HANDLE_FLAG_INHERIT, 0);
    const auto file = testSystem::programFile().parent_path() / "stand_in.exe";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = toIt.reader;
    start.hStdOutput = fromIt.writer;
    PROCESS_INFORMATION made{};
    const BOOL isStarted = CreateProcessW(file.c_str(), nullptr, nullptr, nullptr, TRUE, 0, nullptr,
                                          nullptr, &start, &made);
    CloseHandle(toIt.reader);
    CloseHandle(fromIt.writer);
    if (isStarted == 0) throw std::runtime_error("no other program");
    CloseHandle(made.hThread);
    process = made.hProcess;
}

OtherProgram::~OtherProgram() {
    TerminateProcess(process, 0);
    WaitForSingleObject(process, INFINITE);
    for (const HANDLE handle : {process, input, output})
        CloseHandle(handle);
}

std::string OtherProgram::ask(const std::string& line) {
    tell(line);
    std::string answer;
    while (!answer.ends_with('\n')) {
        std::array<char, 256> piece{};
        DWORD count = 0;
        if (ReadFile(output, piece.data(), piece.size(), &count, nullptr) == 0 || count == 0) {
            throw std::runtime_error("the other program has ended");
        }
        answer.append(piece.data(), count);
    }
    return answer.substr(0, answer.find_last_not_of(" \r\n") + 1);
}

void OtherProgram::tell(const std::string& line) {
    const std::string whole = line + '\n';
    DWORD count = 0;
    WriteFile(input, whole.data(), static_cast<DWORD>(whole.size()), &count, nullptr);
}

void OtherProgram::announce(DWORD event, HWND window) {
    ask("tell " + std::to_string(event) + '|' + std::to_string(fromSystem(window)));
}

HWND OtherProgram::open(const std::string& className, const std::string& title) {
    return toSystem(std::stoull(ask("open " + className + '|' + title)));
}

std::string titleOf(HWND window) {
    std::array<wchar_t, 4096> title{};
    const int size = InternalGetWindowText(window, title.data(), static_cast<int>(title.size()));
    return wideText::toUtf8({title.data(), static_cast<std::size_t>(size)});
}
