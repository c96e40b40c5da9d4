#pragma once

#include <QApplication>

/// Qt's application, each of whose events ends alone when an exception gets out of it: Qt itself
/// cannot go on with one.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    /// Sends the messages of Qt, as of a display that is gone, the way of `console::error`, by
    /// which they neither block the program nor control a terminal. Call it before the application
    /// is made.
    static void sendMessagesToConsole();

    bool notify(QObject* receiver, QEvent* event) override;
};
