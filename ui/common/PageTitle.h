#pragma once

#include "ui/common/pictures.h"

#include <QString>
#include <QWidget>

/// The picture at the top of a page, which tells its subject.
class PageTitle : public QWidget {
public:
    using QWidget::QWidget;

    void setSubject(const QString& newSubject, pictures::Drawing newDrawing);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString subject;
    pictures::Drawing drawing = nullptr;
};
