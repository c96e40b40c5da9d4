#include "platform/qt/Application.h"

#include "platform/Console.h"
#include "platform/shared/runEvent.h"

#include <QString>

void Application::sendMessagesToConsole() {
    qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            console::error(qFormatLogMessage(type, context, text).toStdString());
        });
}

bool Application::notify(QObject* receiver, QEvent* event) {
    bool isTaken = false;
    runEvent([&] { isTaken = QApplication::notify(receiver, event); });
    return isTaken;
}
