#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "output/solve_report.h"

namespace kavit {

// A solution that came with a level, played on its board.
struct RecordedSolution {
    bool Solves = false;
    std::int64_t Moves = 0;
    std::int64_t Pushes = 0;
    std::string Wrong;  // why it does not solve the level, with the place
};

[[nodiscard]] RecordedSolution PlayRecorded(const Board& board, std::string_view lurd);

// One line on it, which says how it compares with what was found. `name` is what it is called.
[[nodiscard]] std::string RecordedText(const RecordedSolution& recorded, const SolveReport& found,
                                       const std::string& name = "Recorded solution");

}  // namespace kavit
