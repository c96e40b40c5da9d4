#include "bench/desktop/Desk.h"
#include "tests/support/Relay.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;

/// What nothing may hold a command up by, in milliseconds.
constexpr double longestPause = 50;
/// How often an idle program may wake up, a second.
constexpr double mostWakeUps = 0.2;

/// A client that sends one short command after the other through the program, each when the last
/// one has arrived, from the moment that it is made.
class RoundTrips {
public:
    RoundTrips() : relay(Relay::through(Program::port)), runner([this] { run(); }) {}
    ~RoundTrips() {
        if (runner.joinable()) (void)finish();
    }
    RoundTrips(const RoundTrips&) = delete;
    RoundTrips& operator=(const RoundTrips&) = delete;

    /// In milliseconds.
    struct Result {
        double median;
        double longest;
    };
    /// Ends the series.
    [[nodiscard]] Result finish() {
        ending = true;
        runner.join();
        std::ranges::sort(times);
        return {times.at(times.size() / 2).count(), times.back().count()};
    }

private:
    void run() {
        while (!ending) {
            const auto begin = std::chrono::steady_clock::now();
            (void)relay.up("PNG\r\n");
            times.emplace_back(std::chrono::steady_clock::now() - begin);
            // Leaves the other core to those who make trouble.
            std::this_thread::sleep_for(200us);
        }
    }

    Relay relay;
    std::vector<std::chrono::duration<double, std::milli>> times;
    std::atomic<bool> ending = false;
    std::thread runner;
};

bool allHold = true;

void tell(const std::string& what, double value, const char* unit, bool holds) {
    std::cout << std::left << std::setw(58) << what << std::right << std::fixed
              << std::setprecision(2) << std::setw(9) << value << ' ' << unit
              << (holds ? "" : "   <- MISSED") << std::endl;
    allHold = allHold && holds;
}

void measureIdle(Desk& desk) {
    std::vector<Relay> open;
    for (int count = 0; count < 10; ++count)
        open.push_back(Relay::through(Program::port));
    // What was written at the start has been brought to the disk then.
    std::this_thread::sleep_for(6s);
    constexpr auto time = 10s;
    const auto before = desk.program->wakeUps();
    std::this_thread::sleep_for(time);
    const double often = static_cast<double>(desk.program->wakeUps() - before) / time.count();
    tell("idle with the icon and ten connections, wake-ups", often, "/s", often <= mostWakeUps);
}

template <typename Trouble>
void measurePause(const std::string& what, double quietest, Trouble&& makeTrouble) {
    RoundTrips trips;
    std::this_thread::sleep_for(200ms);
    makeTrouble();
    std::this_thread::sleep_for(500ms);
    const RoundTrips::Result result = trips.finish();
    tell(what + ", median round trip", result.median, "ms", true);
    tell(what + ", longest", result.longest, "ms", result.longest <= quietest + longestPause);
}

void waitForToastsToEnd() { std::this_thread::sleep_for(7500ms); }

/// A thousand lines a second for three seconds, in pieces that are single commands.
void floodTheLog(Relay& notification) {
    const auto begin = std::chrono::steady_clock::now();
    for (int line = 0; line < 3000; ++line) {
        std::this_thread::sleep_until(begin + line * 1ms);
        (void)notification.down("FLN contact" + std::to_string(line) + "@example.com\r\n");
    }
}

void measurePauses(Desk& desk) {
    double quietest = 0;
    {
        RoundTrips trips;
        std::this_thread::sleep_for(2s);
        const RoundTrips::Result result = trips.finish();
        tell("quiet, median round trip", result.median, "ms", true);
        tell("quiet, longest", result.longest, "ms", true);
        quietest = result.longest;
    }
    Relay notification = Relay::through(Program::port);
    const auto ring = [&](const std::string& contact) {
        const std::string command = "RNG 7 127.0.0.1:1863 CKI 17.21 " + contact + " Bob\r\n";
        notification.server.send(command);
        (void)notification.client.receive(command.size());
    };
    measurePause("a toast of 60 KB", quietest,
                 [&] { ring(std::string(60'000, 'x') + "@example.com"); });
    waitForToastsToEnd();
    measurePause("1,000 toasts at once", quietest, [&] {
        for (int count = 0; count < 1000; ++count)
            ring("bob@example.com");
    });
    waitForToastsToEnd();
    measurePause("names of control characters", quietest, [&] {
        for (int count = 0; count < 11; ++count)
            ring(std::string(2000, '\x01'));
    });
    waitForToastsToEnd();

    desk.choose("l", "Cobweave - Log");
    std::thread drag([&] {
        desk.run(
            "w=$(xdotool search --onlyvisible --name '^Cobweave - Log$'); for i in $(seq 60); do "
            "xdotool windowsize $w $((500 + i * 5)) $((300 + i * 4)) windowmove $w $i $i; "
            "sleep 0.03; done");
    });
    measurePause("3,000 log lines in 3 s, the window dragged", quietest,
                 [&] { floodTheLog(notification); });
    drag.join();
}

}  // namespace

int main() {
    try {
        {
            const Program without;
            std::this_thread::sleep_for(2s);
            tell("memory without a display", static_cast<double>(without.memory()) / 1048576, "MiB",
                 true);
        }
        Desk desk;
        measureIdle(desk);
        tell("memory with the icon", static_cast<double>(desk.program->memory()) / 1048576, "MiB",
             true);
        measurePauses(desk);
        tell("memory with the log open, 3,000 lines",
             static_cast<double>(desk.program->memory()) / 1048576, "MiB", true);
        return allHold ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& trouble) {
        std::cerr << "The measurement cannot go on: " << trouble.what() << std::endl;
        return EXIT_FAILURE;
    }
}
