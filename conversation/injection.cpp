#include "conversation/injection.h"

#include "base/Failure.h"
#include "base/text.h"
#include "conversation/Conversation.h"
#include "conversation/messageTools.h"
#include "desktop/mdlFunctions.h"

std::string injection::BuildFakeMessage(std::string_view contactNick, std::string_view contactEmail,
                                        std::string_view message, std::string_view color,
                                        std::string_view effects) {
    std::string head = "MSG ";
    head.append(contactEmail).append(" ").append(contactNick).append(" {i}\r\n");
    std::string payload =
        "MIME-Version: 1.0\r\n"
        "Content-Type: text/plain; charset=UTF-8\r\n"
        "X-MMS-IM-Format: FN=Verdana; EF=";
    payload.append(effects).append("; CO=").append(color.empty() ? "0" : color);
    payload.append("; CS=0; PF=00; RL=0\r\n\r\n").append(message);
    return replaceFirst(std::move(head), "{i}", std::to_string(payload.size())) + payload;
}

bool injection::InjectMessage(Conversation& conversation, std::string_view message,
                              std::string_view color, std::string_view effects) {
    const ConnectionRecord& connection = conversation.connection;
    return conversation.sendToClient(
        BuildFakeMessage(connection.contactNick, connection.contactEmail, message, color, effects));
}

std::string injection::MakeCoverMessage(std::string_view fullmessage, std::string_view email) {
    // The fixed text of the payload; it agrees with the lines below.
    constexpr std::size_t fixedLength = 73;
    std::string cover = "MSG " + std::string(need(messageTools::SecondWord(fullmessage))) +
                        " U {}\r\n"
                        "MIME-Version: 1.0\r\n"
                        "Content-Type: text/x-msmsgscontrol\r\n"
                        "TypingUserx ";
    cover.append(email).append("\r\n\r\n\r\n");
    return replaceFirst(std::move(cover), "{}", std::to_string(fixedLength + email.size()));
}

std::string injection::boldName(std::string_view name, Conversation& conversation) {
    if (!mdlFunctions::MessengerPlusPresent(conversation.services.registry)) {
        return std::string(name);
    }
    return boldCode + std::string(name) + boldCode;
}

std::optional<std::string> injection::add1(std::string_view command) {
    return messageTools::withLengthChanged(command, 1);
}

std::optional<std::string> injection::minus1(std::string_view command) {
    return messageTools::withLengthChanged(command, -1);
}
