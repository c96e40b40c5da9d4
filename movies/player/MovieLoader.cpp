#include "movies/player/MovieLoader.h"

#include "base/Failure.h"
#include "base/text.h"
#include "movies/player/limits.h"
#include "movies/player/shapeReaders.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace swf {

namespace {

constexpr std::size_t headBytes = 8;

std::size_t weightOf(const Shape& shape) {
    return shape.edges.size() + 8 * (1 + shape.fills.size() + shape.lines.size());
}

/// What a character takes of memory, in about the size of edges.
std::size_t weightOf(const Character& character) {
    if (const auto* shape = std::get_if<Shape>(&character)) return weightOf(*shape);
    if (const auto* morph = std::get_if<MorphShape>(&character)) {
        return weightOf(morph->start) + weightOf(morph->end);
    }
    if (const auto* text = std::get_if<Text>(&character)) return text->glyphs.size();
    if (const auto* button = std::get_if<Button>(&character)) {
        return 4 * (button->records.size() + button->actions.size());
    }
    std::size_t weight = 0;
    if (const auto* font = std::get_if<Font>(&character)) {
        for (const Shape& glyph : font->glyphs)
            weight += weightOf(glyph);
    }
    return weight;
}

ShapeVersion shapeVersion(Tag code) {
    return code == Tag::DefineShape    ? ShapeVersion::One
           : code == Tag::DefineShape2 ? ShapeVersion::Two
           : code == Tag::DefineShape3 ? ShapeVersion::Three
                                       : ShapeVersion::Four;
}

}  // namespace

MovieLoader::MovieLoader(std::string file) : file(std::move(file)) {
    attempt([&] { begin(); });
}

bool MovieLoader::step() {
    switch (stage) {
        case Stage::Unpacking: unpackStep(); return true;
        case Stage::Reading: readStep(); return true;
        case Stage::Done: break;
    }
    return false;
}

void MovieLoader::begin() {
    stage = Stage::Done;
    Reader head(file);
    const std::string_view sign = head.bytes(3);
    if (sign != "FWS" && sign != "CWS") return;
    movie->version = head.u8();
    head.skip(4);  // the length, which is not always that of the file
    if (file.size() > limits::fileBytes) return;
    if (sign == "CWS") {
        // Memory is taken at once for all steps, since it takes long to move what has been
        // unpacked; what is not used costs nothing. No byte unpacks to more than 1032.
        movie->bytes.reserve(std::min(limits::unpackedBytes, file.size() * 1040) +
                             limits::bytesPerStep);
        inflater.emplace(head.rest());
    }
    stage = Stage::Unpacking;
}

void MovieLoader::unpackStep() {
    bool more = false;
    if (inflater) {
        const std::size_t room = limits::unpackedBytes - movie->bytes.size();
        more = inflater->unpack(movie->bytes, std::min(limits::bytesPerStep, room)) &&
               movie->bytes.size() < limits::unpackedBytes;
    } else {
        movie->bytes = std::move(file);
    }
    if (more) return;
    const std::size_t begin = inflater ? 0 : headBytes;
    inflater.reset();
    file = {};
    tags = Reader(std::string_view(movie->bytes).substr(begin));
    stage = Stage::Done;
    attempt([&] { readHeader(); });
}

void MovieLoader::readHeader() {
    const Rect frame = readRect(tags);
    const double rate = tags.u16() / 256.0;
    static_cast<void>(tags.u16());  // the number of frames, which follows from the frames
    if (frame.width() <= 0 || frame.height() <= 0) return;
    movie->frame = frame;
    movie->framesPerSecond = rate;
    stage = Stage::Reading;
}

void MovieLoader::readStep() {
    using Clock = std::chrono::steady_clock;
    std::size_t work = 0;
    bool complete = true;
    const Clock::time_point end = Clock::now() + limits::timePerStep;
    attempt([&] {
        // A few bytes may hold much: all glyphs of a font may be one, and edges take a byte or two.
        while (work < limits::bytesPerStep && stage == Stage::Reading && Clock::now() < end)
            work += readTag();
        complete = stage == Stage::Done;
    });
    if (complete) stage = Stage::Done;
}

std::size_t MovieLoader::readTag() {
    Reader& source = spriteTags ? *spriteTags : tags;
    if (spriteTags && source.atEnd()) {
        endSprite();
        return 1;
    }
    if (++tagsRead > limits::tags) {
        stage = Stage::Done;
        return 1;
    }
    const unsigned head = source.u16();
    std::size_t length = head & longTagLength;
    if (length == longTagLength) length = source.u32();
    const auto code = static_cast<Tag>(head >> tagLengthBits);
    // A tag that is cut off is read as far as it goes when it holds more tags.
    if (code == Tag::DefineSprite && !spriteTags) length = std::min(length, source.rest().size());
    Reader tag(source.bytes(length));
    if (code == Tag::End) {
        if (spriteTags) {
            endSprite();
        } else {
            stage = Stage::Done;
        }
    } else if (code == Tag::DefineSprite && !spriteTags) {
        const std::uint16_t number = tag.u16();
        tag.skip(2);
        // Where two characters have one number, the first counts; the second is read into nothing.
        sprite = std::get_if<Timeline>(add(number, Timeline()));
        if (sprite == nullptr) sprite = &unused.emplace();
        spriteTags = tag;
        return limits::bytesPerTag;
    } else {
        // A tag with a fault is left out; the next one begins where its length says.
        attempt([&] {
            if (!readControl(code, tag)) readDefinition(code, tag);
        });
    }
    return limits::bytesPerTag + length;
}

bool MovieLoader::readControl(Tag code, Reader tag) {
    switch (code) {
        case Tag::ShowFrame: endFrame(); return true;
        case Tag::PlaceObject: addControl(readFirstPlace(tag)); return true;
        case Tag::RemoveObject: tag.skip(2); [[fallthrough]];
        case Tag::RemoveObject2: addControl(Remove{tag.u16()}); return true;
        case Tag::DoAction: addControl(Actions{tag.rest()}); return true;
        case Tag::PlaceObject2: addControl(readPlace(tag, false)); return true;
        case Tag::PlaceObject3: addControl(readPlace(tag, true)); return true;
        case Tag::FrameLabel: addLabel(tag.text()); return true;
        default: return false;
    }
}

void MovieLoader::readDefinition(Tag code, Reader tag) {
    // None of these may stand in a sprite.
    if (spriteTags) return;
    switch (code) {
        case Tag::SetBackgroundColor:
            // The first one holds.
            if (!movie->background) movie->background = readColor(tag, false);
            return;
        case Tag::JPEGTables: jpegTables = tag.rest(); return;
        default: break;
    }
    if (tag.atEnd()) return;  // as tags often are that nobody knows
    const std::uint16_t number = tag.u16();
    switch (code) {
        case Tag::DefineShape:
        case Tag::DefineShape2:
        case Tag::DefineShape3:
        case Tag::DefineShape4: add(number, readShape(tag, shapeVersion(code))); break;
        case Tag::DefineMorphShape: add(number, readMorphShape(tag, false)); break;
        case Tag::DefineMorphShape2: add(number, readMorphShape(tag, true)); break;
        case Tag::DefineFont: add(number, readFirstFont(tag)); break;
        case Tag::DefineFont2: add(number, readNamedFont(tag, false)); break;
        case Tag::DefineFont3: add(number, readNamedFont(tag, true)); break;
        case Tag::DefineText: add(number, readText(tag, false)); break;
        case Tag::DefineText2: add(number, readText(tag, true)); break;
        case Tag::DefineBits: add(number, readJpeg(tag, 1, jpegTables)); break;
        case Tag::DefineBitsJPEG2: add(number, readJpeg(tag, 2, {})); break;
        case Tag::DefineBitsJPEG3: add(number, readJpeg(tag, 3, {})); break;
        case Tag::DefineBitsJPEG4: add(number, readJpeg(tag, 4, {})); break;
        case Tag::DefineBitsLossless: add(number, readPacked(tag, false)); break;
        case Tag::DefineBitsLossless2: add(number, readPacked(tag, true)); break;
        case Tag::DefineButton: add(number, readFirstButton(tag)); break;
        case Tag::DefineButton2: add(number, readSecondButton(tag)); break;
        case Tag::DefineButtonCxform: {
            const auto found = movie->characters.find(number);
            if (found == movie->characters.end()) return;
            if (auto* button = std::get_if<Button>(&found->second)) readButtonColors(tag, *button);
            break;
        }
        default: break;  // sounds, video, script and what came later
    }
}

Character* MovieLoader::add(std::uint16_t number, Character character) {
    weight += weightOf(character);
    if (weight > limits::edges || movie->characters.size() >= limits::characters) {
        stage = Stage::Done;
        return nullptr;
    }
    const auto [place, isNew] = movie->characters.emplace(number, std::move(character));
    return isNew ? &place->second : nullptr;
}

bool MovieLoader::hasRoom() {
    if (++controls > limits::controls) stage = Stage::Done;
    return stage != Stage::Done;
}

void MovieLoader::addControl(const Control& control) {
    if (hasRoom()) timeline().controls.push_back(control);
}

void MovieLoader::addLabel(std::string_view label) {
    if (hasRoom()) timeline().labels.emplace(lowerCase(label), timeline().frameCount());
}

void MovieLoader::endSprite() {
    // Without a single end of a frame, all that it holds is its one frame.
    if (sprite->frameEnds.empty() && !sprite->controls.empty()) endFrame();
    spriteTags.reset();
}

void MovieLoader::endFrame() {
    if (hasRoom()) timeline().frameEnds.push_back(timeline().controls.size());
}

std::shared_ptr<const Movie> readMovie(std::string file) {
    MovieLoader loader(std::move(file));
    while (loader.step()) {
    }
    return loader.take();
}

}  // namespace swf
