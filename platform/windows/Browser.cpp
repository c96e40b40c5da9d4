#include "platform/Browser.h"

#include "base/Failure.h"
#include "base/text.h"
#include "platform/windows/startProgram.h"
#include "platform/windows/wideText.h"

namespace {

class WindowsBrowser final : public Browser {
public:
    void open(std::string_view address) override {
        if (address.find('\0') != std::string_view::npos) {
            throw Failure("an address cannot hold a zero");
        }
        // The system puts it between quotes into a command line, of which a quote would be the end.
        startProgram(wideText::fromBytes(replaceAll(address, "\"", "%22")));
    }
};

}  // namespace

std::unique_ptr<Browser> makeBrowser() { return std::make_unique<WindowsBrowser>(); }
