#include "movies/player/targets.h"

#include <algorithm>

namespace swf {

namespace {

using namespace std::string_view_literals;

char small(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

InstanceNumber named(const Stage& stage, const Clip& clip, std::string_view name) {
    if (name == "_root"sv || name == "_level0"sv) return stage.root().number;
    if (name == "_parent"sv || name == ".."sv) return clip.parent;
    if (name.empty() || name == "this"sv) return clip.number;
    for (const auto& [depth, instance] : clip.list) {
        if (instance.clip && equalButForCase(instance.name, name)) return instance.number;
    }
    return 0;
}

}  // namespace

bool equalButForCase(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return small(left) == small(right); });
}

InstanceNumber findTarget(Stage& stage, InstanceNumber from, std::string_view path) {
    const bool slashed = path.find('/') != std::string_view::npos || path == ".."sv;
    const char separator = slashed ? '/' : '.';
    InstanceNumber at = slashed && path.front() == '/' ? stage.root().number : from;
    while (!path.empty()) {
        const Clip* const clip = stage.find(at);
        if (clip == nullptr) return 0;
        const std::size_t length = std::min(path.find(separator), path.size());
        // A name is compared with that of everything there.
        if (!stage.work(static_cast<unsigned>(1 + clip->list.size() * (8 + length) / 64))) return 0;
        at = named(stage, *clip, path.substr(0, length));
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return stage.find(at) == nullptr ? 0 : at;
}

}  // namespace swf
