#pragma once

#include "tests/support/comesTrue.h"
#include "ui/common/FlashButton.h"
#include "ui/common/look.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFrame>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Takes the font that COBWEAVE_LETTERS names, where it is set, in the place of the program's
/// choice.
inline void chooseLetters() {
    const QString name = qEnvironmentVariable("COBWEAVE_LETTERS");
    if (name.isEmpty()) return;
    QFont font = QApplication::font();
    font.setFamilies({name});
    QApplication::setFont(font);
}

/// The letters of a desktop, which windows that are made meanwhile follow.
class DesktopLetters {
public:
    explicit DesktopLetters(double points, QSize screen = {1920, 1080}) { follow(points, screen); }
    ~DesktopLetters() { follow(9, {1920, 1080}); }
    DesktopLetters(const DesktopLetters&) = delete;
    DesktopLetters& operator=(const DesktopLetters&) = delete;

private:
    static void follow(double points, QSize screen) {
        QFont desktop;
        desktop.setPointSizeF(points);
        look::followLetters(desktop, screen);
        chooseLetters();
    }
};

/// The shown window of a title; none is a null pointer.
[[nodiscard]] inline QWidget* windowOf(const QString& title) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowTitle() == title) return window;
    }
    return nullptr;
}

/// How many windows of a title there are, shown or not.
[[nodiscard]] inline int countOf(const QString& title) {
    int count = 0;
    for (const QWidget* const window : QApplication::topLevelWidgets())
        count += window->windowTitle() == title ? 1 : 0;
    return count;
}

/// Destroys the windows that are closed, as the loop does when it comes round.
inline void destroyClosed() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

/// The control of a name. One that is not there ends the test.
template <typename Control>
[[nodiscard]] Control& named(QWidget& window, const char* name) {
    auto* const control = window.findChild<Control*>(name);
    if (control == nullptr) throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

/// In the middle, or on the mark of a control that has one: what is beside its text is not it.
inline void click(QWidget& control) {
    const bool isMarked = control.inherits("QCheckBox") || control.inherits("QRadioButton");
    const QPoint mark(8, control.height() / 2);
    QTest::mouseClick(&control, Qt::LeftButton, {}, isMarked ? mark : QPoint());
}
/// A movie is clicked when it has been read, and so is a button of one pressed.
inline void click(ShockwaveFlash& movie) {
    EXPECT_TRUE(comesTrue([&] { return !movie.isReading(); }));
    QTest::mouseClick(&movie, Qt::LeftButton);
}
inline void press(FlashButton& button, Qt::Key key) {
    EXPECT_TRUE(comesTrue([&] { return !button.b1.isReading(); }));
    QTest::keyClick(&button, key);
}

/// The page of this index in a window of several, and the button that shows it.
[[nodiscard]] inline QWidget& pageOf(QWidget& window, int index) {
    return named<QFrame>(window, ("Frame2(" + std::to_string(index) + ')').c_str());
}
[[nodiscard]] inline FlashButton& buttonOf(QWidget& window, int index) {
    return named<FlashButton>(window, ("UserControl11(" + std::to_string(index) + ')').c_str());
}
/// Presses that button.
inline void showPage(QWidget& window, int index) { click(buttonOf(window, index).b1); }

/// Fails for controls that overlap or leave `page`. The title in its picture and two pictures that
/// take turns may cover others.
inline void expectApart(QWidget& page) {
    const auto children = page.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const auto mayCover = [](const QWidget* control) {
        const QString name = control->objectName();
        return name == "Label11" || name == "tii" || control->isWindow();
    };
    for (const QWidget* const one : children) {
        if (mayCover(one)) continue;
        EXPECT_TRUE(page.rect().contains(one->geometry())) << one->objectName().toStdString();
        for (const QWidget* const other : children) {
            if (one == other || mayCover(other)) continue;
            EXPECT_FALSE(one->geometry().intersects(other->geometry()))
                << one->objectName().toStdString() << " and " << other->objectName().toStdString();
        }
    }
}

/// The mouse goes over the middle of a control.
inline void hover(QWidget& control) {
    const QPointF middle(QRectF(control.rect()).center());
    QMouseEvent event(QEvent::MouseMove, middle, control.mapToGlobal(middle), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
}

/// Presses buttons of the message boxes that come, one after the other, as a user does; `NoButton`
/// closes the box.
class Answers {
public:
    struct Seen {
        QString text;
        QMessageBox::Icon icon;
        QString title;
        QMessageBox::StandardButtons buttons;
        Qt::TextFormat format;
    };
    std::vector<Seen> boxes;
    /// Runs under each box, before it is answered.
    std::function<void()> meanwhile = [] {};

    explicit Answers(std::vector<QMessageBox::StandardButton> answers)
        : answers(std::move(answers)) {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { answer(); });
        timer.start(1);
    }

    /// Waits until all of them are given.
    [[nodiscard]] bool areGiven() const {
        return comesTrue([this] {
            return boxes.size() == answers.size() && QApplication::activeModalWidget() == nullptr;
        });
    }

private:
    void answer() {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr || !box->isVisible() || boxes.size() == answers.size()) return;
        const auto wanted = answers.at(boxes.size());
        boxes.push_back({box->text(), box->icon(), box->windowTitle(), box->standardButtons(),
                         box->textFormat()});
        meanwhile();
        if (wanted == QMessageBox::NoButton) {
            box->close();
        } else {
            QTest::mouseClick(box->button(wanted), Qt::LeftButton);
        }
    }

    std::vector<QMessageBox::StandardButton> answers;
    QTimer timer;
};
