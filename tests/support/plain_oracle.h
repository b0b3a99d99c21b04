#pragma once

#include <cstddef>

#include "level/board.h"

namespace kavit::test {

enum class OracleVerdict { Solvable, Unsolvable, TooBig };

struct OracleAnswer {
    OracleVerdict Verdict = OracleVerdict::TooBig;
    int Pushes = 0;  // the fewest
    int Moves = 0;   // the fewest man moves, pushes included, among solutions with so few pushes
};

// Plays the whole game from the board: a state is the man's cell and the cells of the boxes, a move
// is a step or a push, and nothing of the solver's thinking is in it. Gives up beyond so many
// states.
OracleAnswer AskOracle(const Board& board, std::size_t maxStates = 400000);

// The same for the fewest man moves of all solutions, Moves; Pushes are the fewest with so few.
OracleAnswer AskMovesOracle(const Board& board, std::size_t maxStates = 400000);

}  // namespace kavit::test
