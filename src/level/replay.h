#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "level/board.h"

namespace kavit {

// What became of a move string that was played on a board.
struct ReplayOutcome {
    bool Solved = false;     // every letter could be played, and then every box stood on a goal
    std::int64_t Moves = 0;  // steps of the man that were played, pushes included
    std::int64_t Pushes = 0;
    std::size_t FailedAt = 0;  // index of the letter that can't be played (0 when there is no man)
    std::string What;          // why, as a sentence; "" when every letter could be played

    [[nodiscard]] bool Played() const { return What.empty(); }
};

// Plays `lurd` ("l", "d", "r", "u" for a step, capitals for a push) by the rules of the board
// alone: it shares nothing with the solver, whose answers it checks. The man is where the board
// shows him, whatever ManPos says.
[[nodiscard]] ReplayOutcome Replay(const Board& board, std::string_view lurd);

}  // namespace kavit
