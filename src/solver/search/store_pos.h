#pragma once

#include <cstdint>

#include "level/result.h"
#include "solver/search/man_walks.h"
#include "solver/search/search_state.h"

namespace kavit {

// Offers one successor to the store, and settles what it is: new, a duplicate on its own side
// (dropped, or improved where it needs fewer moves), or a meeting with the other side.
//
//   GoOn         stored, handled as a duplicate, or a meeting while OptLevel is above None
//   Ok           a meeting at OptLevel None
//   OutOfMemory  new, and the store is full
//   Stopped      StopSea was set before the store was looked at
//
// In the optimizer (SeaPhase 2) a meeting does not end the storing of new positions, and those that
// are stored carry 10 more than their side as tag. With SpecialActive the probing goes on past a
// hit, so that a position is improved on its own side and meets the other, and is stored for its
// own side where that does not hold it yet; never twice for one side.
//
// `table` is the store's table in use. The offer has been hashed; it may have been peeked. Throws
// SolverFault where the moves do not fit their field.
template <typename Table>
[[nodiscard]] Result StorePos(SearchState& state, const Table& table, Offer& offer,
                              const std::uint8_t* key, std::int32_t parent, std::uint8_t tag,
                              ManWalks& walks);

}  // namespace kavit
