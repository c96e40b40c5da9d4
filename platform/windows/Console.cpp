#include "platform/Console.h"

#include "base/codePage.h"
#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace {

constexpr std::size_t longestLine = 4000;
constexpr std::size_t mostLines = 100;

/// Longer than any write takes that does not block.
constexpr std::chrono::milliseconds patience{200};

bool isThere(HANDLE stream) {
    return stream != nullptr && stream != INVALID_HANDLE_VALUE &&
           GetFileType(stream) != FILE_TYPE_UNKNOWN;
}

/// The stream as it was given to the process or, where it was not, the console of who started it.
HANDLE open(DWORD standard) {
    const HANDLE given = GetStdHandle(standard);
    if (isThere(given)) return given;
    return CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       nullptr, OPEN_EXISTING, 0, nullptr);
}

void writeNow(HANDLE stream, const std::string& line) {
    DWORD count = 0;
    if (GetConsoleMode(stream, &count) != 0) {
        const std::wstring wide = wideText::fromUtf8(line);
        WriteConsoleW(stream, wide.data(), static_cast<DWORD>(wide.size()), &count, nullptr);
    } else {
        WriteFile(stream, line.data(), static_cast<DWORD>(line.size()), &count, nullptr);
    }
}

/// Writes to one stream in a thread of its own: a console blocks whoever writes to it while the
/// user selects text there, and a pipe while nobody reads.
class Writer {
public:
    explicit Writer(DWORD standard) {
        // Fails, as it should, for the second stream.
        AttachConsole(ATTACH_PARENT_PROCESS);
        stream = open(standard);
        std::thread([this] { run(); }).detach();
    }

    /// Returns when the line is written or, while the thread is blocked, at once.
    void write(std::string line) {
        std::unique_lock lock(mutex);
        if (lines.size() == mostLines) return;
        lines.push_back(std::move(line));
        const std::uint64_t number = ++lastNumber;
        isMore.notify_one();
        if (isBlocked) return;
        isBlocked = !isLess.wait_for(lock, patience, [&] { return written >= number; });
    }

private:
    [[noreturn]] void run() {
        std::unique_lock lock(mutex);
        while (true) {
            isMore.wait(lock, [this] { return !lines.empty(); });
            const std::string line = std::move(lines.front());
            lines.pop_front();
            lock.unlock();
            writeNow(stream, line);
            lock.lock();
            ++written;
            isBlocked = isBlocked && !lines.empty();
            isLess.notify_one();
        }
    }

    HANDLE stream = nullptr;
    std::mutex mutex;
    std::condition_variable isMore;
    std::condition_variable isLess;
    std::deque<std::string> lines;
    std::uint64_t lastNumber = 0;
    std::uint64_t written = 0;
    bool isBlocked = false;
};

/// They are never destroyed, for their threads may be at work until the process is over.
struct Writers {
    Writer output{STD_OUTPUT_HANDLE};
    Writer error{STD_ERROR_HANDLE};
};

Writers& writers() {
    static Writers& both = *new Writers;
    return both;
}

std::string lineOf(std::string_view text) {
    std::string line = codePage::printable(codePage::cutUtf8(text, longestLine));
    line.resize(codePage::cutUtf8(line, longestLine).size());
    return line + '\n';
}

}  // namespace

void console::prepare() { (void)writers(); }

void console::output(std::string_view line) { writers().output.write(lineOf(line)); }

void console::error(std::string_view line) { writers().error.write(lineOf(line)); }
