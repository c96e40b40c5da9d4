#include "base/userText.h"

#include "base/codePage.h"

std::string userText::shown(std::string_view bytes) {
    return codePage::isUtf8(bytes) ? std::string(bytes) : codePage::toUtf8(bytes);
}

std::string userText::kept(std::string_view utf8) {
    std::string bytes = codePage::fromUtf8(utf8);
    return shown(bytes) == utf8 ? bytes : std::string(utf8);
}

std::string_view userText::beginning(std::string_view bytes, std::size_t size) {
    constexpr std::size_t mostBack = 3;
    const std::string_view cut = codePage::cutUtf8(bytes, size);
    return cut.size() + mostBack < size ? bytes.substr(0, size) : cut;
}
