#include "platform/windows/wideText.h"

#include "base/userText.h"
#include "platform/windows/win32.h"

#include <array>

std::wstring wideText::fromUtf8(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    std::wstring wide(utf8.size(), L'\0');
    const int count = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(count));
    return wide;
}

std::string wideText::toUtf8(std::wstring_view wide) {
    constexpr std::size_t mostBytesOfAUnit = 3;
    const int size = static_cast<int>(wide.size());
    std::string utf8(wide.size() * mostBytesOfAUnit, '\0');
    const int count = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(),
                                          static_cast<int>(utf8.size()), nullptr, nullptr);
    utf8.resize(static_cast<std::size_t>(count));
    return utf8;
}

std::wstring wideText::fromBytes(std::string_view bytes) {
    return fromUtf8(userText::shown(bytes));
}

std::string wideText::describe(unsigned long error) {
    std::array<wchar_t, 512> text{};
    const DWORD size =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                       0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::wstring_view words(text.data(), size);
    // The line end goes, and the full stop before it: the words become a part of a sentence.
    words = words.substr(0, words.find_last_not_of(L". \r\n") + 1);
    if (words.empty()) return "error " + std::to_string(error);
    return toUtf8(words);
}
