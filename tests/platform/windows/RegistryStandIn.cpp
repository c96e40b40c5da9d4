#include "tests/platform/shared/RegistryStandIn.h"

#include "platform/windows/wideText.h"
#include "platform/windows/win32.h"

/// A part of the real registry, which is removed afterwards.
struct RegistryStandIn::System {
    static constexpr const wchar_t* root = L"Software\\Cobweave test";
};

RegistryStandIn::RegistryStandIn() : system(std::make_unique<System>()) {}

RegistryStandIn::~RegistryStandIn() { RegDeleteTreeW(HKEY_CURRENT_USER, System::root); }

void RegistryStandIn::add(const std::string& name) {
    const std::wstring path = System::root + (L'\\' + wideText::fromUtf8(name));
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                    nullptr);
    RegCloseKey(key);
}

std::unique_ptr<Registry> RegistryStandIn::open() const { return makeRegistry(); }
