#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

#include "solver/store/memory_source.h"
#include "solver/store/primes.h"
#include "solver/types.h"

// The position store: every position that either side has reached, and the hash table that finds
// it by its key. It is sized once, by ApplySizes, and a search allocates nothing.
//
// A position is one row of memory, record first, key behind it, so that a duplicate costs one
// cache line, not two. Rows are as long as the level in hand needs (8 + boxes + 1 bytes), so a
// level with few boxes has its positions closer together than the sizes allow for.
//
// A slot of the hash table is 32 bits: the position's index in as many low bits as NumPos needs,
// and in the rest a fingerprint of the key. With 4000000 positions ten bits are left, and of 1024
// foreign positions on a probe path only one has its key read. The order of the slots, and with it
// every count, is that of a table of bare indices. What this costs: nothing; a table of separate
// fingerprint bytes would have cost a second cache miss and a byte for each slot.

namespace kavit {

// Tag mod 10 is the side; 10 is added when the position lies on a path to a meeting.
inline constexpr std::uint8_t kForwTag = 1;
inline constexpr std::uint8_t kBackTag = 2;

struct PosRecord {
    std::int32_t Parent = 0;  // the position that this one was reached from; -1 at a start
    std::int16_t Moves = 0;   // man moves from the side's start, pushes included
    std::uint8_t Man = 0;     // where the man stands, in key numbering
    std::uint8_t Tag = 0;
};
static_assert(std::endian::native == std::endian::little);  // HasKey cuts words at their high end
static_assert(sizeof(PosRecord) == 8 && std::is_trivially_copyable_v<PosRecord>);

class PositionStore {
  public:
    explicit PositionStore(MemorySource& source) : source_(&source) {}

    // Sizes the store for numPos positions (1..2147483647) of levels with up to `blocks` boxes
    // (1..32767). False: the machine cannot give that much, and the store is as it was before.
    [[nodiscard]] bool Resize(std::int64_t numPos, std::int64_t blocks);

    // Empties the store for a level with numBoxes boxes, at most Blocks.
    void Clear(int numBoxes, kavit::HashCase hashCase);

    [[nodiscard]] std::int32_t NumPos() const { return numPos_; }
    [[nodiscard]] int Blocks() const { return blocks_; }
    [[nodiscard]] std::int32_t HashSize() const { return hashSize_; }
    [[nodiscard]] std::uint32_t HashMult() const { return hashMult_; }
    [[nodiscard]] int KeyLength() const { return keyLength_; }
    [[nodiscard]] kavit::HashCase HashCase() const { return hashCase_; }
    [[nodiscard]] double BytesPerPosition() const;

    // Positions 1..BucketCnt.
    [[nodiscard]] PosRecord Record(std::int32_t pos) const {
        PosRecord record;
        std::memcpy(&record, Row(pos), sizeof record);
        return record;
    }
    void SetRecord(std::int32_t pos, const PosRecord& record) {
        std::memcpy(Row(pos), &record, sizeof record);
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

    // Slots 0..HashSize.
    [[nodiscard]] std::uint32_t* Slots() const {
        return reinterpret_cast<std::uint32_t*>(slots_.Data());
    }
    // Fetches a home slot, and what lies below it: probe paths of a table that fills lead there.
    void PrefetchSlots(std::int32_t slot) const {
        constexpr std::int32_t below = 12;
        __builtin_prefetch(Slots() + slot);
        __builtin_prefetch(Slots() + (slot >= below ? slot - below : 0));
    }
    [[nodiscard]] std::uint32_t IndexMask() const { return indexMask_; }
    // The part of a key's 32-bit mix that a slot keeps, in its place.
    [[nodiscard]] std::uint32_t Fingerprint(std::uint32_t mix) const { return mix & ~indexMask_; }

    // One step of the home slot's reduction: h (below 2^31 + 256) as it stands where it is below
    // HashSize, else (h mod HashSize) + 1, by multiplication with the reciprocal.
    [[nodiscard]] std::uint32_t Reduce(std::uint32_t h) const {
        // The upper half of a product is in a register of its own; any other shift would cost.
        const std::uint64_t twice = std::uint64_t{h} << 1;
        const auto product = static_cast<unsigned __int128>(reciprocal_) * twice;
        const auto quotient = static_cast<std::uint32_t>(product >> 64);
        return h - quotient * static_cast<std::uint32_t>(hashSize_) + (quotient > 0 ? 1U : 0U);
    }
    // The probe step of a key in this search, negative and no multiple of HashSize.
    [[nodiscard]] std::int32_t HashStep(const std::uint8_t* key) const {
        return hashCase_ == kavit::HashCase::Default ? steps_[0] : steps_[key[halfBoxes_]];
    }
    [[nodiscard]] std::uint32_t HomeSlot(const std::uint8_t* key) const;
    // The next slot of a probe path.
    [[nodiscard]] std::int32_t NextSlot(std::int32_t h, std::int32_t step) const {
        h += step;
        while (h < 0) h += hashSize_;
        return h;
    }

    PrimeTable Primes;

  private:
    [[nodiscard]] bool Allocate(std::int64_t numPos, std::int64_t blocks, std::int32_t hashSize);
    [[nodiscard]] std::byte* Row(std::int32_t pos) const {
        return rows_.Data() + static_cast<std::size_t>(pos) * rowLength_;
    }
    void FillSteps();
    static std::uint64_t WordAt(const std::uint8_t* bytes) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, 8);
        return word;
    }

    MemorySource* source_;
    MemoryBlock rows_;
    MemoryBlock slots_;
    std::size_t rowLength_ = 0;
    std::int32_t numPos_ = 0;
    int blocks_ = 0;
    std::int32_t hashSize_ = 0;
    std::uint32_t hashMult_ = 1;
    std::uint32_t indexMask_ = 0;
    std::uint64_t reciprocal_ = 0;
    int keyLength_ = 0;
    int halfBoxes_ = 0;
    kavit::HashCase hashCase_ = kavit::HashCase::Default;
    std::int32_t steps_[256] = {};
};

}  // namespace kavit
