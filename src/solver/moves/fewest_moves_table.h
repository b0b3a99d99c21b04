#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <new>
#include <vector>

#include "solver/store/position_store.h"

// What the search for the fewest moves of all holds in the memory of the position store: a table of
// positions, growing from the bottom of the block, and the queues of both sides, growing from its
// top. Nothing is allocated while it runs.

namespace kavit {

// The block that table and queues share.
class SharedBlock {
  public:
    SharedBlock(std::byte* base, std::size_t bytes) : base_(base), free_(bytes / 64 * 64) {}
    // Takes bytes that follow those taken before; false when there is no room.
    [[nodiscard]] bool TakeBelow(std::size_t bytes) {
        assert(above_ <= free_);
        if (bytes > free_ - above_) return false;
        above_ += bytes;
        return true;
    }
    // The next bytes down from the top; nullptr when there is no room.
    [[nodiscard]] std::byte* TakeAbove(std::size_t bytes) {
        assert(above_ <= free_);
        if (bytes > free_ - above_) return nullptr;
        free_ -= bytes;
        return base_ + free_;
    }
    [[nodiscard]] std::byte* Base() const { return base_; }

  private:
    std::byte* base_;
    std::size_t free_;       // what is not taken from the top
    std::size_t above_ = 0;  // what is taken from below
};

// Positions: the boxes and the square on which a push has just left the man. Each has, for either
// side, the fewest moves known (from the start, or to the end), and whether it has been expanded.
// A row is those two numbers and the key.
class MovesTable {
  public:
    static constexpr int kUnknown = 0x7fff;

    MovesTable(const LentMemory& memory, SharedBlock& block, int keyLength)
        : block_(&block),
          slots_(memory.Slots),
          slotCount_(memory.SlotCount),
          rowBytes_(2 * sizeof(std::uint16_t) + static_cast<std::size_t>(keyLength)),
          keyLength_(static_cast<std::size_t>(keyLength)),
          numPos_(memory.NumPos),
          indexMask_(
              (std::uint32_t{1} << std::bit_width(static_cast<std::uint32_t>(memory.NumPos))) - 1) {
        assert(keyLength >= 2 && slots_ != nullptr);
        assert(slotCount_ > static_cast<std::size_t>(numPos_));  // a free slot ends every path
    }

    [[nodiscard]] std::int32_t Count() const { return count_; }
    [[nodiscard]] const std::uint8_t* Key(std::int32_t pos) const {
        return reinterpret_cast<const std::uint8_t*>(Row(pos)) + 2 * sizeof(std::uint16_t);
    }
    [[nodiscard]] int Moves(std::int32_t pos, int side) const {
        return Field(pos, side) & kUnknown;
    }
    [[nodiscard]] bool Expanded(std::int32_t pos, int side) const {
        return (Field(pos, side) & kExpanded) != 0;
    }
    void SetMoves(std::int32_t pos, int side, int moves) {
        assert(moves >= 0 && moves <= kUnknown);
        SetField(pos, side, static_cast<std::uint16_t>(moves));
    }
    void SetExpanded(std::int32_t pos, int side) {
        SetField(pos, side, static_cast<std::uint16_t>(Field(pos, side) | kExpanded));
    }

    [[nodiscard]] std::size_t Home(std::uint64_t mix) const {
        return static_cast<std::size_t>((mix >> 32) * slotCount_ >> 32);
    }
    void PrefetchHome(std::uint64_t mix) const { __builtin_prefetch(slots_ + Home(mix)); }
    void PrefetchRow(std::int32_t pos) const {
        __builtin_prefetch(Row(pos));
        __builtin_prefetch(Row(pos) + rowBytes_ - 1);
    }
    // Fetches the row that Find will look at first.
    void PrefetchFound(std::uint64_t mix) const {
        const std::uint32_t slot = slots_[Home(mix)];
        if (slot != 0 && ((slot ^ Print(mix)) & ~indexMask_) == 0)
            PrefetchRow(static_cast<std::int32_t>(slot & indexMask_));
    }
    // The position with this key, 0 when there is none.
    [[nodiscard]] std::int32_t Find(const std::uint8_t* key, std::uint64_t mix) const {
        assert(Home(mix) < slotCount_);
        for (std::size_t h = Home(mix); slots_[h] != 0; h = Next(h)) {
            if (((slots_[h] ^ Print(mix)) & ~indexMask_) != 0) continue;
            const auto pos = static_cast<std::int32_t>(slots_[h] & indexMask_);
            if (std::memcmp(Key(pos), key, keyLength_) == 0) return pos;
        }
        return 0;
    }
    // A new position, unknown to both sides; 0 when the memory is full.
    [[nodiscard]] std::int32_t Add(const std::uint8_t* key, std::uint64_t mix) {
        if (count_ == numPos_ || !block_->TakeBelow(rowBytes_)) return 0;
        const std::int32_t pos = ++count_;
        assert(static_cast<std::uint32_t>(pos) <= indexMask_);
        std::size_t h = Home(mix);
        while (slots_[h] != 0) h = Next(h);
        slots_[h] = static_cast<std::uint32_t>(pos) | (Print(mix) & ~indexMask_);
        SetMoves(pos, 0, kUnknown);
        SetMoves(pos, 1, kUnknown);
        std::memcpy(Row(pos) + 2 * sizeof(std::uint16_t), key, keyLength_);
        return pos;
    }

  private:
    static constexpr int kExpanded = 0x8000;

    // What a slot keeps of a mix, above its index.
    static std::uint32_t Print(std::uint64_t mix) { return static_cast<std::uint32_t>(mix); }
    [[nodiscard]] std::byte* Row(std::int32_t pos) const {
        assert(pos >= 1 && pos <= count_);
        return block_->Base() + (static_cast<std::size_t>(pos) - 1) * rowBytes_;
    }
    [[nodiscard]] int Field(std::int32_t pos, int side) const {
        assert(side == 0 || side == 1);
        std::uint16_t field = 0;
        std::memcpy(&field, Row(pos) + static_cast<std::size_t>(side) * sizeof field, sizeof field);
        return field;
    }
    void SetField(std::int32_t pos, int side, std::uint16_t field) {
        assert(side == 0 || side == 1);
        std::memcpy(Row(pos) + static_cast<std::size_t>(side) * sizeof field, &field, sizeof field);
    }
    [[nodiscard]] std::size_t Next(std::size_t h) const { return h + 1 == slotCount_ ? 0 : h + 1; }

    SharedBlock* block_;
    std::uint32_t* slots_;
    std::size_t slotCount_;
    std::size_t rowBytes_;
    std::size_t keyLength_;
    std::int32_t numPos_;
    std::uint32_t indexMask_;
    std::int32_t count_ = 0;
};

// Positions waiting by their value, one bucket a value. A bucket is a chain of chunks of one cache
// line; empty chunks are used again, so the queues need room for what waits, not for all that ever
// did.
class BucketQueue {
  public:
    // Chunks that are free, shared by the queues of both sides.
    class Chunks {
      public:
        explicit Chunks(SharedBlock& block) : block_(&block) {}

      private:
        friend BucketQueue;
        struct Chunk {
            Chunk* Next;
            std::uint32_t Count;
            std::int32_t Waiting[13];
        };
        static_assert(sizeof(Chunk) == 64);

        [[nodiscard]] Chunk* Take() {
            Chunk* chunk = free_;
            if (chunk != nullptr) {
                free_ = chunk->Next;
                return chunk;
            }
            std::byte* memory = block_->TakeAbove(sizeof(Chunk));
            return memory == nullptr ? nullptr : new (memory) Chunk;
        }
        void Give(Chunk* chunk) {
            assert(chunk != nullptr && chunk->Count == 0 && chunk != free_);
            chunk->Next = free_;
            free_ = chunk;
        }

        SharedBlock* block_;
        Chunk* free_ = nullptr;
    };

    BucketQueue(Chunks& chunks, int buckets)
        : chunks_(&chunks), buckets_(static_cast<std::size_t>(buckets)) {}

    // What waits in all buckets, and in one of them.
    [[nodiscard]] std::int64_t Waiting() const { return waiting_; }
    [[nodiscard]] std::int64_t Waiting(int bucket) const {
        assert(bucket >= 0 && static_cast<std::size_t>(bucket) < buckets_.size());
        return buckets_[static_cast<std::size_t>(bucket)].Waiting;
    }
    // False when the memory is full.
    [[nodiscard]] bool Add(int bucket, std::int32_t pos) {
        assert(bucket >= 0 && static_cast<std::size_t>(bucket) < buckets_.size());
        assert(pos >= 1);
        Bucket& to = buckets_[static_cast<std::size_t>(bucket)];
        if (to.Head == nullptr || to.Head->Count == std::size(to.Head->Waiting)) {
            Chunks::Chunk* chunk = chunks_->Take();
            if (chunk == nullptr) return false;
            *chunk = {to.Head, 0, {}};
            to.Head = chunk;
        }
        to.Head->Waiting[to.Head->Count++] = pos;
        ++to.Waiting;
        ++waiting_;
        return true;
    }
    // The one that came last; the bucket must not be empty.
    [[nodiscard]] std::int32_t Take(int bucket) {
        assert(Waiting(bucket) > 0);
        Bucket& from = buckets_[static_cast<std::size_t>(bucket)];
        assert(from.Head != nullptr && from.Head->Count > 0);
        const std::int32_t pos = from.Head->Waiting[--from.Head->Count];
        if (from.Head->Count == 0) {
            Chunks::Chunk* used = from.Head;
            from.Head = used->Next;
            chunks_->Give(used);
        }
        --from.Waiting;
        --waiting_;
        assert(from.Waiting >= 0 && waiting_ >= from.Waiting);
        assert((from.Waiting == 0) == (from.Head == nullptr));
        return pos;
    }

  private:
    struct Bucket {
        Chunks::Chunk* Head = nullptr;
        std::int64_t Waiting = 0;
    };

    Chunks* chunks_;
    std::vector<Bucket> buckets_;
    std::int64_t waiting_ = 0;
};

}  // namespace kavit
