#pragma once

#include <QLabel>

/// Text that is shown as it is, over as many lines as it needs.
class TextLabel : public QLabel {
public:
    explicit TextLabel(QWidget* parent);

    /// Headings are bold.
    void setHeading(bool heading);
};
