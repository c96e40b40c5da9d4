#include "movies/maker/actionCode.h"

namespace actionCode {

namespace {

enum Action : unsigned {
    Play = 0x06,
    Stop = 0x07,
    GetUrl = 0x83,
    SetTarget = 0x8B,
    GotoLabel = 0x8C
};

void writeTexts(Bytes& bytes, Action action, const std::string& first, const std::string* second) {
    Bytes body;
    body.text(first);
    if (second != nullptr) body.text(*second);
    bytes.u8(action);
    bytes.u16(static_cast<unsigned>(body.get().size()));
    bytes.append(body);
}

}  // namespace

Bytes read(Statement& statement) {
    Bytes bytes;
    if (statement.take("stop")) {
        bytes.u8(Stop);
    } else if (statement.take("play")) {
        writeTexts(bytes, SetTarget, statement.word("a sprite"), nullptr);
        writeTexts(bytes, GotoLabel, statement.word("a label"), nullptr);
        bytes.u8(Play);
        writeTexts(bytes, SetTarget, "", nullptr);
    } else {
        statement.expect("command");
        const std::string arguments;
        writeTexts(bytes, GetUrl, "FSCommand:" + statement.word("a command"), &arguments);
    }
    statement.finish();
    return bytes;
}

}  // namespace actionCode
