#include "output/solution_file.h"

namespace kavit {

void ReadSolver(ReportInput& report, const Solver& solver) {
    report.Kept = {solver.Kept(0), solver.Kept(1)};
    report.Counters = solver.Counters();
    report.NumPos = solver.AppliedSizes().NumPos;
}

}  // namespace kavit
