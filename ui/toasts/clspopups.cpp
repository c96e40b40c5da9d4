#include "ui/toasts/clspopups.h"

#include "desktop/mdlFunctions.h"
#include "platform/ForeignWindows.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace {

QRect screenPlace() { return QGuiApplication::primaryScreen()->geometry(); }

int screenHeight() { return screenPlace().height() * twipsPerPixel; }

}  // namespace

std::optional<std::int16_t> clspopups::TaskbarHeight() {
    const QRect screen = screenPlace();
    int bottom = screen.height();
    if (const auto area = windows.workArea()) {
        // The area is in the system's own pixels, from the corner of the whole desktop; this screen
        // may be a part of it.
        const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
        const int below = static_cast<int>((area->bottom - screen.top()) / scale);
        if (below > 0) bottom = std::min(bottom, below);
    }
    return toastPlaces::TaskbarHeight(screenHeight(), bottom);
}

bool clspopups::popup(std::string_view text) {
    lastForeground = others.foreground();
    const int last = toastPlaces::lastPlace(screenHeight());
    int slot = 0;
    while (slot <= last && slot < toastPlaces::slots && toastSlots.at(slot))
        ++slot;
    if (slot > last) return false;
    if (slot < toastPlaces::slots) show(static_cast<std::size_t>(slot), text);
    // The window gets the keyboard back also when no place was free.
    for (int time = 0; time < 2; ++time)
        others.giveFocusBack(lastForeground);
    return true;
}

void clspopups::show(std::size_t slot, std::string_view text) {
    frmpopup& window = load(slot);
    window.Label1.setText(text);
    if (const auto taskbar = TaskbarHeight()) {
        const int top = toastPlaces::top(static_cast<int>(slot), window.height() * twipsPerPixel,
                                         screenHeight(), *taskbar);
        window.move(screenPlace().topLeft() + QPoint(pixels(toastPlaces::left), pixels(top)));
    }
    mdlFunctions::SetTopMost("Enabled", window.winId(), windows);
    std::int16_t invisible = 0;
    mdlFunctions::SetWindowOpacity(window.winId(), invisible, windows);
    window.FadeIn();
    window.show();
}

frmpopup& clspopups::load(std::size_t slot) {
    auto& window = toastSlots.at(slot);
    window = std::make_unique<frmpopup>(loop, windows);
    window->unloaded = [this, slot] { unload(slot); };
    return *window;
}

void clspopups::unload(std::size_t slot) { toastSlots.at(slot).release()->deleteLater(); }
