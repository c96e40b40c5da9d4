#include "platform/linux/x11/X11Title.h"

#include "base/codePage.h"

#include <algorithm>
#include <string>

namespace {

/// Whoever draws a title lays out the whole of it, at each redraw. So much is far more than a
/// screen can show, and a quarter of what readers commonly ask for at once.
constexpr std::size_t longest = 4096;

std::string characters(std::string_view text) {
    std::string utf8 = codePage::toUtf8(text.substr(0, std::min(text.find('\0'), longest)));
    std::size_t end = std::min(utf8.size(), longest);
    while (end < utf8.size() && (utf8[end] & '\xC0') == '\x80')
        --end;
    utf8.resize(end);
    return utf8;
}

/// All of its bytes stand for the same characters in Latin-1, the code of old text properties, and
/// for none that those must not hold.
bool isLatin1(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char each) {
        const auto code = static_cast<unsigned char>(each);
        return (code >= 0x20 && code < 0x7F) || code >= 0xA0 || each == '\t' || each == '\n';
    });
}

}  // namespace

void writeX11Title(X11Client& client, xcb_window_t window, std::string_view text) {
    const X11Atoms& atoms = client.atoms();
    const std::string utf8 = characters(text);
    const auto write = [&](xcb_atom_t name, xcb_atom_t type, std::string_view value) {
        xcb_change_property(client.handle(), XCB_PROP_MODE_REPLACE, window, name, type, 8,
                            static_cast<std::uint32_t>(value.size()), value.data());
    };
    // First, so that whoever sees the title sees who wrote it.
    write(atoms.cobweaveTitle, atoms.utf8String, utf8);
    write(atoms.netWmName, atoms.utf8String, utf8);
    write(atoms.netWmIconName, atoms.utf8String, utf8);
    const std::string_view whole = text.substr(0, text.find('\0'));
    const bool isOld = isLatin1(whole) && utf8.size() < longest;
    const xcb_atom_t type = isOld ? xcb_atom_t{XCB_ATOM_STRING} : atoms.utf8String;
    write(XCB_ATOM_WM_NAME, type, isOld ? whole : utf8);
    write(XCB_ATOM_WM_ICON_NAME, type, isOld ? whole : utf8);
}
