#pragma once

#include <cstdint>
#include <vector>

#include "solver/board/grid.h"
#include "solver/moves/build_solution.h"
#include "solver/moves/fewest_moves_table.h"

namespace kavit {

// The boxes and the man of a position, as bits; the boxes in increasing order.
struct MovesPosition {
    std::vector<int> Boxes;
    int Man = 0;

    // The key of it, and its random word.
    std::uint64_t Write(const Grid& grid, std::vector<std::uint8_t>& key) const;
    static MovesPosition Read(const Grid& grid, const std::uint8_t* key, std::size_t boxes);
};

// The pushes of the solution that goes through a position with moves from both sides. Rows name no
// parents: from its moves it is plain which of its neighbours a position was reached from.
[[nodiscard]] std::vector<BoxPush> TracePushes(const Grid& grid, const MovesTable& table,
                                               std::int32_t meeting);

}  // namespace kavit
