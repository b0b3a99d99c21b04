#pragma once

#include <cstdint>

#include "solver/types.h"

// What a store of a size takes, in bytes, and what size fits into so many bytes. A position of up
// to `blocks` boxes takes 8 bytes for its record, a byte for each box and one for the man, and 6.7
// bytes of the hash table: 23.7 bytes with 8 boxes.

namespace kavit {

inline constexpr std::int64_t kMostPositions = 2147483647;

// numPos from 1 to kMostPositions, blocks from 1 to 32767.
[[nodiscard]] std::uint64_t BytesFor(std::int64_t numPos, std::int64_t blocks);

// The largest store in so many bytes, 0 where there is not room for one position.
[[nodiscard]] std::int64_t PositionsFor(std::uint64_t bytes, std::int64_t blocks);

// The most that a store may take of what the machine has left: large stores leave some of it to
// everything else.
[[nodiscard]] std::uint64_t MostStoreBytes(std::uint64_t available);

// How a store of so many positions is hashed where nobody chose.
[[nodiscard]] HashCase HashFor(std::int64_t numPos);

}  // namespace kavit
