#include "platform/OwnWindows.h"

#include "platform/windows/win32.h"

#include <QWidget>

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(OwnWindow, IsAboveOthersAsLongAsItIsSet) {
    const std::unique_ptr<OwnWindows> windows = makeOwnWindows();
    const QWidget widget;
    const auto isTopMost = [&] {
        return (GetWindowLongPtrW(toSystem(widget.winId()), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    };
    EXPECT_FALSE(isTopMost());
    windows->setTopMost(widget.winId(), true);
    EXPECT_TRUE(isTopMost());
    windows->setTopMost(widget.winId(), false);
    EXPECT_FALSE(isTopMost());
}

}  // namespace
