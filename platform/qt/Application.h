#pragma once

#include "platform/shared/runEvent.h"

#include <QApplication>

/// Qt's application, each of whose events ends alone when an exception gets out of it: Qt itself
/// cannot go on with one.
class Application final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        bool isTaken = false;
        runEvent([&] { isTaken = QApplication::notify(receiver, event); });
        return isTaken;
    }
};
