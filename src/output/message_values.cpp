#include "output/messages.h"
#include "solver/hooks.h"
#include "solver/solver.h"

namespace kavit {

void ReadValues(MessageValues& values, const Solver& solver, const SolverHooks& hooks) {
    const SearchCounters& counters = solver.Counters();
    values.Blocks = solver.AppliedSizes().Blocks;
    values.SeaSteps = counters.SeaSteps;
    for (int k = 0; k < 2; ++k) {
        values.SolMoves[static_cast<std::size_t>(k)] = solver.Kept(k).SolMoves;
        values.SolPushes[static_cast<std::size_t>(k)] = solver.Kept(k).SolPushes;
    }
    values.nSol = counters.nSol;
    values.ForwLevel = counters.ForwLevel;
    values.BackLevel = counters.BackLevel;
    values.TimeOut = hooks.TimeOut;
}

}  // namespace kavit
