#include "platform/Client.h"

#include "base/Failure.h"
#include "platform/windows/startProgram.h"

#include <filesystem>
#include <system_error>

namespace {

/// Its setup is of 32 bits: where the system has programs of both kinds, it is in the second one.
constexpr const wchar_t* places[] = {L"C:\\Program Files\\MSN Messenger\\msnmsgr.exe",
                                     L"C:\\Program Files (x86)\\MSN Messenger\\msnmsgr.exe"};

class WindowsClient final : public Client {
public:
    void start() override {
        for (const wchar_t* const place : places) {
            std::error_code unknown;
            if (!std::filesystem::exists(place, unknown)) continue;
            attempt([&] { startProgram(place); });
            return;
        }
    }
};

}  // namespace

std::unique_ptr<Client> makeClient() { return std::make_unique<WindowsClient>(); }
