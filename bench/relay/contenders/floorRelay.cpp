#include "bench/relay/contenders/EpollRelay.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments) {
    try {
        const auto port = portArgument(count, arguments);
        EpollRelay relay(port);
        std::cout << "floor_relay listens on port " << port << std::endl;
        for (;;)
            relay.serve(-1);
    } catch (const std::exception& error) {
        std::cerr << "floor_relay: " << error.what() << '\n';
        return 1;
    }
}
