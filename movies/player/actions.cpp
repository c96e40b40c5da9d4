#include "movies/player/actions.h"

#include "base/Failure.h"
#include "movies/player/Reader.h"
#include "movies/player/limits.h"
#include "movies/player/targets.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

namespace swf {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t mostOnStack = 64;

/// A machine for one piece of byte code. Its stack holds texts only; numbers are written out.
class Machine {
public:
    Machine(Stage& stage, InstanceNumber clip, std::string_view code,
            std::vector<Command>& commands)
        : stage(stage), home(clip), target(clip), reader(code), commands(commands) {}

    void run() {
        while (!reader.atEnd() && stage.find(home) != nullptr && stage.work()) {
            const unsigned action = reader.u8();
            if (action == 0) return;
            const std::size_t length = action >= 0x80 ? reader.u16() : 0;
            // Long actions take longer.
            if (!stage.work(static_cast<unsigned>(length / 64))) return;
            if (!step(action, Reader(reader.bytes(length)))) return;
        }
    }

private:
    /// False at the end.
    bool step(unsigned action, Reader data) {
        switch (action) {
            case 0x04: goBy(1); return true;
            case 0x05: goBy(-1); return true;
            case 0x06: setPlaying(true); return true;
            case 0x07: setPlaying(false); return true;
            case 0x17: static_cast<void>(pop()); return true;
            case 0x20: setTarget(pop()); return true;
            case 0x21: join(); return true;
            case 0x81: goTo(data.u16(), false); return true;
            case 0x83: commandFromData(data); return true;
            case 0x88: readPool(data); return true;
            case 0x8A: return true;  // all frames are there
            case 0x8B: setTarget(std::string(data.text())); return true;
            case 0x8C: goToLabel(data.text(), false); return true;
            case 0x96: push(data); return true;
            case 0x9A: commandFromStack(); return true;
            case 0x9F: goToFromStack(data); return true;
            case 0x9B:
            case 0x8E:
            case 0x94: passBody(action, data); return true;
            case 0x99:                // jump
            case 0x9D:                // if
            case 0x9E:                // call
            case 0x3E: return false;  // return
            default: stack.clear(); return true;
        }
    }

    void goBy(int frames) {
        const Clip* const clip = stage.find(target);
        if (clip == nullptr) return;
        const bool possible =
            frames > 0 ? clip->frame + 1 < clip->timeline->frameCount() : clip->frame > 0;
        if (possible) goTo(clip->frame + static_cast<std::size_t>(frames), false);
    }

    void goTo(std::size_t frame, bool plays) {
        Clip* const clip = stage.find(target);
        if (clip == nullptr || clip->timeline->frameCount() == 0) return;
        clip->playing = plays;
        stage.goTo(*clip, std::min(frame, clip->timeline->frameCount() - 1));
    }

    void goToLabel(std::string_view label, bool plays) {
        const Clip* const clip = stage.find(target);
        if (clip == nullptr) return;
        const auto found = clip->timeline->labels.find(label);
        if (found != clip->timeline->labels.end()) goTo(found->second, plays);
    }

    void setPlaying(bool plays) {
        if (Clip* const clip = stage.find(target)) clip->playing = plays;
    }

    void setTarget(std::string_view path) {
        target = path.empty() ? home : findTarget(stage, home, path);
    }

    /// A frame's number, from 1, or label, either with a path and a colon in front.
    void goToFromStack(Reader data) {
        const unsigned flags = data.u8();
        const std::size_t bias = flags & 2U ? data.u16() : 0;
        std::string frame = pop();
        const InstanceNumber before = target;
        if (const std::size_t colon = frame.rfind(':'); colon != std::string::npos) {
            setTarget(frame.substr(0, colon));
            frame = frame.substr(colon + 1);
        }
        unsigned number = 0;
        const char* const end = frame.data() + frame.size();
        const auto [stop, error] = std::from_chars(frame.data(), end, number);
        const bool plays = flags & 1U;
        if (error == std::errc() && stop == end) {
            if (number > 0) goTo(number - 1 + bias, plays);
        } else {
            goToLabel(frame, plays);
        }
        target = before;
    }

    void commandFromData(Reader data) {
        const std::string_view address = data.text();
        command(address, data.text());
    }

    void commandFromStack() {
        const std::string arguments = pop();
        command(pop(), arguments);
    }

    void command(std::string_view address, std::string_view arguments) {
        constexpr auto prefix = "fscommand:"sv;
        if (address.size() < prefix.size() || commands.size() == limits::commands ||
            !equalButForCase(address.substr(0, prefix.size()), prefix)) {
            return;
        }
        commands.push_back(
            {std::string(address.substr(prefix.size()).substr(0, limits::commandBytes)),
             std::string(arguments.substr(0, limits::commandBytes))});
    }

    void push(Reader data) {
        while (!data.atEnd())
            put(pushed(data));
    }

    std::string pushed(Reader& data) {
        switch (data.u8()) {
            case 0: return std::string(data.text().substr(0, limits::commandBytes));
            case 1: return written(bitsAs<float>(data.u32()));
            case 2: return "null";
            case 3: return "";
            case 4: data.skip(1); return "";
            case 5: return data.u8() != 0 ? "1" : "0";
            case 6: {
                const std::uint64_t high = data.u32();
                return written(bitsAs<double>(high << 32U | data.u32()));
            }
            case 7: return std::to_string(static_cast<std::int32_t>(data.u32()));
            case 8: return pooled(data.u8());
            case 9: return pooled(data.u16());
            default: throw Failure("an unknown kind of value");
        }
    }

    void readPool(Reader data) {
        pool.clear();
        for (unsigned left = data.u16(); left > 0; --left)
            pool.push_back(data.text());
    }

    [[nodiscard]] std::string pooled(std::size_t index) const {
        return index < pool.size() ? std::string(pool[index].substr(0, limits::commandBytes)) : "";
    }

    template <typename Number, typename Bits>
    static Number bitsAs(Bits bits) {
        Number number;
        static_assert(sizeof number == sizeof bits);
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }

    static std::string written(double number) {
        return std::isfinite(number) && std::abs(number) < 1e9
                   ? std::to_string(static_cast<long>(number))
                   : "";
    }

    void join() {
        const std::string last = pop();
        put((pop() + last).substr(0, limits::commandBytes));
    }

    void put(std::string value) {
        if (stack.size() == mostOnStack) throw Failure("too much on the stack");
        if (!stage.work(static_cast<unsigned>(value.size() / 64))) {
            throw Failure("too much for one turn");
        }
        stack.push_back(std::move(value));
    }

    std::string pop() {
        if (stack.empty()) return {};
        std::string value = std::move(stack.back());
        stack.pop_back();
        return value;
    }

    /// A function's or block's code follows its head; it is not carried out.
    void passBody(unsigned action, Reader data) {
        stack.clear();
        if (action != 0x94) {
            static_cast<void>(data.text());
            const unsigned parameters = data.u16();
            if (action == 0x8E) data.skip(3);
            for (unsigned left = parameters; left > 0; --left) {
                if (action == 0x8E) data.skip(1);
                static_cast<void>(data.text());
            }
        }
        reader.skip(data.u16());
    }

    Stage& stage;
    InstanceNumber home;
    InstanceNumber target;
    Reader reader;
    std::vector<Command>& commands;
    std::vector<std::string> stack;
    std::vector<std::string_view> pool;
};

}  // namespace

void runActions(Stage& stage, InstanceNumber clip, std::string_view code,
                std::vector<Command>& commands) {
    attempt([&] { Machine(stage, clip, code, commands).run(); });
}

}  // namespace swf
