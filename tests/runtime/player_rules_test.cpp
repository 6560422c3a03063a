#include "runtime/checkerboard.h"
#include "runtime/viewport_mode.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

TEST(ViewportModeTest, RawValuesRoundTripAndNothingElseIsAMode) {
    for (const ViewportMode mode : allViewportModes)
        EXPECT_EQ(viewportModeFromRawValue(rawValue(mode)), mode);
    for (const std::string_view other : {"desktop", "PHONE", " Tablet", "Tablet ", "", "Watch"})
        EXPECT_EQ(viewportModeFromRawValue(other), std::nullopt) << other;
}

TEST(CheckerboardTest, CellsRunOnePastTheStageAndNeighboursAlternateBetweenTwoTones) {
    EXPECT_EQ(checkerboardCells(100, 50), (CheckerboardCells{7, 4}));
    EXPECT_EQ(checkerboardCells(0, 0), (CheckerboardCells{2, 2}));
    EXPECT_EQ(checkerboardCells(19.9, 20), (CheckerboardCells{2, 3}));
    EXPECT_NE(checkerboardColor(0, 0), checkerboardColor(0, 1));
    EXPECT_EQ(checkerboardColor(0, 1), checkerboardColor(1, 0));
    EXPECT_EQ(checkerboardColor(3, 6), checkerboardColor(0, 1));
    EXPECT_EQ(checkerboardColor(3, 5), checkerboardColor(0, 0));
}

} // namespace
} // namespace kelmo
