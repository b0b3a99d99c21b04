#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "solver/board/board_arrays.h"
#include "solver/hooks.h"
#include "solver/store/position_store.h"
#include "solver/types.h"

namespace kavit {

// All that one search owns and shares between its pieces.
struct SearchState {
    explicit SearchState(MemorySource& source) : Store(source) {}

    SolverOptions Options;
    // The level in force: Options.OptLevel, and None while the start positions are stored.
    kavit::OptLevel OptLevel = kavit::OptLevel::None;
    SolverHooks* Hooks = nullptr;
    // So many chunks of positions must wait before other threads come in: a thousand positions.
    std::int32_t WorthThreads = 8;

    BoardArrays Arrays;
    PositionStore Store;
    SearchCounters Counters;
    LayerTables Layers;
    std::array<std::optional<KeptSolution>, 2> Kept;

    // The level to be expanded next on each side; while it is expanded, the level being made.
    std::int32_t Top1 = 0;
    std::int32_t End1 = 0;
    std::int32_t Top2 = 0;
    std::int32_t End2 = 0;
    std::int32_t LastPos = 0;
    // A duplicate of its own side below this index was reached with fewer pushes.
    std::int32_t DuplicateBound = 0;
    std::int64_t ProgressTick = 0;
    std::int32_t EvalCnt = 0;
    bool SpecialActive = false;

    std::vector<std::int32_t>
        MeetParents;  // MeetParent of every meeting of the search, from SomethingPlus on
};

}  // namespace kavit
