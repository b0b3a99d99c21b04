#include "solver/store/position_store.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "solver/board/key_mix.h"
#include "solver/store/store_size.h"

namespace kavit {

namespace {

constexpr std::size_t kSlack = 16;  // readable bytes behind the last key

std::size_t RowBytes(std::int64_t boxes) {
    assert(boxes >= 0 && boxes <= 32767);
    return sizeof(PosRecord) + static_cast<std::size_t>(boxes) + 1;
}

// No room at all where there is not even enough to ask.
std::uint64_t Available(MemorySource& source) {
    try {
        return source.Available();
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

}  // namespace

std::uint64_t PositionStore::RowsBytes(std::int64_t numPos, std::int64_t blocks) {
    // NumPos is below 2^31 and a row below 2^16 bytes: no overflow.
    return (static_cast<std::uint64_t>(numPos) + 1) * RowBytes(blocks) + kSlack;
}

bool PositionStore::Allocate(std::int64_t numPos, std::int64_t blocks) {
    rows_.Release();
    table_.Release();
    // The kernel may promise more than there is and end the process when it is touched.
    if (BytesFor(numPos, blocks) > MostStoreBytes(Available(*source_))) return false;
    if (!rows_.Take(*source_, RowsBytes(numPos, blocks)) ||
        !table_.Take(*source_, MixedTable::BytesFor(numPos))) {
        rows_.Release();
        table_.Release();
        return false;
    }
    assert(reinterpret_cast<std::uintptr_t>(table_.Data()) % alignof(MixedTable::Line) == 0);
    numPos_ = static_cast<std::int32_t>(numPos);
    blocks_ = static_cast<int>(blocks);
    return true;
}

bool PositionStore::Resize(std::int64_t numPos, std::int64_t blocks) {
    assert(numPos >= 1 && numPos <= 2147483647 && blocks >= 1 && blocks <= 32767);
    const std::int64_t oldNumPos = numPos_;
    const std::int64_t oldBlocks = blocks_;
    if (Allocate(numPos, blocks)) return true;
    // Back to the old sizes; the memory was there a moment ago. If it is gone, nothing is held.
    if (oldNumPos > 0 && !Allocate(oldNumPos, oldBlocks)) numPos_ = 0;
    return false;
}

std::uint64_t PositionStore::MostBytes() const {
    const std::uint64_t held = rows_.Bytes() + table_.Bytes();
    const std::uint64_t available = Available(*source_);
    // What was never touched is free, and counted so already.
    const std::uint64_t used = std::min(held, source_->Resident());
    return MostStoreBytes(available + std::min(used, ~available));
}

void PositionStore::Clear(int numBoxes, kavit::HashCase hashCase) {
    assert(numPos_ > 0 && numBoxes >= 1 && numBoxes <= blocks_);
    table_.Clear();
    keyLength_ = numBoxes + 1;
    hashCase_ = hashCase;
    rowLength_ = RowBytes(numBoxes);
    assert(RowsBytes(numPos_, numBoxes) <= rows_.Bytes());
    if (hashCase == kavit::HashCase::Mixed) {
        mixed_ = MixedTable(reinterpret_cast<MixedTable::Line*>(table_.Data()),
                            MixedTable::LinesFor(numPos_));
        return;
    }
    slots_.StartSearch(reinterpret_cast<std::uint32_t*>(table_.Data()), numPos_, keyLength_,
                       hashCase, primes_);
    assert(static_cast<std::uint64_t>(slots_.Places()) * sizeof(std::uint32_t) <= table_.Bytes());
}

LentMemory PositionStore::Lend() {
    assert(keyLength_ > 0 &&
           table_.Bytes() > static_cast<std::size_t>(numPos_) * sizeof(std::uint32_t));
    table_.Clear();
    return {rows_.Data(), rows_.Bytes(), reinterpret_cast<std::uint32_t*>(table_.Data()),
            table_.Bytes() / sizeof(std::uint32_t), numPos_};
}

std::int64_t PositionStore::HashSize(kavit::HashCase hashCase) {
    assert(numPos_ > 0);
    if (hashCase == kavit::HashCase::Mixed)
        return static_cast<std::int64_t>(MixedTable::LinesFor(numPos_)) * MixedTable::kPlaces - 1;
    return SlotTable::SizeFor(numPos_, primes_);
}

double PositionStore::BytesPerPosition(kavit::HashCase hashCase) {
    assert(numPos_ > 0);
    const std::uint64_t table = hashCase == kavit::HashCase::Mixed
                                    ? MixedTable::BytesFor(numPos_)
                                    : SlotTable::BytesFor(SlotTable::SizeFor(numPos_, primes_));
    return static_cast<double>(RowBytes(blocks_)) + static_cast<double>(table) / numPos_;
}

bool PositionStore::FoundByItsKey(std::int32_t pos) const {
    assert(pos >= 1);
    return WithTable([this, pos](const auto& table) {
        Offer offer;
        offer.Mix = MixOf(KeyAt(pos), keyLength_);
        table.Home(offer, KeyAt(pos));
        std::int32_t found = table.Candidate(offer);
        for (; found != 0 && found != pos; found = table.Candidate(offer)) table.Pass(offer);
        return found == pos;
    });
}

}  // namespace kavit
