#pragma once

#include <optional>
#include <vector>

namespace kavit {

// What is drawn over the pictures of the board, by cells.
struct BoardMarks {
    std::vector<int> Dead;   // no box may ever stand there
    std::vector<int> Reach;  // where the chosen box can be pushed
    std::vector<int> Stuck;  // boxes that never move again, off goal
    std::vector<int> Wrong;  // what keeps the level from being solved
    std::vector<int> Path;   // the way of a box that would be pushed
    std::optional<int> Selected;

    bool operator==(const BoardMarks&) const = default;
};

}  // namespace kavit
