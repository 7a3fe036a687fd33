#include "platform/ByteOrder.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace quavernet::test {

TEST(ByteOrderTest, NumbersReadInBothOrders) {
    constexpr std::array<std::uint8_t, 5> bytes = {0x00, 0x01, 0x02, 0x83, 0xFF};
    EXPECT_EQ(BigEndian<std::uint32_t>(bytes, 1), 0x010283FFu);
    EXPECT_EQ(LittleEndian<std::uint32_t>(bytes, 1), 0xFF830201u);
    EXPECT_EQ(BigEndian<std::uint16_t>(bytes, 3), 0x83FFu);
    EXPECT_EQ(LittleEndian<std::int32_t>(bytes, 1), static_cast<std::int32_t>(0xFF830201u))
        << "with its sign";
    EXPECT_EQ(BigEndian<std::uint32_t>(bytes, 1, 3), 0x010283u);
    EXPECT_EQ(LittleEndian<std::uint32_t>(bytes, 1, 3), 0x830201u);
}

TEST(ByteOrderTest, MissingBytesCountAsZero) {
    constexpr std::array<std::byte, 2> bytes = {std::byte{0x12}, std::byte{0x34}};
    EXPECT_EQ(BigEndian<std::uint32_t>(bytes, 1), 0x34000000u);
    EXPECT_EQ(LittleEndian<std::uint32_t>(bytes, 1), 0x34u);
    EXPECT_EQ(BigEndian<std::uint32_t>(bytes, 9), 0u);
    EXPECT_EQ(LittleEndian<std::uint64_t>(std::string_view("\xFF"), 0), 0xFFu) << "signed characters too";
}

} // namespace quavernet::test
