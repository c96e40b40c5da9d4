#include "movies/player/actions.h"

#include "base/Failure.h"
#include "base/text.h"
#include "movies/format/Reader.h"
#include "movies/format/codes.h"
#include "movies/player/limits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>

namespace swf {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t mostOnStack = 64;

/// The flags of `Action::GotoFrame2`.
constexpr unsigned playsOn = 1;
constexpr unsigned hasBias = 2;

InstanceNumber named(const Clip& clip, std::string_view name) {
    if (name == "_parent"sv || name == ".."sv) return clip.parent;
    if (name.empty() || name == "this"sv) return clip.number;
    const std::string wanted = lowerCase(name);
    for (const auto& [depth, instance] : clip.list) {
        const bool fits = instance.clip && instance.name.size() == name.size();
        if (fits && lowerCase(instance.name) == wanted) return instance.number;
    }
    return 0;
}

/// The clip that a path leads to from another one, written with slashes ("/a/b", "../a") or dots
/// ("_root.a", "_parent.b"); 0 when there is none.
InstanceNumber findTarget(Stage& stage, InstanceNumber from, std::string_view path) {
    const bool slashed = path.find('/') != std::string_view::npos || path == ".."sv;
    const char separator = slashed ? '/' : '.';
    InstanceNumber at = slashed && path.front() == '/' ? stage.root().number : from;
    while (!path.empty()) {
        const std::size_t length = std::min(path.find(separator), path.size());
        const std::string_view name = path.substr(0, length);
        path.remove_prefix(std::min(length + 1, path.size()));
        // The movie itself is found from anywhere, also when the clip has gone.
        if (name == "_root"sv || name == "_level0"sv) {
            at = stage.root().number;
            continue;
        }
        const Clip* const clip = stage.find(at);
        if (clip == nullptr) return 0;
        // A name is compared with that of everything there.
        if (!stage.work(static_cast<unsigned>(1 + clip->list.size() * (8 + length) / 64))) return 0;
        at = named(*clip, name);
    }
    return stage.find(at) == nullptr ? 0 : at;
}

/// A machine for one piece of byte code. Its stack holds texts only; numbers are written out.
class Machine {
public:
    Machine(Stage& stage, InstanceNumber clip, std::string_view code,
            std::vector<Command>& commands)
        : stage(stage), home(clip), target(clip), reader(code), commands(commands) {}

    void run() {
        while (!reader.atEnd() && stage.work()) {
            const unsigned code = reader.u8();
            const auto action = static_cast<Action>(code);
            if (action == Action::End) return;
            const std::size_t length = code >= longAction ? reader.u16() : 0;
            // Long actions take longer.
            if (!stage.work(static_cast<unsigned>(length / 64))) return;
            if (!step(action, Reader(reader.bytes(length)))) return;
        }
    }

private:
    /// False at the end.
    bool step(Action action, Reader data) {
        switch (action) {
            case Action::NextFrame: goBy(1); return true;
            case Action::PreviousFrame: goBy(-1); return true;
            case Action::Play: setPlaying(true); return true;
            case Action::Stop: setPlaying(false); return true;
            case Action::Pop: static_cast<void>(pop()); return true;
            case Action::SetTarget2: setTarget(pop()); return true;
            case Action::StringAdd: join(); return true;
            case Action::GotoFrame: goTo(data.u16(), false); return true;
            case Action::GetURL: commandFromData(data); return true;
            case Action::ConstantPool: readPool(data); return true;
            case Action::WaitForFrame: return true;  // all frames are there
            case Action::SetTarget: setTarget(std::string(data.text())); return true;
            case Action::GoToLabel: goToLabel(data.text(), false); return true;
            case Action::Push: push(data); return true;
            case Action::GetURL2: commandFromStack(); return true;
            case Action::GotoFrame2: goToFromStack(data); return true;
            case Action::DefineFunction:
            case Action::DefineFunction2:
            case Action::With: passBody(action, data); return true;
            case Action::Jump:                  // jump
            case Action::If:                    // if
            case Action::Call:                  // call
            case Action::Return: return false;  // return
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
        const auto found = clip->timeline->labels.find(lowerCase(label));
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
        const std::size_t bias = flags & hasBias ? data.u16() : 0;
        std::string frame = pop();
        const InstanceNumber before = target;
        if (const std::size_t colon = frame.rfind(':'); colon != std::string::npos) {
            setTarget(frame.substr(0, colon));
            frame = frame.substr(colon + 1);
        }
        unsigned number = 0;
        const char* const end = frame.data() + frame.size();
        const auto [stop, error] = std::from_chars(frame.data(), end, number);
        const bool plays = flags & playsOn;
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
        if (commands.size() == limits::commands || !beginsInAnyCase(address, prefix)) return;
        commands.push_back(
            {std::string(address.substr(prefix.size()).substr(0, limits::commandBytes)),
             std::string(arguments.substr(0, limits::commandBytes))});
    }

    void push(Reader data) {
        while (!data.atEnd())
            put(pushed(data));
    }

    std::string pushed(Reader& data) {
        switch (static_cast<PushType>(data.u8())) {
            case PushType::String: return std::string(data.text().substr(0, limits::commandBytes));
            case PushType::Float: return written(bitsAs<float>(data.u32()));
            case PushType::Null: return "null";
            case PushType::Undefined: return "";
            case PushType::Register: data.skip(1); return "";
            case PushType::Boolean: return data.u8() != 0 ? "1" : "0";
            case PushType::Double: {
                const std::uint64_t high = data.u32();
                return written(bitsAs<double>(high << 32U | data.u32()));
            }
            case PushType::Integer: return std::to_string(static_cast<std::int32_t>(data.u32()));
            case PushType::Constant8: return pooled(data.u8());
            case PushType::Constant16: return pooled(data.u16());
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
    void passBody(Action action, Reader data) {
        stack.clear();
        if (action != Action::With) {
            static_cast<void>(data.text());
            const unsigned parameters = data.u16();
            if (action == Action::DefineFunction2) data.skip(3);
            for (unsigned left = parameters; left > 0; --left) {
                if (action == Action::DefineFunction2) data.skip(1);
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
