#pragma once

namespace kavit {

class Solver;

// So many chunks of positions must wait before a solve is worth more than one thread, from the next
// level analysed on. Tests that set 1 have every thread at work on levels of any size.
void SetWorthThreads(Solver& solver, int chunks);

}  // namespace kavit
