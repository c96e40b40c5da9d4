#include "ui/toasts/toastPlaces.h"

#include "base/Failure.h"
#include "ui/common/twips.h"

namespace toastPlaces {

int lastPlace(int screenHeight) {
    // Twips are divided by pixels here. Users have never had fewer toasts than slots for it.
    constexpr int heightInPixels = pixels(height);
    return screenHeight / heightInPixels - 2;
}

std::int16_t TaskbarHeight(int screenHeight, int workBottom) {
    return need(checked<std::int16_t>((pixels(screenHeight) - workBottom) * twipsPerPixel));
}

int top(int slot, int screenHeight, int taskbarHeight) {
    return screenHeight - height * (slot + 1) - taskbarHeight;
}

}  // namespace toastPlaces
