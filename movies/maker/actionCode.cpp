#include "movies/maker/actionCode.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace actionCode {

namespace {

using swf::Action;

void write(swf::Writer& bytes, Action action, std::initializer_list<std::string_view> texts) {
    swf::Writer body;
    for (const std::string_view text : texts)
        body.text(text);
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
        write(bytes, Action::SetTarget, {statement.word("a sprite")});
        write(bytes, Action::GoToLabel, {statement.word("a label")});
        bytes.code(Action::Play);
        write(bytes, Action::SetTarget, {""});
    } else {
        statement.expect("command");
        const std::string command = "FSCommand:" + statement.word("a command");
        const std::string_view arguments;
        write(bytes, Action::GetURL, {command, arguments});
    }
    statement.finish();
    return bytes;
}

}  // namespace actionCode
