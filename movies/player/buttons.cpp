#include "movies/player/buttons.h"

#include "movies/player/contours.h"
#include "movies/player/limits.h"

#include <algorithm>

namespace swf {

namespace {

/// Looks for what covers a place. Edges that are looked at are counted, so that a movie of large
/// shapes makes the mouse blind, and not slow.
class Search {
public:
    explicit Search(Stage& stage) : stage(stage), movie(stage.movie()) {}

    /// Whether there is a button; `path` then leads to it.
    bool buttonIn(const DisplayList& list, Point place, ButtonPath& path) {
        for (auto entry = list.rbegin(); entry != list.rend(); ++entry) {
            const Instance& instance = entry->second;
            if (!stage.work()) return false;
            if (!instance.matrix.usable() || !instance.inner()) continue;
            const Point inside = instance.matrix.mapBack(place);
            path.emplace_back(entry->first, instance.character);
            if (instance.clip ? buttonIn(instance.clip->list, inside, path)
                              : hit(*instance.face->button, inside)) {
                return true;
            }
            path.pop_back();
        }
        return false;
    }

private:
    bool hit(const Button& button, Point place) {
        return std::ranges::any_of(button.records, [&](const ButtonRecord& record) {
            return (record.states & ButtonRecord::Hit) && record.matrix.usable() &&
                   reaches(record.character, record.matrix.mapBack(place), 0, 0);
        });
    }

    bool reaches(std::uint16_t character, Point place, std::uint16_t ratio, unsigned nesting) {
        if (!stage.work() || nesting >= limits::depth) return false;
        if (const auto* shape = movie.find<Shape>(character)) {
            return take(weightOf(*shape)) && covers(*shape, place);
        }
        if (const auto* morph = movie.find<MorphShape>(character)) {
            return take(8 * weightOf(morph->start)) && covers(morph->at(ratio), place);
        }
        if (const auto* text = movie.find<Text>(character)) {
            if (!text->matrix.usable()) return false;
            const Point inside = text->matrix.mapBack(place);
            return inside.x >= text->bounds.left && inside.x <= text->bounds.right &&
                   inside.y >= text->bounds.top && inside.y <= text->bounds.bottom;
        }
        const auto* timeline = movie.find<Timeline>(character);
        return timeline != nullptr && reachesFirstFrame(*timeline, place, nesting);
    }

    /// A sprite that is the face for the mouse is not on the stage; its first frame counts.
    bool reachesFirstFrame(const Timeline& timeline, Point place, unsigned nesting) {
        const std::size_t end = timeline.frameEnds.empty() ? 0 : timeline.frameEnds.front();
        for (std::size_t index = 0; index < end; ++index) {
            if (!stage.work()) return false;
            const auto* placed = std::get_if<Place>(&timeline.controls[index]);
            if (placed == nullptr || !placed->character) continue;
            const Matrix matrix = placed->matrix.value_or(Matrix());
            if (!matrix.usable()) continue;
            if (reaches(*placed->character, matrix.mapBack(place), placed->ratio.value_or(0),
                        nesting + 1)) {
                return true;
            }
        }
        return false;
    }

    static std::size_t weightOf(const Shape& shape) {
        return shape.edges.size() + shape.fills.size() + shape.lines.size();
    }

    bool take(std::size_t edges) {
        if (edges > edgesLeft) return false;
        edgesLeft -= edges;
        return true;
    }

    Stage& stage;
    const Movie& movie;
    std::size_t edgesLeft = 4 * limits::edgesPerShape;
};

void eachButtonIn(DisplayList& list, const std::function<void(Instance&)>& visit) {
    for (auto& [depth, instance] : list) {
        if (instance.face) visit(instance);
        if (instance.clip) eachButtonIn(instance.clip->list, visit);
    }
}

}  // namespace

ButtonPath buttonAt(Stage& stage, Point place) {
    ButtonPath path;
    if (!Search(stage).buttonIn(stage.root().list, place, path)) return {};
    return path;
}

Instance* findButton(Stage& stage, const ButtonPath& path) {
    DisplayList* list = &stage.root().list;
    Instance* instance = nullptr;
    for (const auto& [depth, character] : path) {
        if (list == nullptr) return nullptr;
        const auto [first, end] = list->equal_range(depth);
        const auto found = std::find_if(first, end, [number = character](const auto& entry) {
            return entry.second.character == number;
        });
        if (found == end) return nullptr;
        instance = &found->second;
        list = instance->clip ? &instance->clip->list : nullptr;
    }
    return instance != nullptr && instance->face ? instance : nullptr;
}

void eachButton(Stage& stage, const std::function<void(Instance&)>& visit) {
    eachButtonIn(stage.root().list, visit);
}

}  // namespace swf
