#include "movies/maker/actionCode.h"

namespace actionCode {

namespace {

using swf::Action;

void writeTexts(swf::Writer& bytes, Action action, const std::string& first,
                const std::string* second) {
    swf::Writer body;
    body.text(first);
    if (second != nullptr) body.text(*second);
    bytes.code(action);
    bytes.u16(static_cast<unsigned>(body.get().size()));
    bytes.append(body);
}

}  // namespace

swf::Writer read(Statement& statement) {
    swf::Writer bytes;
    if (statement.take("stop")) {
        bytes.code(Action::Stop);
    } else if (statement.take("play")) {
        writeTexts(bytes, Action::SetTarget, statement.word("a sprite"), nullptr);
        writeTexts(bytes, Action::GoToLabel, statement.word("a label"), nullptr);
        bytes.code(Action::Play);
        writeTexts(bytes, Action::SetTarget, "", nullptr);
    } else {
        statement.expect("command");
        const std::string arguments;
        writeTexts(bytes, Action::GetURL, "FSCommand:" + statement.word("a command"), &arguments);
    }
    statement.finish();
    return bytes;
}

}  // namespace actionCode
