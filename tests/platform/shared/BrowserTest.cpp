#include "platform/Browser.h"

#include "base/Failure.h"
#include "tests/platform/shared/BrowserStandIn.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace {

class SystemBrowser : public testing::Test {
protected:
    BrowserStandIn standIn;
    std::unique_ptr<Browser> browser = makeBrowser();
};

class PlainAddress : public SystemBrowser, public testing::WithParamInterface<const char*> {};

TEST_P(PlainAddress, ReachesTheBrowserByteForByte) {
    browser->open(GetParam());
    EXPECT_EQ(standIn.address(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Kinds, PlainAddress,
                         testing::Values("http://example.org/", "http://example.org/?q=two+words",
                                         "http://example.org/?a=b&c=d%20e%25f#part",
                                         "http://example.org/'$HOME'(;`x`)"));

TEST_F(SystemBrowser, IsNotWaitedFor) {
    standIn.keepRunning();
    browser->open("http://example.org/");
    EXPECT_EQ(standIn.address(), "http://example.org/");
    EXPECT_TRUE(standIn.isRunning());
}

TEST_F(SystemBrowser, FailsForAnAddressThatNoProgramCanBeGiven) {
    EXPECT_THROW(browser->open(std::string_view("a\0b", 3)), Failure);
    EXPECT_FALSE(standIn.isStarted());
}

}  // namespace
