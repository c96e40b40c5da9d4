#include "tests/support/XServer.h"

#include <vector>

namespace {

std::vector<std::string> command(int screens) {
    std::vector<std::string> words{"Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset"};
    for (int screen = 0; screen < screens; ++screen) {
        words.insert(words.end(), {"-screen", std::to_string(screen), "1024x768x24"});
    }
    return words;
}

}  // namespace

XServer::XServer(int screens) : server(command(screens)), displayName(":" + server.readLine()) {}
