#include "movies/qt/StillLayer.h"

#include <algorithm>
#include <utility>

namespace {

/// The most things that are compared.
constexpr std::size_t mostThings = 4096;

}  // namespace

void StillLayer::compare(const swf::DisplayList& list, const swf::Matrix& toSurface,
                         const QTransform& surfaceToPixels, QSize surfaceSize) {
    moved = matrix != toSurface || toPixels != surfaceToPixels || size != surfaceSize;
    matrix = toSurface;
    toPixels = surfaceToPixels;
    size = surfaceSize;
    std::vector<Thing> now;
    for (const auto& [depth, instance] : list) {
        const bool isPlain = instance.inner() == nullptr && instance.clipDepth == 0;
        if (!isPlain || now.size() == mostThings) break;
        now.push_back({instance.number, instance.matrix, instance.colors, instance.ratio});
    }
    const auto changed = std::mismatch(now.begin(), now.end(), before.begin(), before.end());
    const auto first = static_cast<std::size_t>(changed.first - now.begin());
    equal = !moved && first == now.size() && first == before.size() ? equal + 1 : 0;
    if (moved) {
        same = 0;
    } else if (equal != 1) {
        same = first;
    }
    before = std::move(now);
    if (moved || same < count) drop();
}

void StillLayer::giveUp() {
    const std::size_t failed = count;
    drop();
    most = failed;
}

void StillLayer::drop() {
    image = {};
    count = 0;
    most = mostThings;
}
