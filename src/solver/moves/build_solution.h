#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "solver/search/search_state.h"

namespace kavit {

struct BuiltSolution {
    std::string SolBuild;    // the move string
    int SolBuildMoves = 0;   // its letters
    int SolBuildPushes = 0;  // its pushes
};

// Turns a chain of positions (KeptSolution::SolSteps) into a move string: for every push the man's
// shortest walk to the cell behind the box, then the push. Among equally short walks he prefers
// left, down, right, up at each step. Throws SolverFault when a position of the chain is not one
// push away from the one before.
[[nodiscard]] BuiltSolution BuildSolution(const BoardArrays& arrays, const PositionStore& store,
                                          const std::vector<std::int32_t>& solSteps);

}  // namespace kavit
