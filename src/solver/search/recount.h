#pragma once

#include "solver/search/search_state.h"

// What the search keeps as running counts, derived again from the rows and the slots alone. Builds
// without NDEBUG do it after each level and each search, and say what does not fit: a fault shows
// where it happens, not as a wrong count or a wrong "no" at the end. It costs one probe path for
// each position and one look at the whole hash table for each search.

namespace kavit {

#ifdef NDEBUG
inline constexpr bool kRecount = false;
#else
inline constexpr bool kRecount = true;
#endif

// The level `made` that a side has stored out of the level `parents`: every position is of that
// side, has its parent there, differs from it by one box, was walked to, and is found by its key.
// Throws SolverFault.
void RecountLayer(const SearchState& state, std::uint8_t side, LayerRun parents, LayerRun made);

// The hash table holds every position once and nothing else, and the levels of both sides, where
// the search has ended them, are as many runs of one side's positions that share none. Throws
// SolverFault.
void RecountStore(const SearchState& state);

}  // namespace kavit
