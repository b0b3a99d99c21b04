#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "solver/search/search_state.h"

namespace kavit {

struct BoxPush {
    int From = 0;       // cell of the box
    int Direction = 0;  // as in Dir
};

struct BuiltSolution {
    std::string SolBuild;    // the move string
    int SolBuildMoves = 0;   // its letters
    int SolBuildPushes = 0;  // its pushes
};

// Turns the pushes of a solution into a move string: for every push the man's shortest walk to the
// cell behind the box, then the push. Among equally short walks he prefers left, down, right, up at
// each step. Throws SolverFault when a push cannot be made.
[[nodiscard]] BuiltSolution BuildSolution(const BoardArrays& arrays,
                                          const std::vector<BoxPush>& pushes);
// The same for a chain of positions (KeptSolution::SolSteps); they must be one push apart each.
[[nodiscard]] BuiltSolution BuildSolution(const BoardArrays& arrays, const PositionStore& store,
                                          const std::vector<std::int32_t>& solSteps);

}  // namespace kavit
