#pragma once

#include "ui/common/pictures.h"

#include <QString>
#include <QWidget>

/// The band at the top of a window, with the program's icon and the window's subject.
class Banner : public QWidget {
public:
    using QWidget::QWidget;

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
    using QWidget::QWidget;

    /// Sets both; the subject is also the name for assistive programs.
    void setSubject(const QString& newSubject, Drawing newDrawing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString subject;
    Drawing drawing = nullptr;
};
