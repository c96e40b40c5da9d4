#include "platform/linux/x11/X11Titles.h"

#include "base/codePage.h"
#include "base/userText.h"

#include <QSocketNotifier>

#include <algorithm>

namespace {

/// Whoever draws a title lays out the whole of it, at each redraw. This is far more than a screen
/// can show, and a quarter of what readers commonly ask for at once.
constexpr std::size_t longestTitle = 4096;

/// All of its bytes stand for the same characters in Latin-1, the code of old text properties, and
/// for none that those must not hold.
bool isLatin1(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char each) {
        const auto code = static_cast<unsigned char>(each);
        return (code >= 0x20 && code < 0x7F) || code >= 0xA0 || each == '\t' || each == '\n';
    });
}

void writeProperties(X11Client& client, xcb_window_t window, std::string_view text) {
    const X11Atoms& atoms = client.atoms();
    const auto write = [&](xcb_atom_t name, xcb_atom_t type, std::string_view value) {
        xcb_change_property(client.handle(), XCB_PROP_MODE_REPLACE, window, name, type, 8,
                            static_cast<std::uint32_t>(value.size()), value.data());
    };
    const std::string_view whole = text.substr(0, text.find('\0'));
    const std::string characters = userText::shown(userText::beginning(whole, longestTitle));
    const std::string_view utf8 = codePage::cutUtf8(characters, longestTitle);
    // This comes first, so that whoever sees the title sees who wrote it.
    write(atoms.cobweaveTitle, atoms.utf8String, utf8);
    write(atoms.netWmName, atoms.utf8String, utf8);
    write(atoms.netWmIconName, atoms.utf8String, utf8);
    const std::string old = codePage::fromUtf8(utf8);
    const bool isOld = isLatin1(old) && codePage::toUtf8(old) == utf8 && utf8.size() < longestTitle;
    const xcb_atom_t type = isOld ? xcb_atom_t{XCB_ATOM_STRING} : atoms.utf8String;
    write(XCB_ATOM_WM_NAME, type, isOld ? old : utf8);
    write(XCB_ATOM_WM_ICON_NAME, type, isOld ? old : utf8);
}

}  // namespace

X11Titles::X11Titles(X11Client& client) : client(client) {
    if (!client.isConnected()) return;
    writability = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(client.handle()),
                                                    QSocketNotifier::Write);
    writability->setEnabled(false);
    QObject::connect(writability.get(), &QSocketNotifier::activated, writability.get(),
                     [this] { writePending(); });
}

X11Titles::~X11Titles() = default;

void X11Titles::write(xcb_window_t window, std::string_view text) {
    if (!client.isConnected()) return;
    pending[window] = text;
    writePending();
}

void X11Titles::clear() {
    writability.reset();
    pending.clear();
}

void X11Titles::writePending() {
    while (!pending.empty() && client.canWrite()) {
        const auto title = pending.extract(pending.begin());
        writeProperties(client, title.key(), title.mapped());
        client.flush();
    }
    writability->setEnabled(!pending.empty());
}
