#pragma once

#include "cases.h"

namespace kavit::bench {

// Prints, for every level of the test folder, the moves of solution 1 and 0 at optimizer levels 1,
// 2, 3 and 3 with Special beside the fewest moves known, then the sums, how many levels reach the
// best, and the time of the optimizer against that of the searches. Returns the exit status.
int RunMovesTable(const Folders& folders, std::int64_t blocks);

}  // namespace kavit::bench
