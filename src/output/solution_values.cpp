#include "output/solution_file.h"

namespace kavit {

void ReadSolver(ReportInput& report, const Solver& solver) {
    for (const int k : {0, 1})
        report.Kept[static_cast<std::size_t>(k)] = solver.Kept(k).value_or(KeptSolution{});
    report.Counters = solver.Counters();
    report.NumPos = solver.AppliedSizes().NumPos;
}

}  // namespace kavit
