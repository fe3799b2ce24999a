#include "Tools/overlayview/RowOrder.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using overlayview::pictureRow;
using overlayview::RowOrder;
using testing::ElementsAre;

std::vector<std::uint32_t> rows(std::uint32_t height, RowOrder order) {
    std::vector<std::uint32_t> places;
    for (std::uint32_t stored = 0; stored < height; ++stored) {
        places.push_back(pictureRow(stored, height, order));
    }
    return places;
}

TEST(RowOrderTest, ProgressiveRowsStayWhereTheyAre) {
    EXPECT_THAT(rows(4, RowOrder::Progressive), ElementsAre(0, 1, 2, 3));
}

TEST(RowOrderTest, ThreeInterlacedRowsAreStoredAsZeroTwoOne) {
    EXPECT_THAT(rows(3, RowOrder::Interlaced), ElementsAre(0, 2, 1));
}

TEST(RowOrderTest, EvenRowsComeFirstForAnyHeight) {
    EXPECT_THAT(rows(1, RowOrder::Interlaced), ElementsAre(0));
    EXPECT_THAT(rows(2, RowOrder::Interlaced), ElementsAre(0, 1));
    EXPECT_THAT(rows(6, RowOrder::Interlaced), ElementsAre(0, 2, 4, 1, 3, 5));
}

}  // namespace
