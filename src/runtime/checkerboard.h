#pragma once

#include <cstdint>
#include <string_view>

namespace kelmo {

// The player stage's checkerboard: square cells of checkerCellSize, laid from the
// top-left corner. For a stage of width W and height H the columns run from 0 to
// floor(W / size) + 1 and the rows from 0 to floor(H / size) + 1, both inclusive, so
// the pattern always reaches at least one cell past the right and bottom edges.
inline constexpr double checkerCellSize = 20;

struct CheckerboardCells {
    int columns = 0; // cells drawn across, indices 0 to columns - 1
    int rows = 0;    // cells drawn down, indices 0 to rows - 1

    bool operator==(const CheckerboardCells&) const = default;
};

CheckerboardCells checkerboardCells(double width, double height);

// The cell's colour as 0xRRGGBB: the darker tone where row + column is odd.
std::uint32_t checkerboardColor(int row, int column);

} // namespace kelmo
