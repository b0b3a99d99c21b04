#pragma once

#include "solver/board/grid.h"
#include "solver/board/row_bits.h"

namespace kavit {

// Calls f with an empty set of the type that the level's bit board has.
template <typename F>
decltype(auto) WithSetOf(Grid::Shape shape, F&& f) {
    switch (shape) {
        case Grid::Shape::kRows16x8:
            return f(RowBits<1, 1>{});
        case Grid::Shape::kRows8x16:
            return f(RowBits<2, 1>{});
        case Grid::Shape::kRows16x16:
            return f(RowBits<2, 2>{});
        case Grid::Shape::kRows16x32:
            break;
    }
    return f(RowBits<4, 4>{});
}

}  // namespace kavit
