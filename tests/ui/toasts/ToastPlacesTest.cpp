#include "ui/toasts/toastPlaces.h"

#include <gtest/gtest.h>

namespace {

TEST(ToastPlaces, TheSearchGoesFarBeyondTheSlotsOnAnOrdinaryScreen) {
    EXPECT_EQ(toastPlaces::lastPlace(1024 * 15), 130);
    EXPECT_EQ(toastPlaces::lastPlace(768 * 15), 97);
}

TEST(ToastPlaces, OnlyTheLowestOfScreensEndTheSearchEarly) {
    EXPECT_EQ(toastPlaces::lastPlace(1392), 10);
    EXPECT_EQ(toastPlaces::lastPlace(1391), 9);
    EXPECT_EQ(toastPlaces::lastPlace(232), 0);
    EXPECT_LT(toastPlaces::lastPlace(231), 0);
}

TEST(ToastPlaces, ATaskBarIsWhatIsLeftBelowTheWorkArea) {
    EXPECT_EQ(toastPlaces::TaskbarHeight(768 * 15, 738), 30 * 15);
    EXPECT_EQ(toastPlaces::TaskbarHeight(768 * 15, 768), 0);
    EXPECT_EQ(toastPlaces::TaskbarHeight(768 * 15, 800), -32 * 15);
}

TEST(ToastPlaces, ATaskBarAbove32767TwipsHasNoHeight) {
    EXPECT_EQ(toastPlaces::TaskbarHeight(2200 * 15, 0), std::nullopt);
}

TEST(ToastPlaces, ToastsStackUpwardsWithoutAGap) {
    EXPECT_EQ(toastPlaces::top(0, 1740, 768 * 15, 450), 768 * 15 - 1740 - 450);
    EXPECT_EQ(toastPlaces::top(1, 1740, 768 * 15, 450), 768 * 15 - 2 * 1740 - 450);
}

TEST(ToastPlaces, NothingKeepsTheUppermostOnALowScreen) {
    EXPECT_LT(toastPlaces::top(10, 1740, 768 * 15, 0), 0);
}

}  // namespace
