#include "movies/player/Stage.h"

#include "movies/player/limits.h"

#include <algorithm>
#include <utility>

namespace swf {

namespace {

bool moves(const Clip& clip) { return clip.playing && clip.timeline->frameCount() > 1; }

}  // namespace

Stage::Stage(const Movie& movie) : content(movie) {
    main.number = ++lastNumber;
    main.timeline = &movie.timeline;
    clips.emplace(main.number, &main);
}

Clip* Stage::find(InstanceNumber clip) const {
    const auto found = clips.find(clip);
    return found == clips.end() ? nullptr : found->second;
}

void Stage::beginTurn() {
    ++turn;
    workLeft = limits::work;
}

bool Stage::work(unsigned pieces) {
    workLeft -= std::min(pieces, workLeft);
    return workLeft > 0;
}

void Stage::start() {
    main.createdIn = turn;
    DisplayList none;
    applyFrame(main, 0, none, true);
}

void Stage::advance() { advance(main); }

void Stage::advance(Clip& clip) {
    if (clip.createdIn < turn && swf::moves(clip)) goTo(clip, clip.frame + 1);
    advanceInner(clip.list);
}

void Stage::advanceInner(DisplayList& list) {
    for (auto& [depth, instance] : list) {
        if (instance.clip) advance(*instance.clip);
        if (instance.face) advanceInner(instance.face->list);
    }
}

void Stage::goTo(Clip& clip, std::size_t frame) {
    const std::size_t count = clip.timeline->frameCount();
    if (count == 0 || frame == clip.frame) return;
    // The first frame comes after the last.
    if (frame >= count) frame = 0;
    // Frames that are passed over take time, also those in which nothing happens.
    const std::size_t passed = frame < clip.frame ? frame : frame - clip.frame;
    if (!work(static_cast<unsigned>(1 + passed / 64))) return;
    DisplayList old;
    std::size_t next = clip.frame + 1;
    if (frame <= clip.frame) {
        old = std::exchange(clip.list, {});
        next = 0;
        changed = true;
    }
    clip.frame = frame;
    for (; next < frame; ++next)
        applyFrame(clip, next, old, false);
    applyFrame(clip, frame, old, true);
    release(old);
}

void Stage::applyFrame(Clip& clip, std::size_t frame, DisplayList& old, bool withActions) {
    const Timeline& timeline = *clip.timeline;
    if (frame >= timeline.frameCount()) return;
    const std::size_t first = frame == 0 ? 0 : timeline.frameEnds[frame - 1];
    for (std::size_t index = first; index < timeline.frameEnds[frame]; ++index) {
        if (!work()) return;
        const Control& control = timeline.controls[index];
        if (const auto* place = std::get_if<Place>(&control)) {
            apply(clip, *place, frame, old);
        } else if (const auto* removal = std::get_if<Remove>(&control)) {
            const auto found = clip.list.lower_bound(removal->depth);
            if (found == clip.list.end() || found->first != removal->depth) continue;
            remove(clip.list, found);
        } else if (withActions) {
            queue(clip.number, std::get<Actions>(control).code);
        }
    }
}

void Stage::apply(Clip& clip, const Place& place, std::size_t frame, DisplayList& old) {
    const auto found = clip.list.lower_bound(place.depth);
    const bool taken = found != clip.list.end() && found->first == place.depth;
    Instance* instance = taken ? &found->second : nullptr;
    // What is at the depth stays, unless it is to be changed; up to version 5 both do.
    constexpr unsigned lastWithBoth = 5;
    const bool both = taken && place.character && !place.move;
    if (both && content.version > lastWithBoth) return;
    if (place.character &&
        (!place.move || instance == nullptr || instance->character != *place.character)) {
        const Matrix matrix = instance != nullptr && place.move ? instance->matrix : Matrix();
        const ColorTransform colors =
            instance != nullptr && place.move ? instance->colors : ColorTransform();
        if (taken && !both) remove(clip.list, found);
        instance =
            put(clip.list, old, place.depth, *place.character, frame, clip.number, clip.depth + 1);
        if (instance == nullptr) return;
        instance->matrix = matrix;
        instance->colors = colors;
        instance->ratio = 0;
        instance->clipDepth = 0;
    }
    if (instance == nullptr) return;
    changed = true;
    if (place.matrix) instance->matrix = *place.matrix;
    if (place.colors) instance->colors = *place.colors;
    if (place.ratio) instance->ratio = *place.ratio;
    if (place.clipDepth) instance->clipDepth = *place.clipDepth;
    if (!place.name.empty()) instance->name = place.name;
}

Instance* Stage::put(DisplayList& list, DisplayList& old, std::uint16_t depth,
                     std::uint16_t character, std::size_t origin, InstanceNumber parent,
                     unsigned nesting) {
    changed = true;
    const auto [first, end] = old.equal_range(depth);
    const auto stood = std::find_if(first, end, [&](const auto& entry) {
        return entry.second.character == character && entry.second.origin == origin;
    });
    if (stood != end) return &list.insert(old.extract(stood))->second;
    const auto* timeline = content.find<Timeline>(character);
    const auto* button = content.find<Button>(character);
    if (instances >= limits::instances || !work()) return nullptr;
    if ((timeline != nullptr || button != nullptr) && nesting >= limits::depth) return nullptr;
    ++instances;
    Instance& instance = list.emplace(depth, Instance())->second;
    instance.number = ++lastNumber;
    instance.character = character;
    instance.origin = origin;
    if (timeline != nullptr) {
        instance.clip = std::make_unique<Clip>();
        Clip& clip = *instance.clip;
        clip.number = instance.number;
        clip.parent = parent;
        clip.timeline = timeline;
        clip.createdIn = turn;
        clip.depth = nesting;
        clips.emplace(clip.number, &clip);
        DisplayList none;
        applyFrame(clip, 0, none, true);
    } else if (button != nullptr) {
        instance.face = std::make_unique<Face>();
        instance.face->button = button;
        instance.face->parent = parent;
        instance.face->depth = nesting;
        setState(*instance.face, ButtonRecord::Up);
    }
    return &instance;
}

void Stage::setState(Face& face, ButtonRecord::State state) {
    face.state = state;
    DisplayList old = std::exchange(face.list, {});
    for (std::size_t index = 0; index < face.button->records.size(); ++index) {
        const ButtonRecord& record = face.button->records[index];
        if (!(record.states & state)) continue;
        const auto occupied = face.list.find(record.depth);
        if (occupied != face.list.end()) remove(face.list, occupied);
        Instance* const instance =
            put(face.list, old, record.depth, record.character, index, face.parent, face.depth + 1);
        if (instance == nullptr) continue;
        instance->matrix = record.matrix;
        instance->colors = record.colors;
    }
    release(old);
    changed = true;
}

void Stage::remove(DisplayList& list, DisplayList::iterator entry) {
    release(entry->second);
    list.erase(entry);
    changed = true;
}

void Stage::release(Instance& instance) {
    --instances;
    clips.erase(instance.number);
    if (instance.clip) release(instance.clip->list);
    if (instance.face) release(instance.face->list);
}

void Stage::release(DisplayList& list) {
    for (auto& [depth, instance] : list)
        release(instance);
}

bool Stage::moves() const {
    return std::any_of(clips.begin(), clips.end(),
                       [](const auto& entry) { return swf::moves(*entry.second); });
}

bool Stage::takeChange() { return std::exchange(changed, false); }

}  // namespace swf
