#pragma once

#include <cstdint>
#include <string>

namespace kavit::bench {

// Prints, for every level whose fewest moves are known (our own, and those of a folder), the moves
// of solution 1 and 0 at optimizer levels 1, 2, 3 and 3 with Special, then the sums, how many
// levels reach the best, and the time of the optimizer against that of the searches. Returns the
// exit status.
int RunMovesTable(const std::string& moreLevels, std::int64_t blocks);

}  // namespace kavit::bench
