#include "platform/Client.h"

#include "base/Failure.h"
#include "platform/linux/startProgram.h"

namespace {

/// The client in the Wine prefix in use. Wine finds the prefix in the environment, as we do.
class WineClient final : public Client {
public:
    void start() override {
        attempt([] { startProgram({"wine", "C:\\Program Files\\MSN Messenger\\msnmsgr.exe"}); });
    }
};

}  // namespace

std::unique_ptr<Client> makeClient() { return std::make_unique<WineClient>(); }
