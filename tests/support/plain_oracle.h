#pragma once

#include <cstddef>

#include "level/board.h"

namespace kavit::test {

enum class OracleVerdict { Solvable, Unsolvable, TooBig };

// What a solution must have fewest of; of the other, it has the fewest that go with it.
enum class OracleAim { FewestPushes, FewestMoves };

struct OracleAnswer {
    OracleVerdict Verdict = OracleVerdict::TooBig;
    int Pushes = 0;
    int Moves = 0;  // steps of the man, pushes included
};

// Plays the whole game from the board: a state is the man's cell and the cells of the boxes, a move
// is a step or a push, and nothing of the solver's thinking is in it. Gives up beyond so many
// states.
OracleAnswer AskOracle(const Board& board, std::size_t maxStates,
                       OracleAim aim = OracleAim::FewestPushes);

}  // namespace kavit::test
