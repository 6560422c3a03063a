#include "runtime/checkerboard.h"

#include <algorithm>
#include <cmath>

namespace kelmo {

CheckerboardCells checkerboardCells(double width, double height) {
    const auto lastIndex = [](double length) {
        return static_cast<int>(std::floor(std::max(length, 0.0) / checkerCellSize)) + 1;
    };
    // Both last indices are drawn.
    return {lastIndex(width) + 1, lastIndex(height) + 1};
}

std::uint32_t checkerboardColor(int row, int column) {
    return (row + column) % 2 != 0 ? 0xe8dfd4 : 0xf0e8de;
}

} // namespace kelmo
