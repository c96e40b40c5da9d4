#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <new>

namespace {

TEST(QtEvent, ThatIsBrokenOffEndsAlone) {
    int later = 0;
    QTimer::singleShot(0, [] { throw std::bad_alloc(); });
    QTimer::singleShot(0, [&] { ++later; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return later == 1; }));
}

TEST(QtEvent, OfAClickThatIsBrokenOffLeavesTheButtonUsable) {
    QPushButton button;
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] {
        if (++clicks == 1) throw std::bad_alloc();
    });
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
}

}  // namespace
