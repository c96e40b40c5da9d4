#include "platform/Registry.h"

#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

namespace {

class WindowsRegistry final : public Registry {
public:
    [[nodiscard]] bool currentUserHasKey(std::string_view path) override {
        HKEY key = nullptr;
        const auto name = wideText::fromUtf8(path);
        if (RegOpenKeyExW(HKEY_CURRENT_USER, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
            return false;
        }
        RegCloseKey(key);
        return true;
    }
};

}  // namespace

std::unique_ptr<Registry> makeRegistry() { return std::make_unique<WindowsRegistry>(); }
