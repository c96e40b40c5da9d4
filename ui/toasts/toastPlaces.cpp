#include "ui/toasts/toastPlaces.h"

#include "base/Failure.h"
#include "ui/common/twips.h"

namespace toastPlaces {

int lastPlace(int screenHeight) {
    // Twips divided by pixels: a screen of 768 lines has 98 places, of which six can be seen.
    constexpr int heightInPixels = pixels(height);
    return screenHeight / heightInPixels - 2;
}

std::optional<std::int16_t> TaskbarHeight(int screenHeight, int workBottom) {
    return checked<std::int16_t>((pixels(screenHeight) - workBottom) * twipsPerPixel);
}

int top(int slot, int toastHeight, int screenHeight, int taskbarHeight) {
    return screenHeight - toastHeight * (slot + 1) - taskbarHeight;
}

}  // namespace toastPlaces
