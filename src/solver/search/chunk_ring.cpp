#include "solver/search/chunk_ring.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <new>
#include <system_error>

namespace kavit {

namespace {

constexpr std::int32_t kNoMore = std::numeric_limits<std::int32_t>::max();

}  // namespace

ChunkRing::ChunkRing(const PositionStore& store, const Grid& grid, int threads)
    : store_(store),
      grid_(grid),
      boxes_(store.KeyLength() - 1),
      threads_(std::min<int>(threads, kSlots)),
      generator_(MakeMoveGenerator(grid)),
      single_(boxes_) {
    assert(boxes_ >= 1 && threads >= 1);
    slots_.emplace_back(boxes_);
}

void ChunkRing::Begin(const ExpandJob& job) {
    assert(!open_ && job.Count() >= 0);
    const int parents = OfferChunk::ParentsFor(boxes_);
    if (job.Count() >= kWorthThreads) StartThreads();
    {
        const std::lock_guard lock(mutex_);
        job_ = job;
        chunks_ = static_cast<std::int32_t>((job.Count() + parents - 1) / parents);
        for (Slot& slot : slots_) {
            slot.Made.Set(-1);
            slot.Fault = nullptr;
        }
        next_ = 0;
        taken_ = false;
        storedCnt_.Set(0);
        claimed_ = 0;
        open_ = true;
        ++jobNumber_;
    }
    if (job.Count() >= kWorthThreads) jobBegins_.notify_all();
}

void ChunkRing::End() noexcept {
    if (!open_) return;
    claimed_ = kNoMore;  // first: who waits for room asks for it again
    storedCnt_.Set(-1);
    std::unique_lock lock(mutex_);
    open_ = false;
    allIdle_.wait(lock, [this] { return working_ == 0; });
}

OfferChunk* ChunkRing::Next() {
    assert(open_);
    if (taken_) {
        taken_ = false;
        ++next_;
        storedCnt_.Set(next_);
    }
    if (next_ >= chunks_) return nullptr;
    Slot& slot = SlotOf(next_);
    std::int32_t storedCnt = 0;
    for (;;) {
        const std::int32_t made = slot.Made.Get();
        if (made == next_) break;
        if (!MakeNext(*generator_, storedCnt)) slot.Made.SleepWhile(made);
    }
    assert(claimed_.load(std::memory_order_relaxed) > next_);
    taken_ = true;
    if (slot.Fault) std::rethrow_exception(slot.Fault);
    return &slot.Chunk;
}

bool ChunkRing::MakeNext(MoveGenerator& generator, std::int32_t& storedCnt) {
    // In this order: End changes the claims before it says so by StoredCnt.
    storedCnt = storedCnt_.Get();
    std::int32_t number = claimed_.load(std::memory_order_relaxed);
    do {
        if (number >= chunks_ || number - storedCnt >= static_cast<std::int32_t>(slots_.size()))
            return false;
    } while (!claimed_.compare_exchange_weak(number, number + 1, std::memory_order_relaxed));
    Slot& slot = SlotOf(number);
    assert(slot.Made.Get() < number);
    try {
        Make(generator, number, slot.Chunk);
    } catch (...) {
        slot.Fault = std::current_exception();
    }
    slot.Made.Set(number);
    return true;
}

void ChunkRing::Make(MoveGenerator& generator, std::int32_t number, OfferChunk& chunk) const {
    assert(number >= 0 && number < chunks_);
    chunk.Empty();
    const std::int64_t parents = OfferChunk::ParentsFor(boxes_);
    const std::int64_t first = number * parents;
    const std::int64_t end = std::min(first + parents, job_.Count());
    if (job_.List == nullptr) store_.PrefetchRows(job_.PosAt(first), job_.PosAt(end - 1));
    for (std::int64_t i = first; i < end; ++i) {
        const std::int32_t pos = job_.PosAt(i);
        // Position 0 is a run that was stopped before its start was stored: only the stop is due.
        const bool made = pos > 0 && (!job_.OnPathOnly || store_.OnPath(pos));
        AddMoves(generator, pos, made, job_.Side, chunk);
    }
    chunk.Hash(store_);
}

void ChunkRing::AddMoves(MoveGenerator& generator, std::int32_t pos, bool made, std::uint8_t side,
                         OfferChunk& chunk) const {
    chunk.AddParent(pos, made);
    if (made)
        generator.MakeMoves({store_.UntaggedRecord(pos), store_.KeyAt(pos), boxes_}, side, chunk);
}

OfferChunk& ChunkRing::MakeOne(std::int32_t pos, std::uint8_t side) {
    assert(pos >= 1);
    single_.Empty();
    AddMoves(*generator_, pos, true, side, single_);
    single_.Hash(store_);
    return single_;
}

OfferChunk& ChunkRing::MakeStart(const BoardArrays& arrays, const StartOffer& start) {
    single_.Empty();
    single_.AddParent(-1, true);
    generator_->MakeStart(arrays, start, single_);
    single_.Hash(store_);
    return single_;
}

void ChunkRing::StartThreads() {
    if (static_cast<int>(workers_.size()) + 1 >= threads_) return;
    try {
        while (slots_.size() < static_cast<std::size_t>(kSlots)) slots_.emplace_back(boxes_);
        while (static_cast<int>(workers_.size()) + 1 < threads_) {
            MoveGenerator& generator = *generators_.emplace_back(MakeMoveGenerator(grid_));
            workers_.emplace_back([this, &generator] { Work(generator); });
        }
    } catch (const std::system_error&) {  // the machine gives no more threads
        threads_ = static_cast<int>(workers_.size()) + 1;
    } catch (const std::bad_alloc&) {
        threads_ = static_cast<int>(workers_.size()) + 1;
    }
}

void ChunkRing::Work(MoveGenerator& generator) {
    std::int64_t seen = 0;
    std::unique_lock lock(mutex_);
    for (;;) {
        jobBegins_.wait(lock, [&] { return quit_ || (open_ && jobNumber_ != seen); });
        if (quit_) return;
        seen = jobNumber_;
        ++working_;
        lock.unlock();
        std::int32_t storedCnt = 0;
        while (claimed_.load(std::memory_order_relaxed) < chunks_)
            if (!MakeNext(generator, storedCnt) &&
                claimed_.load(std::memory_order_relaxed) < chunks_ && storedCnt >= 0)
                storedCnt_.SleepWhile(storedCnt);
        lock.lock();
        if (--working_ == 0) allIdle_.notify_all();
    }
}

void ChunkRing::EndThreads() noexcept {
    End();
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    jobBegins_.notify_all();
    for (std::thread& worker : workers_) worker.join();
    workers_.clear();
    generators_.clear();
    quit_ = false;
}

}  // namespace kavit
