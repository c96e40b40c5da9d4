#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <new>

// There where leaks are looked for.
extern "C" [[gnu::weak]] void ignoreLeaks() asm("__lsan_disable");
extern "C" [[gnu::weak]] void noticeLeaks() asm("__lsan_enable");

namespace {

/// Qt keeps some bytes of an event that an exception goes through: a leak that is known.
class KnownLeak {
public:
    KnownLeak() {
        if (ignoreLeaks != nullptr) ignoreLeaks();
    }
    ~KnownLeak() {
        if (noticeLeaks != nullptr) noticeLeaks();
    }
    KnownLeak(const KnownLeak&) = delete;
    KnownLeak& operator=(const KnownLeak&) = delete;
};

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
    {
        const KnownLeak leak;
        QTest::mouseClick(&button, Qt::LeftButton);
    }
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
}

}  // namespace
