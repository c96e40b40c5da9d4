#include "platform/Client.h"

#include "base/Failure.h"
#include "platform/linux/Folders.h"
#include "platform/linux/startProgram.h"

#include <array>
#include <filesystem>
#include <string>
#include <system_error>

namespace {

/// The client's setup is of 32 bits: in a prefix for programs of both kinds it is in the second
/// one.
constexpr std::array folders32{"Program Files", "Program Files (x86)"};

/// The client in the Wine prefix in use. Wine finds the prefix in the environment, as we do.
class WineClient final : public Client {
public:
    void start() override {
        const std::filesystem::path prefix = folders::winePrefix();
        // Where there is no prefix, Wine would make one, of hundreds of megabytes.
        std::error_code unreadable;
        if (!std::filesystem::exists(prefix / "system.reg", unreadable)) return;
        for (const char* const folder : folders32) {
            const auto file = prefix / "drive_c" / folder / "MSN Messenger" / "msnmsgr.exe";
            if (!std::filesystem::exists(file, unreadable)) continue;
            attempt([&] {
                startProgram(
                    {"wine", std::string("C:\\") + folder + "\\MSN Messenger\\msnmsgr.exe"});
            });
            return;
        }
    }
};

}  // namespace

std::unique_ptr<Client> makeClient() { return std::make_unique<WineClient>(); }
