#include "output/PrintPages.h"

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(PrintPagesTest, TheHeaderTakesTheRoomOfOneRow) {
    EXPECT_EQ(RowsPerPage(100, 10), 9U);
    EXPECT_EQ(RowsPerPage(109, 10), 9U);
    EXPECT_EQ(RowsPerPage(20, 10), 1U);
}

TEST(PrintPagesTest, APageTooLowForHeaderAndRowHoldsNone) {
    for (const double height : {19.9, 10.0, 0.0, -50.0}) {
        EXPECT_EQ(RowsPerPage(height, 10), 0U) << height;
    }
    EXPECT_EQ(RowsPerPage(100, 0), 0U);
}

TEST(PrintPagesTest, EachRowIsOnOnePageInOrder) {
    for (const std::size_t perPage : {1U, 7U, 50U}) {
        for (const std::size_t rows : {0U, 1U, 6U, 7U, 8U, 49U, 50U, 51U, 100U}) {
            std::size_t next = 0;
            for (std::size_t page = 0; page < PageCount(perPage, rows); ++page) {
                const PageRows found = RowsOfPage(page, perPage, rows);
                EXPECT_EQ(found.First, next);
                EXPECT_LE(found.End - found.First, perPage);
                EXPECT_TRUE(found.End > found.First || rows == 0) << "no page is empty";
                next = found.End;
            }
            EXPECT_EQ(next, rows) << perPage;
        }
    }
}

TEST(PrintPagesTest, ATableWithoutRowsTakesOnePage) {
    EXPECT_EQ(PageCount(50, 0), 1U);
    EXPECT_EQ(RowsOfPage(0, 50, 0), (PageRows{0, 0}));
}

TEST(PrintPagesTest, FullPagesAreFollowedByNoEmptyOne) {
    EXPECT_EQ(PageCount(50, 100), 2U);
    EXPECT_EQ(PageCount(50, 101), 3U);
    EXPECT_EQ(RowsOfPage(2, 50, 100), (PageRows{100, 100}));
}

TEST(PrintPagesTest, ColumnsThatHaveRoomKeepTheirWidths) {
    EXPECT_EQ(ShareOfWidths({30, 20, 10}, 100), 1);
    EXPECT_EQ(ShareOfWidths({30, 20, 10}, 60), 1);
    EXPECT_EQ(ShareOfWidths({}, 60), 1);
    EXPECT_EQ(PlaceColumns({30, 20, 10}, 1), (std::vector<ColumnPlace>{{0, 30}, {30, 20}, {50, 10}}));
}

TEST(PrintPagesTest, ColumnsThatAreTooWideShrinkEvenlyToTheRoom) {
    EXPECT_EQ(ShareOfWidths({60, 40, 20}, 60), 0.5);
    EXPECT_EQ(PlaceColumns({60, 40, 20}, 0.5), (std::vector<ColumnPlace>{{0, 30}, {30, 20}, {50, 10}}));
}

TEST(PrintPagesTest, WithoutRoomColumnsHaveNoWidth) {
    EXPECT_EQ(ShareOfWidths({60, 40}, 0), 0);
    EXPECT_EQ(ShareOfWidths({60, 40}, -5), 0);
    EXPECT_TRUE(PlaceColumns({}, 1).empty());
}

} // namespace quavernet::test
