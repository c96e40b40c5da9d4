#include "tests/movies/MovieFile.h"

#include <QByteArray>

#include <cmath>

namespace {

namespace placeFlag = swf::placeFlag;

std::int64_t length(double pixels) { return std::llround(pixels * swf::twipsPerPixel); }

}  // namespace

Bits& Bits::u8(unsigned value) {
    writer.u8(value);
    return *this;
}

Bits& Bits::u16(unsigned value) {
    writer.u16(value);
    return *this;
}

Bits& Bits::u32(std::uint32_t value) {
    writer.u32(value);
    return *this;
}

Bits& Bits::text(std::string_view value) {
    writer.text(value);
    return *this;
}

Bits& Bits::raw(std::string_view value) {
    writer.append(value);
    return *this;
}

Bits& Bits::bits(std::int64_t value, unsigned count) {
    writer.bits(static_cast<std::uint32_t>(value), count);
    return *this;
}

Bits& Bits::rgb(std::uint32_t color) { return u8(color >> 16U).u8(color >> 8U).u8(color); }

Bits& Bits::rgba(std::uint32_t color, unsigned alpha) { return rgb(color).u8(alpha); }

Bits& Bits::rect(int left, int right, int top, int bottom) {
    writer.rect({left * swf::twipsPerPixel, right * swf::twipsPerPixel, top * swf::twipsPerPixel,
                 bottom * swf::twipsPerPixel});
    return *this;
}

Bits& Bits::matrix(double scaleX, double scaleY, double x, double y) {
    writer.matrix({scaleX, 0, 0, scaleY, x * swf::twipsPerPixel, y * swf::twipsPerPixel});
    return *this;
}

Bits& Bits::styleBits(unsigned fills, unsigned lines) { return bits(fills, 4).bits(lines, 4); }

Bits& Bits::jump(double x, double y) {
    return bits(swf::styleChange::Move, 6).bits(20, 5).bits(length(x), 20).bits(length(y), 20);
}

Bits& Bits::jumpAndFill(double x, double y, unsigned fill, unsigned count) {
    return bits(swf::styleChange::Move | swf::styleChange::Fill1, 6)
        .bits(20, 5)
        .bits(length(x), 20)
        .bits(length(y), 20)
        .bits(fill, count);
}

Bits& Bits::jumpAndLine(double x, double y) {
    return bits(swf::styleChange::Move | swf::styleChange::Line, 6)
        .bits(20, 5)
        .bits(length(x), 20)
        .bits(length(y), 20)
        .bits(1, 1);
}

Bits& Bits::line(double x, double y) {
    return bits(3, 2).bits(15, 4).bits(1, 1).bits(length(x), 17).bits(length(y), 17);
}

Bits& Bits::curve(double controlX, double controlY, double x, double y) {
    bits(2, 2).bits(15, 4).bits(length(controlX), 17).bits(length(controlY), 17);
    return bits(length(x), 17).bits(length(y), 17);
}

Bits& Bits::square(double x, double y, double size) {
    jumpAndFill(x, y, 1);
    return line(size, 0).line(0, size).line(-size, 0).line(0, -size);
}

MovieFile& MovieFile::tag(Tag code, const Bits& body) {
    // With its length apart, which every tag may have.
    Bits head;
    head.u16(static_cast<unsigned>(code) << swf::tagLengthBits | swf::longTagLength);
    head.u32(static_cast<std::uint32_t>(body.get().size()));
    content += head.get() + body.get();
    return *this;
}

MovieFile& MovieFile::show(int frames) {
    for (; frames > 0; --frames)
        tag(Tag::ShowFrame);
    return *this;
}

MovieFile& MovieFile::square(unsigned number, double x, double y, double size,
                             std::uint32_t color) {
    Bits body;
    body.u16(number)
        .rect(0, 100, 0, 100)
        .u8(1)
        .code(swf::FillType::Solid)
        .rgb(color)
        .u8(0)
        .styleBits(1, 0);
    return tag(Tag::DefineShape, body.square(x, y, size).endShape());
}

MovieFile& MovieFile::place(unsigned number, unsigned depth, double x, double y) {
    return tag(
        Tag::PlaceObject2,
        Bits().u8(placeFlag::Character | placeFlag::Matrix).u16(depth).u16(number).move(x, y));
}

MovieFile& MovieFile::placeNamed(unsigned number, unsigned depth, std::string_view name) {
    return tag(Tag::PlaceObject2,
               Bits().u8(placeFlag::Character | placeFlag::Name).u16(depth).u16(number).text(name));
}

MovieFile& MovieFile::remove(unsigned depth) { return tag(Tag::RemoveObject2, Bits().u16(depth)); }

MovieFile& MovieFile::actions(const Bits& code) { return tag(Tag::DoAction, Bits(code).u8(0)); }

MovieFile& MovieFile::label(std::string_view name) {
    return tag(Tag::FrameLabel, Bits().text(name));
}

MovieFile& MovieFile::sprite(unsigned number, const MovieFile& inner) {
    return tag(Tag::DefineSprite, Bits().u16(number).u16(1).raw(inner.tags()).u16(0));
}

MovieFile& MovieFile::longToRead() {
    return tag(unknownTag(999), Bits().raw(std::string(std::size_t{16} << 20, 'x')));
}

std::string MovieFile::body() const {
    return Bits().rect(0, 100, 0, 100).u16(20 * 256).u16(1).raw(content).u16(0).get();
}

std::string MovieFile::file(unsigned version) const {
    const std::string all = body();
    return Bits().raw("FWS").u8(version).u32(static_cast<std::uint32_t>(all.size() + 8)).get() +
           all;
}

std::string MovieFile::packedFile(unsigned version) const {
    const std::string all = body();
    return Bits().raw("CWS").u8(version).u32(static_cast<std::uint32_t>(all.size() + 8)).get() +
           packed(all);
}

MovieFile clickMovie() {
    MovieFile movie;
    movie.square(1, 0, 0, 100, 0xFF0000).square(2, 0, 0, 100, 0x00FF00);
    Bits records = Bits().u8(9).u16(1).u16(1).move(0, 0).u8(0);
    records.u8(6).u16(2).u16(2).move(0, 0).u8(0).u8(0);
    const std::string code = command("click").u8(0).get();
    Bits body = Bits().u16(9).u8(0).u16(static_cast<unsigned>(records.get().size() + 2));
    body.raw(records.get()).u16(static_cast<unsigned>(code.size() + 4)).u16(4).raw(code);
    return movie.tag(Tag::DefineButton2, body.u16(0).u16(32U << 9U).raw(code)).place(9, 1).show();
}

std::string packed(std::string_view bytes) {
    const QByteArray all(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return qCompress(all, 9).mid(4).toStdString();
}

Bits action(Action code) { return Bits().u8(static_cast<unsigned>(code)); }

Bits action(Action code, const Bits& data) {
    return action(code).u16(static_cast<unsigned>(data.get().size())).raw(data.get());
}

Bits operator+(Bits left, const Bits& right) { return left.raw(right.get()); }

Bits pushText(std::string_view text) {
    return action(Action::Push, Bits().code(swf::PushType::String).text(text));
}

Bits command(std::string_view name) {
    return action(Action::GetURL, Bits().text("FSCommand:" + std::string(name)).text(""));
}
