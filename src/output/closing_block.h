#pragma once

#include <cstdint>
#include <string>

#include "solver/solver.h"

namespace kavit {

// What a search took, in a few lines: the solver explains itself. Lines end with LF.
[[nodiscard]] std::string ClosingBlock(const SearchCounters& counters, std::int64_t numPos);

}  // namespace kavit
