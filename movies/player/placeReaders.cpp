#include "movies/player/placeReaders.h"

#include "movies/player/recordReaders.h"

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
    place.move = flags & 1U;
    const bool hasCharacter = flags & 2U;
    const bool className = more & 8U;
    const bool image = more & 16U;
    if (className || (image && hasCharacter)) static_cast<void>(reader.text());
    if (hasCharacter) place.character = reader.u16();
    if (flags & 4U) place.matrix = readMatrix(reader);
    if (flags & 8U) place.colors = readColorTransform(reader, true);
    if (flags & 16U) place.ratio = reader.u16();
    if (flags & 32U) place.name = reader.text();
    if (flags & 64U) place.clipDepth = reader.u16();
    return place;
}

}  // namespace swf
