#pragma once

#include "ui/common/pictures.h"
#include "ui/common/twips.h"

#include <QLabel>
#include <QWidget>

#include <span>
#include <string>
#include <string_view>

/// Gives a widget a tool-tip of these lines, as they are, each wrapped where it must be, which
/// assistive programs get as its description; none without lines.
void setTip(QWidget& widget, const QString& lines);

/// Text that is shown as it is, over as many lines as it needs.
class TextLabel : public QLabel {
public:
    explicit TextLabel(QWidget* parent);

    /// Headings are bold.
    void setHeading(bool heading);
};

/// A transparent label for text that peers have sent: shown as it is, whatever it holds, and
/// wrapped where it must be. The last line that fits ends in an ellipsis where there is more.
class PlainLabel : public QWidget {
public:
    explicit PlainLabel(QWidget* parent = nullptr);

    /// How far the text stays from the edges, in pixels.
    void setMargins(const QMargins& newMargins) { margins = newMargins; }
    /// Takes a text of any length; the label shows as much as it has room for.
    void setText(std::string_view newText);
    /// The whole text, as it was set.
    [[nodiscard]] const std::string& text() const { return whole; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string whole;
    QString shown;
    QMargins margins;
};

/// A text in one line, as it is. What does not fit ends in an ellipsis.
class LineLabel : public QLabel {
public:
    explicit LineLabel(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// The band at the top of a window, with the program's icon and the window's subject.
class Banner : public QWidget {
public:
    explicit Banner(QWidget* parent);

    /// Sets the subject, which is also the name for assistive programs.
    void setText(const QString& newSubject);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString subject;
};

/// The band at the top of a page, with a small picture and the page's subject.
class PageTitle : public QWidget {
public:
    explicit PageTitle(QWidget* parent);

    /// Sets subject and picture; the subject is also the name for assistive programs.
    void setSubject(const QString& newSubject, Drawing newDrawing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString subject;
    Drawing drawing = nullptr;
};

/// A label whose text never changes, as the design of a window lists it.
struct Caption {
    const char* name;
    Twips place;
    const char* text;
    bool isHeading = false;
};

/// Makes the labels, as children of `page`, which owns them.
void addCaptions(QWidget* page, std::span<const Caption> captions);
