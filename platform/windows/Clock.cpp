#include "platform/Clock.h"

#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

#include <array>

namespace {

/// Writes as the user's regional settings say.
class WindowsClock final : public Clock {
public:
    [[nodiscard]] std::string timeText() override {
        return text([](wchar_t* buffer, int size) {
            return GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, nullptr, nullptr, buffer, size);
        });
    }
    [[nodiscard]] std::string dateText() override {
        return text([](wchar_t* buffer, int size) {
            return GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr,
                                   buffer, size, nullptr);
        });
    }

private:
    template <typename Format>
    static std::string text(Format format) {
        std::array<wchar_t, 256> buffer{};
        // The size counts the zero at the end, and is 0 when the call fails.
        const int size = format(buffer.data(), static_cast<int>(buffer.size()));
        if (size == 0) return {};
        return wideText::toUtf8({buffer.data(), static_cast<std::size_t>(size) - 1});
    }
};

}  // namespace

std::unique_ptr<Clock> makeClock() { return std::make_unique<WindowsClock>(); }
