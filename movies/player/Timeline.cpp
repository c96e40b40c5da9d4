#include "movies/player/Timeline.h"

#include "movies/format/codes.h"

namespace swf {

Place readFirstPlace(Reader& reader) {
    Place place;
    place.character = reader.u16();
    place.depth = reader.u16();
    place.matrix = readMatrix(reader);
    if (!reader.atEnd()) place.colors = readColorTransform(reader, false);
    return place;
}

Place readPlace(Reader& reader, bool third) {
    const unsigned flags = reader.u8();
    const unsigned more = third ? reader.u8() : 0;
    Place place;
    place.depth = reader.u16();
    place.move = flags & placeFlag::Move;
    const bool hasCharacter = flags & placeFlag::Character;
    const bool className = more & morePlaceFlag::ClassName;
    const bool image = more & morePlaceFlag::Image;
    if (className || (image && hasCharacter)) static_cast<void>(reader.text());
    if (hasCharacter) place.character = reader.u16();
    if (flags & placeFlag::Matrix) place.matrix = readMatrix(reader);
    if (flags & placeFlag::Colors) place.colors = readColorTransform(reader, true);
    if (flags & placeFlag::Ratio) place.ratio = reader.u16();
    if (flags & placeFlag::Name) place.name = reader.text();
    if (flags & placeFlag::ClipDepth) place.clipDepth = reader.u16();
    return place;
}

}  // namespace swf
