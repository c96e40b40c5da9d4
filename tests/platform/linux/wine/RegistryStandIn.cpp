#include "tests/platform/shared/RegistryStandIn.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/Variable.h"

#include <fstream>

/// The file of a Wine prefix.
struct RegistryStandIn::System {
    TemporaryFolder prefix;
};

RegistryStandIn::RegistryStandIn() : system(std::make_unique<System>()) {}

RegistryStandIn::~RegistryStandIn() = default;

void RegistryStandIn::add(const std::string& name) {
    std::ofstream file(system->prefix.path() / "user.reg", std::ios::app);
    file << "\n[Software\\\\Cobweave test\\\\" << name << "] 1700000000\n";
}

std::unique_ptr<Registry> RegistryStandIn::open() const {
    const Variable prefix("WINEPREFIX", system->prefix.path().string());
    return makeRegistry();
}
