#pragma once

#include <atomic>
#include <cassert>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "solver/search/move_generator.h"
#include "solver/search/offer_chunk.h"
#include "solver/search/watched_count.h"

// Chunks of offers, made by any thread and taken by one in their order.
//
// The positions of a job are cut into chunks of up to 128. Whoever is free claims the next chunk by
// an atomic counter, generates and hashes its offers, and puts them into the chunk's slot of a
// ring. The storing thread takes the chunks in order; where the next one is not there it makes one
// itself. With one thread it makes them all, by the same path, and the ring has one slot.
//
// Generating is two thirds of the work and needs nothing but the rows of the positions and tables
// that never change; storing stays on one thread, and with it every count, every string and every
// stored position is the same for any number of threads.
//
// What the threads share, and how:
//  - the job: written by the storing thread while no worker is at work (under the mutex);
//  - Claimed: chunks given out; StoredCnt: chunks whose slots are free again, -1 when the job ends;
//  - a slot's chunk: belongs to who claimed it until Made says its number, then to the storing
//    thread until StoredCnt passes it;
//  - the store: workers read the keys, parents, moves and men of the job's positions, which storing
//    never changes while they are expanded: a successor differs from them in the number of its
//    pushes by one, and that number is even or odd for good. Only their tags change, and those are
//    single bytes with atomic access (PositionStore::OnPath).
//
// Threads start with the first job that is large enough, sleep between jobs, and are gone when
// EndThreads returns.

namespace kavit {

// Positions to expand, in order: a run of indices, or a list of them.
struct ExpandJob {
    std::uint8_t Side = kForwTag;
    std::int32_t Top = 0;
    std::int32_t End = 0;
    // Only positions on a path to a meeting. Storing the successors of one may put the next on a
    // path; the storing thread asks again when its turn comes.
    bool OnPathOnly = false;
    const std::vector<std::int32_t>* List = nullptr;  // positions Top..End of it, where given

    [[nodiscard]] std::int64_t Count() const { return std::int64_t{End} - Top + 1; }
    [[nodiscard]] std::int32_t PosAt(std::int64_t i) const {
        assert(i >= 0 && i < Count());
        return List == nullptr ? static_cast<std::int32_t>(Top + i)
                               : (*List)[static_cast<std::size_t>(Top + i)];
    }
};

class ChunkRing {
  public:
    // Both must outlive the ring; the store has been cleared for the level of the grid.
    ChunkRing(const PositionStore& store, const Grid& grid, int threads);
    ~ChunkRing() { EndThreads(); }
    ChunkRing(const ChunkRing&) = delete;
    ChunkRing& operator=(const ChunkRing&) = delete;

    // Begins a job; End must come before the next, also when its chunks were not all taken.
    void Begin(const ExpandJob& job);
    void End() noexcept;
    // The next chunk of the job, nullptr behind the last. It belongs to the caller until the next
    // call. Throws what making it threw.
    [[nodiscard]] OfferChunk* Next();
    // The moves of one position, by the storing thread, in a chunk of their own.
    [[nodiscard]] OfferChunk& MakeOne(std::int32_t pos, std::uint8_t side);
    // A start position, likewise.
    [[nodiscard]] OfferChunk& MakeStart(const BoardArrays& arrays, const StartOffer& start);

    void EndThreads() noexcept;

  private:
    struct Slot {
        explicit Slot(int boxes) : Chunk(boxes) {}
        OfferChunk Chunk;
        std::exception_ptr Fault;
        WatchedCount Made{-1};  // the number of the chunk that lies here
    };

    static constexpr std::int32_t kSlots = 32;
    static constexpr std::int64_t kWorthThreads = 1000;  // positions of a job

    void StartThreads();
    void Work(MoveGenerator& generator);
    // Claims a chunk and makes it. False: there is none, or none may be made now; `storedCnt` is
    // what was seen of StoredCnt.
    bool MakeNext(MoveGenerator& generator, std::int32_t& storedCnt);
    void Make(MoveGenerator& generator, std::int32_t number, OfferChunk& chunk) const;
    void AddMoves(MoveGenerator& generator, std::int32_t pos, bool made, std::uint8_t side,
                  OfferChunk& chunk) const;
    [[nodiscard]] Slot& SlotOf(std::int32_t number) {
        assert(number >= 0);
        return slots_[static_cast<std::size_t>(number) % slots_.size()];
    }

    const PositionStore& store_;
    const Grid& grid_;
    int boxes_;
    int threads_;
    std::unique_ptr<MoveGenerator> generator_;  // of the storing thread
    OfferChunk single_;
    std::deque<Slot> slots_;  // one, and kSlots once there are workers

    ExpandJob job_;
    std::int32_t chunks_ = 0;
    std::int32_t next_ = 0;  // the chunk to be taken next
    bool taken_ = false;     // chunk next_ is with the caller

    alignas(64) std::atomic<std::int32_t> claimed_{0};
    alignas(64) WatchedCount storedCnt_{0};

    std::mutex mutex_;  // of what follows, and of the job
    std::condition_variable jobBegins_;
    std::condition_variable allIdle_;
    std::int64_t jobNumber_ = 0;
    int working_ = 0;
    bool open_ = false;
    bool quit_ = false;
    std::vector<std::unique_ptr<MoveGenerator>> generators_;  // of the workers
    std::vector<std::thread> workers_;
};

}  // namespace kavit
