#include "solver/store/store_size.h"

#include <algorithm>
#include <cassert>

#include "solver/store/mixed_table.h"
#include "solver/store/position_store.h"

namespace kavit {

namespace {

constexpr std::int64_t kMostByDefault = 8000000;  // positions; larger stores are hashed Mixed
constexpr std::uint64_t kSpare = std::uint64_t{64} << 20;

}  // namespace

std::uint64_t BytesFor(std::int64_t numPos, std::int64_t blocks) {
    assert(numPos >= 1 && numPos <= kMostPositions);
    assert(blocks >= 1 && blocks <= 32767);
    return PositionStore::RowsBytes(numPos, blocks) + MixedTable::BytesFor(numPos);
}

std::int64_t PositionsFor(std::uint64_t bytes, std::int64_t blocks) {
    std::int64_t fits = 0;
    std::int64_t tooMany = kMostPositions + 1;
    while (tooMany - fits > 1) {
        const std::int64_t middle = fits + (tooMany - fits) / 2;
        (BytesFor(middle, blocks) <= bytes ? fits : tooMany) = middle;
    }
    assert(0 <= fits && fits <= kMostPositions);
    return fits;
}

HashCase HashFor(std::int64_t numPos) {
    return numPos > kMostByDefault ? HashCase::Mixed : HashCase::Default;
}

std::uint64_t MostStoreBytes(std::uint64_t available) {
    const std::uint64_t spare = std::min(available, kSpare);
    return std::max(spare, available - spare);
}

}  // namespace kavit
