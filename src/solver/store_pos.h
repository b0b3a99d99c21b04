#pragma once

#include <cstdint>

#include "level/result.h"
#include "solver/search_state.h"

namespace kavit {

// Measures the man's walk between two squares (in key numbering) among the boxes of a key.
class WalkMeter {
  public:
    virtual ~WalkMeter() = default;
    [[nodiscard]] virtual int Walk(const std::uint8_t* key, std::uint8_t from, std::uint8_t to) = 0;
};

// Offers one successor to the store, and settles what it is: new, a duplicate on its own side
// (dropped, or improved where it needs fewer moves), or a meeting with the other side.
//
//   GoOn         stored, handled as a duplicate, or a meeting while OptLevel is above 0
//   Ok           a meeting at OptLevel 0
//   OutOfMemory  new, and the store is full
//   Stopped      StopSea was set before the store was looked at
//
// The offer has been hashed; it may have been peeked. Throws SolverFault where the moves do not fit
// their field.
[[nodiscard]] Result StorePos(SearchState& state, Offer& offer, const std::uint8_t* key,
                              std::int32_t parent, std::uint8_t tag, WalkMeter& walk);

// Throws SolverFault when a counter has passed the range of its field. Called once per expanded
// position, not per event.
void CheckCounters(const SearchCounters& counters);

}  // namespace kavit
