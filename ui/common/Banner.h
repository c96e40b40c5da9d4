#pragma once

#include <QString>
#include <QWidget>

/// The band at the top of a window, with the program's icon and the window's subject.
class Banner : public QWidget {
public:
    using QWidget::QWidget;

    void setText(const QString& newSubject);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString subject;
};
