#include "platform/shared/nearness.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Address {
    const char* name;
    std::uint32_t host;
    bool near;
};

void PrintTo(const Address& address, std::ostream* out) { *out << address.name; }

class PrivateAddress : public testing::TestWithParam<Address> {};

TEST_P(PrivateAddress, IsOneThatTheInternetDoesNotRoute) {
    EXPECT_EQ(isPrivate(GetParam().host), GetParam().near);
}

INSTANTIATE_TEST_SUITE_P(
    Edges, PrivateAddress,
    testing::Values(
        Address{"126.255.255.255", 0x7EFFFFFF, false}, Address{"127.0.0.1", 0x7F000001, true},
        Address{"127.255.255.255", 0x7FFFFFFF, true}, Address{"128.0.0.0", 0x80000000, false},
        Address{"9.255.255.255", 0x09FFFFFF, false}, Address{"10.0.0.0", 0x0A000000, true},
        Address{"10.255.255.255", 0x0AFFFFFF, true}, Address{"11.0.0.0", 0x0B000000, false},
        Address{"172.15.255.255", 0xAC0FFFFF, false}, Address{"172.16.0.0", 0xAC100000, true},
        Address{"172.31.255.255", 0xAC1FFFFF, true}, Address{"172.32.0.0", 0xAC200000, false},
        Address{"192.167.255.255", 0xC0A7FFFF, false}, Address{"192.168.0.0", 0xC0A80000, true},
        Address{"192.168.255.255", 0xC0A8FFFF, true}, Address{"192.169.0.0", 0xC0A90000, false},
        Address{"169.253.255.255", 0xA9FDFFFF, false}, Address{"169.254.0.1", 0xA9FE0001, true},
        Address{"169.255.0.0", 0xA9FF0000, false}, Address{"100.63.255.255", 0x643FFFFF, false},
        Address{"100.64.0.0", 0x64400000, true}, Address{"100.127.255.255", 0x647FFFFF, true},
        Address{"100.128.0.0", 0x64800000, false}, Address{"8.8.8.8", 0x08080808, false},
        Address{"0.0.0.0", 0, false}));

TEST(AddressRange, HasTheAddressesThatBeginAlike) {
    const std::vector<AddressRange> ranges = {{0xC6336401, 0xFFFFFF00}, {0xCB007101, 0xFFFFFFFF}};
    EXPECT_TRUE(isIn(ranges, 0xC63364FE));
    EXPECT_FALSE(isIn(ranges, 0xC63365FE));
    EXPECT_TRUE(isIn(ranges, 0xCB007101));
    EXPECT_FALSE(isIn(ranges, 0xCB007102));
    EXPECT_FALSE(isIn({}, 0xCB007101));
}

}  // namespace
