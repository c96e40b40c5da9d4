#include "movies/maker/Description.h"

#include "movies/maker/actionCode.h"
#include "movies/maker/shapeTags.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QImageWriter>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

std::string packed(const std::string& bytes) {
    constexpr int smallest = 9;
    // Qt puts the length in front, in four bytes.
    return qCompress(QByteArray::fromStdString(bytes), smallest).mid(4).toStdString();
}

/// In several scans, each of which makes the picture finer.
std::string jpegOf(const QImage& image) {
    QBuffer bytes;
    QImageWriter writer(&bytes, "jpeg");
    writer.setQuality(95);
    writer.setProgressiveScanWrite(true);
    writer.write(image);
    return bytes.data().toStdString();
}

std::string pixelsOf(const QImage& image) {
    swf::Writer pixels;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb color = qPremultiply(image.pixel(x, y));
            pixels.u8(static_cast<unsigned>(qAlpha(color)));
            pixels.u8(static_cast<unsigned>(qRed(color)));
            pixels.u8(static_cast<unsigned>(qGreen(color)));
            pixels.u8(static_cast<unsigned>(qBlue(color)));
        }
    }
    swf::Writer body;
    body.code(swf::PixelFormat::Pixels32);
    body.u16(static_cast<unsigned>(image.width()));
    body.u16(static_cast<unsigned>(image.height()));
    body.append(packed(pixels.get()));
    return body.get();
}

/// The bits of a button's conditions.
unsigned readCondition(Statement& statement) {
    using swf::ButtonEvent;
    const auto bits = [](ButtonEvent event) { return static_cast<unsigned>(event); };
    if (statement.take("over")) return bits(ButtonEvent::IdleToOverUp);
    if (statement.take("out")) {
        return bits(ButtonEvent::OverUpToIdle) | bits(ButtonEvent::OutDownToIdle);
    }
    if (statement.take("press")) return bits(ButtonEvent::OverUpToOverDown);
    if (statement.take("release")) return bits(ButtonEvent::OverDownToOverUp);
    statement.expect("key");
    return static_cast<unsigned>(statement.whole("the number of a key")) << swf::buttonEventBits;
}

swf::Writer buttonRecord(unsigned states, unsigned thing, unsigned depth) {
    swf::Writer bytes;
    bytes.u8(states);
    bytes.u16(thing);
    bytes.u16(depth);
    bytes.matrix({});
    bytes.u8(0);  // colours as they are
    return bytes;
}

}  // namespace

Description::Description(const std::filesystem::path& path, std::string_view version) {
    read(path, version);
    if (width <= 0 || height <= 0) {
        Statement{path.string(), 0, {}, 0}.complain("a movie has a size");
    }
}

void Description::read(const std::filesystem::path& path, std::string_view version) {
    Block lines = readSource(path, version);
    for (std::size_t index = 0; index < lines.size(); ++index) {
        Statement& line = lines[index];
        if (line.take("use")) {
            read(path.parent_path() / line.word("a file"), version);
            continue;
        }
        const bool shape = line.take("shape");
        const bool sprite = !shape && line.take("sprite");
        if (!shape && !sprite && !line.take("button")) {
            readLine(line);
            continue;
        }
        const std::string name = line.word("a name");
        const bool isOpen = sprite && line.take("open");
        line.finish();
        Block block;
        for (++index; index < lines.size() && lines[index].words.front() != "end"; ++index) {
            block.push_back(lines[index]);
        }
        if (index == lines.size()) line.complain("its end is missing");
        if (shape) {
            readShape(line, name, block);
        } else if (sprite) {
            readSprite(line, name, block, isOpen);
        } else {
            readButton(line, name, block);
        }
    }
}

void Description::readLine(Statement& statement) {
    if (statement.take("size")) {
        width = statement.number("a width");
        height = statement.number("a height");
    } else if (statement.take("rate")) {
        rate = statement.number("a number of frames a second");
    } else if (statement.take("version")) {
        fileVersion = static_cast<unsigned>(statement.whole("a version"));
    } else if (statement.take("background")) {
        background = paints.tint(statement);
    } else if (statement.take("color")) {
        paints.readColor(statement);
    } else if (statement.take("gradient")) {
        paints.readGradient(statement);
    } else if (statement.take("picture")) {
        readPicture(statement);
    } else if (statement.take("pattern")) {
        const std::string name = statement.word("a name");
        paints.readPattern(statement, name,
                           definitions.find(statement, statement.word("a picture")));
    } else if (!score.read(statement)) {
        statement.complain("nothing begins with \"" + statement.words.front() + "\"");
    }
    statement.finish();
}

void Description::readPicture(Statement& statement) {
    const std::string name = statement.word("a name");
    const int columns = statement.whole("a number of pixels");
    const int times = statement.take("enlarged") ? statement.whole("a number of times") : 1;
    const bool isJpeg = statement.take("jpeg");
    std::vector<QRgb> colors;
    while (statement.hasMore()) {
        const swf::Color color = paints.tint(statement);
        colors.push_back(qRgba(color.red, color.green, color.blue, color.alpha));
    }
    const int count = static_cast<int>(colors.size());
    if (columns < 1 || times < 1 || count == 0 || count % columns != 0) {
        statement.complain("a picture has rows of " + std::to_string(columns) + " pixels");
    }
    QImage image(columns, count / columns, QImage::Format_ARGB32);
    for (int index = 0; index < count; ++index)
        image.setPixel(index % columns, index / columns, colors[static_cast<std::size_t>(index)]);
    image = image.scaled(image.size() * times);
    swf::Writer body;
    body.u16(definitions.add(statement, name));
    body.append(isJpeg ? jpegOf(image) : pixelsOf(image));
    definitions.append(
        swf::tag(isJpeg ? swf::Tag::DefineBitsJPEG2 : swf::Tag::DefineBitsLossless2, body));
}

void Description::readShape(const Statement& head, const std::string& name, Block& block) {
    Drawing drawing;
    for (Statement& line : block) {
        Drawing strokes = readStrokes(line, paints);
        std::move(strokes.begin(), strokes.end(), std::back_inserter(drawing));
    }
    if (drawing.empty()) head.complain("an empty shape");
    const unsigned number = definitions.add(head, name);
    definitions.append(shapeTags::shape(number, drawing));
}

void Description::readSprite(const Statement& head, const std::string& name, Block& block,
                             bool isOpen) {
    Score own(definitions, paints);
    for (Statement& line : block) {
        if (!own.read(line)) line.complain("this has no place in a sprite");
    }
    swf::Writer body;
    body.u16(definitions.add(head, name));
    body.u16(static_cast<unsigned>(own.frameCount()));
    body.append(own.tags(isOpen));
    body.append(swf::tag(swf::Tag::End));
    definitions.append(swf::tag(swf::Tag::DefineSprite, body));
}

void Description::readButton(const Statement& head, const std::string& name, Block& block) {
    swf::Writer records;
    unsigned depth = 0;
    std::vector<swf::Writer> conditions;
    for (Statement& line : block) {
        if (line.take("on")) {
            swf::Writer condition;
            condition.u16(readCondition(line));
            condition.append(actionCode::read(line));
            condition.code(swf::Action::End);
            conditions.push_back(condition);
            continue;
        }
        unsigned states = 0;
        if (line.take("up")) states |= swf::buttonFlag::Up;
        if (line.take("over")) states |= swf::buttonFlag::Over;
        if (line.take("down")) states |= swf::buttonFlag::Down;
        if (line.take("hit")) states |= swf::buttonFlag::Hit;
        if (states == 0) line.complain("a button is up, over, down or hit, or acts on an event");
        records.append(buttonRecord(states, definitions.find(line, line.word("a thing")), ++depth));
        line.finish();
    }
    records.u8(0);

    swf::Writer body;
    body.u16(definitions.add(head, name));
    body.u8(0);
    const auto size = static_cast<unsigned>(records.get().size());
    body.u16(conditions.empty() ? 0 : size + 2);
    body.append(records);
    for (std::size_t index = 0; index < conditions.size(); ++index) {
        const bool last = index + 1 == conditions.size();
        const auto length = static_cast<unsigned>(conditions[index].get().size());
        body.u16(last ? 0 : length + 2);
        body.append(conditions[index]);
    }
    definitions.append(swf::tag(swf::Tag::DefineButton2, body));
}

std::string Description::file() const {
    swf::Writer body;
    body.rect({0, width * swf::twipsPerPixel, 0, height * swf::twipsPerPixel});
    body.u16(static_cast<unsigned>(std::lround(rate * 256)));
    body.u16(static_cast<unsigned>(score.frameCount()));
    if (background) {
        swf::Writer color;
        color.color(*background, false);
        body.append(swf::tag(swf::Tag::SetBackgroundColor, color));
    }
    body.append(definitions.get());
    body.append(score.tags());
    body.append(swf::tag(swf::Tag::End));

    constexpr std::size_t headBytes = 8;
    swf::Writer all;
    all.append("CWS");
    all.u8(fileVersion);
    all.u32(static_cast<std::uint32_t>(body.get().size() + headBytes));
    all.append(packed(body.get()));
    return all.get();
}
