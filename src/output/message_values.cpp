#include "output/messages.h"
#include "solver/hooks.h"
#include "solver/solver.h"

namespace kavit {

void ReadValues(MessageValues& values, const Solver& solver, const SolverHooks& hooks) {
    const SearchCounters& counters = solver.Counters();
    values.Blocks = solver.AppliedSizes().Blocks;
    values.SeaSteps = counters.SeaSteps;
    for (int k = 0; k < 2; ++k) {
        constexpr int kUnknown = 32767;  // what the texts show where nothing is kept
        const auto& kept = solver.Kept(k);
        values.SolMoves[static_cast<std::size_t>(k)] = kept ? kept->SolMoves : kUnknown;
        values.SolPushes[static_cast<std::size_t>(k)] = kept ? kept->SolPushes : kUnknown;
    }
    values.nSol = counters.nSol;
    values.ForwLevel = counters.ForwLevel;
    values.BackLevel = counters.BackLevel;
    values.TimeOut = hooks.StopSea == StopCause::Time;
}

}  // namespace kavit
