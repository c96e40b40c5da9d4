#include "platform/OwnWindows.h"
#include "tests/platform/linux/x11/Desktop.h"

#include <QWidget>

#include <vector>

namespace {

using testing::Test;

class OwnWindow : public Desktop {
protected:
    [[nodiscard]] static xcb_window_t numberOf(const QWidget& widget) {
        return static_cast<xcb_window_t>(widget.winId());
    }
    [[nodiscard]] std::vector<std::uint32_t> opacity(const QWidget& widget) {
        return other.numbers(numberOf(widget), "_NET_WM_WINDOW_OPACITY");
    }
    [[nodiscard]] testing::AssertionResult becomes(const QWidget& widget,
                                                   const std::vector<std::uint32_t>& expected) {
        if (comesTrue([&] { return opacity(widget) == expected; })) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << testing::PrintToString(opacity(widget));
    }
    void setWorkArea(std::uint32_t desktop, const std::vector<std::uint32_t>& areas) {
        other.setNumbers(other.root(), "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL, {desktop});
        other.setNumbers(other.root(), "_NET_WORKAREA", XCB_ATOM_CARDINAL, areas);
    }

    std::unique_ptr<OwnWindows> own = makeOwnWindows();
};

TEST_F(OwnWindow, IsAsOpaqueAsItIsSetFromTheMomentThatItIsMade) {
    const QWidget widget;
    own->setAlpha(widget.winId(), 0);
    EXPECT_TRUE(becomes(widget, {0}));
    own->setAlpha(widget.winId(), 128);
    EXPECT_TRUE(becomes(widget, {0x80808080}));
    own->setAlpha(widget.winId(), 254);
    EXPECT_TRUE(becomes(widget, {0xFEFEFEFE}));
}

TEST_F(OwnWindow, SaysNothingOfItsOpacityWhenItIsSolid) {
    const QWidget widget;
    own->setAlpha(widget.winId(), 255);
    own->setAlpha(widget.winId(), 1);
    EXPECT_TRUE(becomes(widget, {0x01010101}));
    own->setAlpha(widget.winId(), 255);
    EXPECT_TRUE(becomes(widget, {}));
}

TEST_F(OwnWindow, IsNoneOfAnotherProgram) {
    const auto window = open(looks::other("other"));
    const QWidget widget;
    own->setAlpha(window, 100);
    own->setTopMost(window, true);
    own->setAlpha(0, 100);
    own->setTopMost(0, true);
    own->setAlpha(widget.winId(), 100);
    EXPECT_TRUE(becomes(widget, {0x64646464}));
    EXPECT_EQ(other.bytes(window, "_NET_WM_WINDOW_OPACITY"), std::nullopt);
}

TEST_F(OwnWindow, MayBeGone) {
    WId gone = 0;
    {
        const QWidget widget;
        gone = widget.winId();
    }
    own->setAlpha(gone, 100);
    own->setTopMost(gone, true);
    const QWidget widget;
    own->setAlpha(widget.winId(), 100);
    EXPECT_TRUE(becomes(widget, {0x64646464}));
}

TEST_F(OwnWindow, HasTheWorkAreaOfTheDesktopThatIsShown) {
    setWorkArea(1, {0, 0, 10, 10, 5, 20, 900, 700});
    EXPECT_EQ(own->workArea(), (ScreenRectangle{5, 20, 905, 720}));
    setWorkArea(0, {0, 0, 1024, 768});
    EXPECT_EQ(own->workArea(), (ScreenRectangle{0, 0, 1024, 768}));
}

TEST_F(OwnWindow, HasNoWorkAreaWhereWhatIsSaidIsNonsense) {
    setWorkArea(2, {0, 0, 1024, 768, 0, 0, 1024, 768});
    EXPECT_EQ(own->workArea(), std::nullopt);
    setWorkArea(0xFFFFFFFF, {0, 0, 1024, 768});
    EXPECT_EQ(own->workArea(), std::nullopt);
    for (const std::vector<std::uint32_t>& area :
         std::vector<std::vector<std::uint32_t>>{{},
                                                 {0, 0, 1024},
                                                 {0, 0, 0, 0},
                                                 {0, 0, 1025, 768},
                                                 {0xFFFFFFFF, 0, 2, 2},
                                                 {1, 1, 1024, 768}}) {
        setWorkArea(0, area);
        EXPECT_EQ(own->workArea(), std::nullopt) << testing::PrintToString(area);
    }
    other.remove(other.root(), "_NET_WORKAREA");
    EXPECT_EQ(own->workArea(), std::nullopt);
}

TEST_F(OwnWindow, HasTheWorkAreaThatAWindowManagerNames) {
    manage();
    EXPECT_EQ(own->workArea(), (ScreenRectangle{0, 0, 1024, 768}));
}

}  // namespace
