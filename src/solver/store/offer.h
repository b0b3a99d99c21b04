#pragma once

#include <cstdint>

namespace kavit {

// A successor on its way to the store. Slot, Step and Reprobes are where it stands on its path
// through the hash table; what Slot and Step mean is up to the table.
struct Offer {
    std::uint64_t Mix = 0;  // of its key (key_mix.h)
    std::int32_t Slot = 0;
    std::int32_t Step = 0;
    std::uint32_t Reprobes = 0;  // steps made on the way to Slot
    std::int32_t Moves = 0;      // may be larger than its field: checked when it is stored
    std::uint8_t Man = 0;        // where he stands after the move, in key numbering
    std::uint8_t Beside = 0;     // of a push, where he stands before it; of a pull, where after the
                                 // push that it undoes
};

inline constexpr int kHashLanes = 8;  // offers whose places in a table are worked out together

}  // namespace kavit
