#pragma once

#include <atomic>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

#include "solver/store/memory_source.h"
#include "solver/store/mixed_table.h"
#include "solver/store/primes.h"
#include "solver/store/slot_table.h"
#include "solver/types.h"

// The position store: every position that either side has reached, and the hash table that finds
// it by its key. It is sized once, by ApplySizes, and a search allocates nothing.
//
// A position is one row of memory, record first, key behind it, so that a duplicate costs one
// cache line, not two. Rows are as long as the level in hand needs (8 + boxes + 1 bytes), so a
// level with few boxes has its positions closer together than the sizes allow for.
//
// Two kinds of hash table share one piece of memory, since a search uses only one of them.

namespace kavit {

// A tag is the side, more by kPathMark when the position lies on a path to a meeting.
inline constexpr std::uint8_t kForwTag = 1;
inline constexpr std::uint8_t kBackTag = 2;
inline constexpr std::uint8_t kPathMark = 10;

struct PosRecord {
    std::int32_t Parent = 0;  // the position that this one was reached from; -1 at a start
    std::int16_t Moves = 0;   // man moves from the side's start, pushes included
    std::uint8_t Man = 0;     // where the man stands, in key numbering
    std::uint8_t Tag = 0;

    [[nodiscard]] std::uint8_t Side() const {
        return static_cast<std::uint8_t>(OnPath() ? Tag - kPathMark : Tag);
    }
    [[nodiscard]] bool OnPath() const { return Tag > kBackTag; }
};
static_assert(std::endian::native == std::endian::little);  // HasKey cuts words at their high end
static_assert(sizeof(PosRecord) == 8 && std::is_trivially_copyable_v<PosRecord>);

// The memory of a store without its positions.
struct LentMemory {
    std::byte* Rows = nullptr;
    std::size_t RowBytes = 0;
    std::uint32_t* Slots = nullptr;  // all 0; more than NumPos of them
    std::size_t SlotCount = 0;
    std::int32_t NumPos = 0;
};

// In cache lines of its own: workers read its fields for every position, and what lies beside it in
// a search are the counters, which every offer changes.
class alignas(64) PositionStore {
  public:
    explicit PositionStore(MemorySource& source) : source_(&source) {}

    // Sizes the store for numPos positions (1..2147483647) of levels with up to `blocks` boxes
    // (1..32767). False: the machine cannot give that much, and the store is as it was before.
    [[nodiscard]] bool Resize(std::int64_t numPos, std::int64_t blocks);

    // The most that Resize could take now, what the store holds included.
    [[nodiscard]] std::uint64_t MostBytes() const;
    // Bytes of the rows of such a store.
    [[nodiscard]] static std::uint64_t RowsBytes(std::int64_t numPos, std::int64_t blocks);

    // Empties the store for a level with numBoxes boxes, at most Blocks. Throws as HashSize does.
    void Clear(int numBoxes, kavit::HashCase hashCase);
    // Gives up all positions and lends the memory to another search, until the next Clear.
    [[nodiscard]] LentMemory Lend();

    [[nodiscard]] std::int32_t NumPos() const { return numPos_; }
    [[nodiscard]] int Blocks() const { return blocks_; }
    // Slots or places of a hash table for this store, less one. Throws SolverFault where a
    // described table can't be as large as the store.
    [[nodiscard]] std::int64_t HashSize(kavit::HashCase hashCase);
    [[nodiscard]] int KeyLength() const { return keyLength_; }
    [[nodiscard]] kavit::HashCase HashCase() const { return hashCase_; }
    // Row and share of that table.
    [[nodiscard]] double BytesPerPosition(kavit::HashCase hashCase);

    // Positions 1..BucketCnt.
    [[nodiscard]] PosRecord Record(std::int32_t pos) const {
        PosRecord record;
        std::memcpy(&record, Row(pos), sizeof record);
        return record;
    }
    void SetRecord(std::int32_t pos, const PosRecord& record) {
        std::memcpy(Row(pos), &record, sizeof record);
    }
    // For threads that read a position while the storing thread may mark it: all but the tag, and
    // the mark alone.
    [[nodiscard]] PosRecord UntaggedRecord(std::int32_t pos) const {
        PosRecord record;
        std::memcpy(static_cast<void*>(&record), Row(pos), offsetof(PosRecord, Tag));
        return record;
    }
    [[nodiscard]] bool OnPath(std::int32_t pos) const {
        assert(pos >= 1);
        return std::atomic_ref(TagOf(pos)).load(std::memory_order_relaxed) > kBackTag;
    }
    // Marks the position, where it is not marked yet.
    void SetOnPath(std::int32_t pos) {
        assert(pos >= 1);
        std::uint8_t& tag = TagOf(pos);
        assert(tag % kPathMark == kForwTag || tag % kPathMark == kBackTag);
        if (tag <= kBackTag)
            std::atomic_ref(tag).store(static_cast<std::uint8_t>(tag + kPathMark),
                                       std::memory_order_relaxed);
    }
    [[nodiscard]] std::span<const std::uint8_t> Key(std::int32_t pos) const {
        return {KeyAt(pos), static_cast<std::size_t>(keyLength_)};
    }
    // 8 readable bytes follow every key.
    [[nodiscard]] const std::uint8_t* KeyAt(std::int32_t pos) const {
        return reinterpret_cast<const std::uint8_t*>(Row(pos)) + sizeof(PosRecord);
    }
    // Positions are appended in order; 8 bytes behind the key must be readable.
    void Append(std::int32_t pos, const PosRecord& record, const std::uint8_t* key) {
        assert(pos > 0 && record.Tag % 10 > 0 && record.Tag % 10 <= kBackTag);
        std::byte* row = Row(pos);
        // One store for the record: put together in memory, it would be read back before its bytes
        // have arrived.
        const std::uint64_t packed = std::uint64_t{static_cast<std::uint32_t>(record.Parent)} |
                                     std::uint64_t{static_cast<std::uint16_t>(record.Moves)} << 32 |
                                     std::uint64_t{record.Man} << 48 |
                                     std::uint64_t{record.Tag} << 56;
        std::memcpy(row, &packed, sizeof packed);
        // Whole words: what they write behind the key belongs to no position yet.
        for (int byte = 0; byte < keyLength_; byte += 8)
            std::memcpy(row + sizeof packed + static_cast<std::size_t>(byte), key + byte, 8);
    }
    // The position's key equals `key`, behind which 8 bytes must be readable. Compared in whole
    // words, the last one cut to the key's end.
    [[nodiscard]] bool HasKey(std::int32_t pos, const std::uint8_t* key) const {
        assert(pos > 0 && keyLength_ >= 2);
        const std::uint8_t* own = KeyAt(pos);
        std::uint64_t differ = 0;
        int at = 0;
        for (; at + 8 < keyLength_; at += 8) differ |= WordAt(own + at) ^ WordAt(key + at);
        differ |= (WordAt(own + at) ^ WordAt(key + at)) << (8 * (at + 8 - keyLength_));
        return differ == 0;
    }
    void PrefetchRow(std::int32_t pos) const {
        const std::byte* row = Row(pos);
        __builtin_prefetch(row);
        __builtin_prefetch(row + rowLength_ - 1);
    }

    // A run of rows that another core may have written.
    void PrefetchRows(std::int32_t first, std::int32_t last) const {
        constexpr std::size_t line = 64;
        for (const std::byte* row = Row(first); row < Row(last) + rowLength_; row += line)
            __builtin_prefetch(row);
    }

    [[nodiscard]] const SlotTable& Slots() const { return slots_; }
    [[nodiscard]] const MixedTable& Mixed() const { return mixed_; }
    // Calls f with the hash table in use; once for many offers, so that what is done for each is
    // compiled for its table.
    template <typename F>
    decltype(auto) WithTable(F&& f) const {
        return hashCase_ == kavit::HashCase::Mixed ? f(mixed_) : f(slots_);
    }
    // The path of its key leads to the position.
    [[nodiscard]] bool FoundByItsKey(std::int32_t pos) const;

  private:
    [[nodiscard]] bool Allocate(std::int64_t numPos, std::int64_t blocks);
    [[nodiscard]] std::byte* Row(std::int32_t pos) const {
        assert(pos >= 0 && pos <= numPos_ && rowLength_ > 0);
        return rows_.Data() + static_cast<std::size_t>(pos) * rowLength_;
    }
    [[nodiscard]] std::uint8_t& TagOf(std::int32_t pos) const {
        return *reinterpret_cast<std::uint8_t*>(Row(pos) + offsetof(PosRecord, Tag));
    }
    static std::uint64_t WordAt(const std::uint8_t* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, 8);
        return word;
    }

    MemorySource* source_;
    MemoryBlock rows_;
    MemoryBlock table_;
    SlotTable slots_;
    MixedTable mixed_;
    PrimeTable primes_;
    std::size_t rowLength_ = 0;
    std::int32_t numPos_ = 0;
    int blocks_ = 0;
    int keyLength_ = 0;
    kavit::HashCase hashCase_ = kavit::HashCase::Default;
};

}  // namespace kavit
