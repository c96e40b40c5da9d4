#include "proxy/firstWords.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::uint32_t self = 0x7F000001;

TEST(FirstWords, NameTheVersionAndWhatToEnter) {
    const auto lines = firstWords("1.2.3", 1090, std::vector{self});
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines[0], StartsWith("Cobweave 1.2.3 is ready. "));
    EXPECT_THAT(lines[0], HasSubstr("SOCKS version 4, server 127.0.0.1, port 1090."));
}

TEST(FirstWords, NameTheAddressesThatOtherMachinesMayKnow) {
    const auto lines =
        firstWords("1", 1090, std::vector<std::uint32_t>{self, 0xC0A80105, 0x0A000002});
    EXPECT_THAT(lines[0], HasSubstr("(from another machine: 192.168.1.5 or 10.0.0.2)"));
}

TEST(FirstWords, SayThatThePortIsOpen) {
    const std::string open = firstWords("1", 1090, {})[1];
    EXPECT_THAT(open, HasSubstr("open to your network"));
    EXPECT_THAT(open, HasSubstr("README says how to close it"));
    EXPECT_THAT(firstWords("1", 1090, {})[0], Not(HasSubstr("another machine")));
}

}  // namespace
