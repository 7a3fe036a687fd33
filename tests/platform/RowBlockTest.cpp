#include "platform/ADODB.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace quavernet::test {

namespace {

using ADODB::Field;
using ADODB::RowBlock;

/// A text of `size` letters that no neighbour has.
std::string TextOf(std::size_t number, std::size_t size) {
    std::string text = std::to_string(number) + " ";
    text.resize(size, static_cast<char>('a' + number % 26));
    return text;
}

} // namespace

TEST(RowBlockTest, WholeNumbersOfEverySizeComeBack) {
    constexpr std::int64_t Bit61 = std::int64_t{1} << 61;
    constexpr std::array<std::int64_t, 12> Values{0,
                                                  1,
                                                  -1,
                                                  Bit61 - 1,
                                                  -(Bit61 - 1),
                                                  Bit61,
                                                  -Bit61,
                                                  2 * Bit61,
                                                  -2 * Bit61,
                                                  std::numeric_limits<std::int64_t>::max(),
                                                  std::numeric_limits<std::int64_t>::min(),
                                                  2026};
    RowBlock rows(1);
    for (const std::int64_t value : Values) {
        rows.AddInteger(value);
    }
    for (std::size_t row = 0; row < Values.size(); ++row) {
        EXPECT_EQ(rows.At(row, 0).GetKind(), Field::Kind::Integer);
        EXPECT_EQ(rows.At(row, 0).Integer(), Values[row]);
    }
}

TEST(RowBlockTest, TextsOfEverySizeComeBackFromAnyPiece) {
    constexpr std::array<std::size_t, 9> Sizes{0, 12, 63, 64, 65, 262143, 262144, 262145, 3000000};
    constexpr std::size_t Rounds = 40;
    RowBlock rows(Sizes.size());
    for (std::size_t round = 0; round < Rounds; ++round) {
        for (std::size_t i = 0; i < Sizes.size(); ++i) {
            // One round of the large ones will do.
            rows.AddText(TextOf(round, round == 3 || Sizes[i] < 100 ? Sizes[i] : 1000 + i));
        }
    }
    ASSERT_EQ(rows.Rows(), Rounds);
    for (std::size_t round = 0; round < Rounds; ++round) {
        for (std::size_t i = 0; i < Sizes.size(); ++i) {
            const Field field = rows.At(round, i);
            EXPECT_EQ(field.GetKind(), Field::Kind::Text);
            EXPECT_EQ(field.View(), TextOf(round, round == 3 || Sizes[i] < 100 ? Sizes[i] : 1000 + i));
        }
    }
}

TEST(RowBlockTest, ManyRowsKeepTheirValuesInWhateverOrder) {
    constexpr std::uint32_t Count = 30000; // Cells and texts in several pieces.
    RowBlock rows(4);
    std::vector<std::uint32_t> order;
    for (std::uint32_t row = 0; row < Count; ++row) {
        rows.AddInteger(row);
        rows.AddText(TextOf(row, 20 + row % 40));
        rows.AddReal(row / 7.0);
        rows.AddNull();
        order.push_back(Count - 1 - row);
    }
    const auto expectRow = [](const RowBlock& block, std::size_t row, std::uint32_t added) {
        ASSERT_EQ(block.At(row, 0).Integer(), added);
        ASSERT_EQ(block.At(row, 1).View(), TextOf(added, 20 + added % 40));
        ASSERT_EQ(block.At(row, 2).Number(), added / 7.0);
        ASSERT_TRUE(block.At(row, 3).IsNull());
    };
    for (std::uint32_t row = 0; row < Count; ++row) {
        expectRow(rows, row, row);
    }
    rows.Arrange(order);
    for (std::uint32_t row = 0; row < Count; ++row) {
        expectRow(rows, row, Count - 1 - row);
    }
}

TEST(RowBlockTest, ACopyGoesItsOwnWay) {
    RowBlock first(1);
    first.AddText("short");
    RowBlock second = first;
    second.AddText("only here");
    first.AddText("only there, and longer than before");
    first = RowBlock(first);
    ASSERT_EQ(second.Rows(), 2U);
    EXPECT_EQ(second.At(0, 0).View(), "short");
    EXPECT_EQ(second.At(1, 0).View(), "only here");
    EXPECT_EQ(first.At(0, 0).View(), "short");
    EXPECT_EQ(first.At(1, 0).View(), "only there, and longer than before");
}

} // namespace quavernet::test
