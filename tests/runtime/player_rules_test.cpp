#include "runtime/checkerboard.h"
#include "runtime/viewport_mode.h"

#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace kelmo {
namespace {

TEST(ViewportModeTest, RawValuesRoundTripInPickerOrderAndNothingElseIsAMode) {
    std::vector<std::string_view> raw;
    for (const ViewportMode mode : allViewportModes) {
        raw.push_back(rawValue(mode));
        EXPECT_EQ(viewportModeFromRawValue(rawValue(mode)), mode);
    }
    EXPECT_EQ(raw, (std::vector<std::string_view>{"Desktop", "Tablet", "Phone"}));

    for (const std::string_view other : {"desktop", "PHONE", " Tablet", "Tablet ", "", "Watch"})
        EXPECT_EQ(viewportModeFromRawValue(other), std::nullopt) << other;
}

TEST(CheckerboardTest, CellsRunOnePastTheStageAndNeighboursAlternateBetweenTheTwoTones) {
    EXPECT_EQ(checkerboardCells(100, 50), (CheckerboardCells{7, 4}));
    EXPECT_EQ(checkerboardCells(0, 0), (CheckerboardCells{2, 2}));
    EXPECT_EQ(checkerboardCells(19.9, 20), (CheckerboardCells{2, 3}));
    EXPECT_EQ(checkerboardCells(1100, 700), (CheckerboardCells{57, 37}));
    EXPECT_EQ(checkerboardColor(0, 0), "#f0e8de");
    EXPECT_EQ(checkerboardColor(0, 1), "#e8dfd4");
    EXPECT_EQ(checkerboardColor(1, 0), "#e8dfd4");
    EXPECT_EQ(checkerboardColor(3, 6), "#e8dfd4");
    EXPECT_EQ(checkerboardColor(3, 5), "#f0e8de");
}

} // namespace
} // namespace kelmo
