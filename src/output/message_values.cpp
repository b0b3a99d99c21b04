#include "output/messages.h"
#include "output/solve_report.h"
#include "solver/solver.h"

namespace kavit {

namespace {

using Kept = std::optional<KeptSolution>;

MessageValues ValuesOf(const Sizes& sizes, const SearchCounters& counters, const Kept& fewestMoves,
                       const Kept& fewestPushes, StopCause cause) {
    MessageValues values;
    values.Blocks = sizes.Blocks;
    values.SeaSteps = counters.SeaSteps;
    if (fewestMoves) {  // no text shows them where nothing is kept
        values.SolMoves = {fewestMoves->SolMoves, fewestPushes->SolMoves};
        values.SolPushes = {fewestMoves->SolPushes, fewestPushes->SolPushes};
    }
    values.nSol = counters.nSol;
    values.ForwLevel = counters.ForwLevel;
    values.BackLevel = counters.BackLevel;
    values.TimeOut = cause == StopCause::Time;
    return values;
}

}  // namespace

MessageValues ReadValues(const Solver& solver, StopCause cause) {
    return ValuesOf(solver.AppliedSizes(), solver.Counters(), solver.Kept(0), solver.Kept(1),
                    cause);
}

MessageValues ReadValues(const SolveReport& report) {
    return ValuesOf(report.Sizes, report.Counters, report.Kept[0], report.Kept[1], report.Cause);
}

}  // namespace kavit
