#include "platform/OwnWindows.h"

#include <QWidget>
#include <QWindow>

namespace {

class QtOwnWindows final : public OwnWindows {
public:
    void setTopMost(WindowHandle window, bool topMost) override {
        if (QWindow* const found = find(window)) {
            found->setFlag(Qt::WindowStaysOnTopHint, topMost);
        }
    }

    void setAlpha(WindowHandle window, std::uint8_t alpha) override {
        if (QWindow* const found = find(window)) found->setOpacity(alpha / 255.0);
    }

private:
    static QWindow* find(WindowHandle window) {
        QWidget* const widget = QWidget::find(window);
        return widget == nullptr ? nullptr : widget->windowHandle();
    }
};

}  // namespace

std::unique_ptr<OwnWindows> makeOwnWindows() { return std::make_unique<QtOwnWindows>(); }
