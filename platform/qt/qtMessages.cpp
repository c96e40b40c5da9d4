#include "platform/qt/qtMessages.h"

#include "platform/Console.h"

#include <QString>

void sendQtMessagesToConsole() {
    qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            console::error(qFormatLogMessage(type, context, text).toStdString());
        });
}
