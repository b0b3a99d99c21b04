#pragma once

#include <array>
#include <atomic>
#include <cassert>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "solver/search/watched_count.h"

// Chunks of offers, made by any thread and taken by one in their order.
//
// The positions of a job are cut into chunks. The storing thread lists them, some 32 ahead of the
// one that it is at. Whoever is free claims the next one by an atomic counter, generates its
// offers, and puts them into the chunk's slot of a ring. The storing thread takes the chunks in
// order; where the next one is not there it makes one itself. With one thread it makes them all, by
// the same path, and the ring has one slot.
//
// Generating is two thirds of the work and needs nothing but the rows of the positions and tables
// that never change; storing stays on one thread, and with it every count, every string and every
// stored position is the same for any number of threads. How far ahead chunks are listed is the
// same for any number as well, because storing one may bring positions for those to come.
//
// The ring knows numbers only. What a chunk is made of, and how, is up to the search (ChunkWork):
// offer_maker.h for the fewest pushes, fewest_moves_wave.h for the fewest moves of all.
//
// What the threads share, and how:
//  - the work: what is the same for the whole job is written by the storing thread before Begin,
//    while no worker is at it; what chunk a number stands for, before Listed says that number;
//  - Listed: chunks that may be made, -1 when the job ends; Claimed: chunks given out;
//  - a slot's chunk: belongs to who claimed it until Made says its number, then to the storing
//    thread until it asks for the next one;
//  - whatever else Make reads: its search says why storing never changes it.
//
// Threads start when a job first has enough chunks waiting, sleep when there is nothing to make,
// and are gone when EndThreads returns.

namespace kavit {

// Makes the chunks of a job.
class ChunkWork {
  public:
    virtual ~ChunkWork() = default;
    // Settles what this chunk is made of; it follows so many that wait to be taken. False: there is
    // nothing for it, or not yet. Called by the storing thread.
    virtual bool List(std::int32_t number, std::int32_t waiting) = 0;
    // Makes the chunk into the slot, with the scratch of the thread. Called by any.
    virtual void Make(std::int32_t number, int slot, int thread) = 0;
    // Room for so many slots, and scratch for so many threads, the storing one included. Called by
    // the storing thread while nothing is made; there is one of each from the beginning.
    virtual void MakeRoom(int slots, int threads) = 0;
};

// How many threads make chunks, the storing one included, and how many chunks must wait to be made
// before the others come in.
struct ChunkThreads {
    int Count = 1;
    std::int32_t WorthFrom = 0;
};

class ChunkRing {
  public:
    static constexpr int kNone = -1;
    static constexpr std::int32_t kAhead = 32;  // chunks listed and not yet taken, at most

    // The work must outlive the threads.
    ChunkRing(ChunkWork& work, const ChunkThreads& threads);
    ~ChunkRing() { EndThreads(); }
    ChunkRing(const ChunkRing&) = delete;
    ChunkRing& operator=(const ChunkRing&) = delete;

    // Begins a job; End must come before the next, also when its chunks were not all taken.
    void Begin();
    void End() noexcept;
    // The slot of the next chunk of the job; kNone when none is left, and nothing comes of the last
    // one for now. It belongs to the caller until the next call. Throws what making it threw.
    [[nodiscard]] int Next();

    void EndThreads() noexcept;

  private:
    struct alignas(64) Slot {
        std::exception_ptr Fault;
        WatchedCount Made{-1};  // the number of the chunk that lies here
    };

    void ListMore();
    void StartThreads();
    void Work(int thread);
    // Threads there are, the storing one included; the number of the next.
    [[nodiscard]] int Running() const { return static_cast<int>(workers_.size()) + 1; }
    // Claims a chunk and makes it. False: none may be made now; `listed` is what was seen of
    // Listed.
    bool MakeNext(int thread, std::int32_t& listed);
    [[nodiscard]] int SlotOf(std::int32_t number) const {
        assert(number >= 0);
        return number % slotCount_;
    }

    ChunkWork& work_;
    ChunkThreads threads_;
    std::array<Slot, kAhead> slots_;
    int slotCount_ = 1;  // kAhead once there are workers

    bool begun_ = false;
    std::int32_t next_ = 0;  // the chunk to be taken next
    bool taken_ = false;     // chunk next_ is with the caller

    alignas(64) std::atomic<std::int32_t> claimed_{0};
    alignas(64) WatchedCount listed_{-1};

    std::mutex mutex_;  // of what follows
    std::condition_variable comeIn_;
    std::condition_variable allIdle_;
    std::int64_t jobNumber_ = 0;
    int working_ = 0;
    bool open_ = false;  // the job has room for workers
    bool quit_ = false;
    std::vector<std::thread> workers_;
};

}  // namespace kavit
