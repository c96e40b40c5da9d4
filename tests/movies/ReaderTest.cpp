#include "movies/format/Reader.h"

#include "base/Failure.h"
#include "tests/movies/MovieFile.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

TEST(MovieReader, ReadsNumbersLowByteFirst) {
    swf::Reader reader("\x01\x02\x03\x04\x05\x06\xFF\xFF\xFF"sv);
    EXPECT_EQ(reader.u16(), 0x0201);
    EXPECT_EQ(reader.u32(), 0x06050403U);
    EXPECT_EQ(reader.i16(), -1);
    EXPECT_EQ(reader.u8(), 255);
    EXPECT_TRUE(reader.atEnd());
}

TEST(MovieReader, ReadsBitsFromTheHighestOn) {
    swf::Reader reader("\xA5\x0F\xF0"sv);
    EXPECT_EQ(reader.bits(3), 5U);
    EXPECT_EQ(reader.signedBits(2), 0);
    EXPECT_EQ(reader.bits(11), 0x50FU);
    EXPECT_EQ(reader.signedBits(4), -1);
}

TEST(MovieReader, TakesWholeBytesFromTheNextOneOn) {
    swf::Reader reader("\x80\x07"sv);
    EXPECT_TRUE(reader.bit());
    EXPECT_EQ(reader.u8(), 7);
}

TEST(MovieReader, ReadsAllWidths) {
    for (unsigned width = 0; width <= 32; ++width) {
        const std::int64_t least = width == 0 ? 0 : -(std::int64_t{1} << (width - 1));
        const std::string bytes = Bits().bits(least, width).bits(-least - 1, width).get();
        swf::Reader reader(bytes);
        EXPECT_EQ(reader.signedBits(width), least) << width;
        EXPECT_EQ(reader.signedBits(width), width == 0 ? 0 : -least - 1) << width;
    }
}

TEST(MovieReader, FailsWhereTheBytesEnd) {
    swf::Reader reader("ab"sv);
    EXPECT_THROW((void)reader.u32(), Failure);
    EXPECT_THROW((void)swf::Reader("ab"sv).text(), Failure);
    EXPECT_THROW((void)swf::Reader("ab"sv).bytes(3), Failure);
    EXPECT_THROW((void)swf::Reader("ab"sv).bits(17), Failure);
    EXPECT_THROW((void)swf::Reader(""sv).bit(), Failure);
}

TEST(MovieReader, ReadsTextsUpToTheirEnd) {
    swf::Reader reader("one\0\0two\0"sv);
    EXPECT_EQ(reader.text(), "one");
    EXPECT_EQ(reader.text(), "");
    EXPECT_EQ(reader.text(), "two");
}

TEST(MovieRecords, PassOverEveryFilter) {
    Bits filters;
    filters.u8(8);
    for (const auto& [kind, length] : {std::pair{0, 23}, {1, 9}, {2, 15}, {3, 27}, {6, 80}}) {
        filters.u8(static_cast<unsigned>(kind))
            .raw(std::string(static_cast<std::size_t>(length), 'x'));
    }
    filters.u8(4).u8(2).raw(std::string(29, 'x')).u8(7).u8(3).raw(std::string(34, 'x'));
    filters.u8(5).u8(3).u8(2).raw(std::string(8 + 4 * 6 + 5, 'x')).u8(77);
    swf::Reader reader(filters.get());
    swf::skipFilters(reader);
    EXPECT_EQ(reader.u8(), 77);
}

}  // namespace
