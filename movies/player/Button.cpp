#include "movies/player/Button.h"

#include "base/Failure.h"
#include "movies/player/limits.h"

namespace swf {

namespace {

void readRecords(Reader& reader, bool second, Button& button) {
    while (const unsigned flags = reader.u8()) {
        if (button.records.size() == limits::recordsPerButton) throw Failure("too many records");
        ButtonRecord record;
        record.states = flags & (ButtonRecord::Up | ButtonRecord::Over | ButtonRecord::Down |
                                 ButtonRecord::Hit);
        record.character = reader.u16();
        record.depth = reader.u16();
        record.matrix = readMatrix(reader);
        if (second) {
            record.colors = readColorTransform(reader, true);
            if (flags & buttonFlag::Filters) skipFilters(reader);
            if (flags & buttonFlag::BlendMode) reader.skip(1);
        }
        button.records.push_back(record);
    }
}

}  // namespace

Button readFirstButton(Reader& reader) {
    Button button;
    readRecords(reader, false, button);
    button.actions.push_back(
        {static_cast<unsigned>(ButtonEvent::OverDownToOverUp), 0, reader.rest()});
    return button;
}

Button readSecondButton(Reader& reader) {
    Button button;
    reader.skip(1);  // whether it is part of a menu, which makes no difference here
    // Counts from its own place to the actions; without actions it is 0.
    Reader actions = reader;
    std::size_t offset = reader.u16();
    readRecords(reader, true, button);
    while (offset != 0) {
        if (button.actions.size() == limits::recordsPerButton) throw Failure("too many actions");
        actions.skip(offset);
        Reader entry = actions;
        offset = entry.u16();
        const unsigned conditions = entry.u16();
        const std::string_view code =
            offset == 0 ? entry.rest() : entry.bytes(offset < 4 ? 0 : offset - 4);
        button.actions.push_back(
            {conditions & ((1U << buttonEventBits) - 1U), conditions >> buttonEventBits, code});
    }
    return button;
}

void readButtonColors(Reader& reader, Button& button) {
    ColorTransform colors;
    bool first = true;
    for (ButtonRecord& record : button.records) {
        if (first || !reader.atEnd()) colors = readColorTransform(reader, false);
        first = false;
        record.colors = colors;
    }
}

}  // namespace swf
