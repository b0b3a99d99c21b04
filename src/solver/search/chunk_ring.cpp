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

ChunkRing::ChunkRing(ChunkWork& work, const ChunkThreads& threads)
    : work_(work), threads_{std::min(threads.Count, kAhead), threads.WorthFrom} {
    assert(threads.Count >= 1);
}

void ChunkRing::Begin() {
    assert(!begun_);
    for (std::size_t i = 0; i < static_cast<std::size_t>(slotCount_); ++i) {
        slots_[i].Made.Set(-1);
        slots_[i].Fault = nullptr;
    }
    begun_ = true;
    next_ = 0;
    taken_ = false;
    listed_.Set(0);
    claimed_ = 0;
}

void ChunkRing::End() noexcept {
    if (!begun_) return;
    begun_ = false;
    claimed_ = kNoMore;  // first: who waits for chunks asks for them again
    listed_.Set(-1);
    std::unique_lock lock(mutex_);
    open_ = false;
    allIdle_.wait(lock, [this] { return working_ == 0; });
}

int ChunkRing::Next() {
    assert(begun_);
    if (taken_) {
        taken_ = false;
        ++next_;
    }
    ListMore();
    if (next_ >= listed_.Get()) return kNone;
    const int number = SlotOf(next_);
    assert(number < slotCount_);
    Slot& slot = slots_[static_cast<std::size_t>(number)];
    std::int32_t listed = 0;
    for (;;) {
        const std::int32_t made = slot.Made.Get();
        if (made == next_) break;
        if (!MakeNext(0, listed)) slot.Made.SleepWhile(made);
    }
    assert(claimed_.load(std::memory_order_relaxed) > next_);
    taken_ = true;
    if (slot.Fault) std::rethrow_exception(slot.Fault);
    return number;
}

void ChunkRing::ListMore() {
    const std::int32_t before = listed_.Get();
    std::int32_t listed = before;
    assert(before >= next_ && before - next_ <= kAhead);
    while (listed - next_ < kAhead && work_.List(listed, listed - next_)) ++listed;
    if (listed == before) return;
    if (!open_ && listed - next_ >= threads_.WorthFrom) {
        StartThreads();
        const std::lock_guard lock(mutex_);
        open_ = true;
        ++jobNumber_;
        comeIn_.notify_all();
    }
    listed_.Set(listed);
}

bool ChunkRing::MakeNext(int thread, std::int32_t& listed) {
    // In this order: End changes the claims before it says so by Listed.
    listed = listed_.Get();
    std::int32_t number = claimed_.load(std::memory_order_relaxed);
    do {
        if (number >= listed) return false;
    } while (!claimed_.compare_exchange_weak(number, number + 1, std::memory_order_relaxed));
    Slot& slot = slots_[static_cast<std::size_t>(SlotOf(number))];
    assert(slot.Made.Get() < number && !slot.Fault);
    try {
        work_.Make(number, SlotOf(number), thread);
    } catch (...) {
        slot.Fault = std::current_exception();
    }
    slot.Made.Set(number);
    return true;
}

void ChunkRing::StartThreads() {
    if (Running() >= threads_.Count) return;
    try {
        work_.MakeRoom(kAhead, threads_.Count);
        slotCount_ = kAhead;  // no chunk lies in the one slot now
        while (Running() < threads_.Count)
            workers_.emplace_back([this, thread = Running()] { Work(thread); });
    } catch (const std::system_error&) {  // the machine gives no more threads
        threads_.Count = Running();
    } catch (const std::bad_alloc&) {
        threads_.Count = Running();
    }
}

void ChunkRing::Work(int thread) {
    assert(thread >= 1 && thread < threads_.Count);
    std::int64_t seen = 0;
    std::unique_lock lock(mutex_);
    for (;;) {
        comeIn_.wait(lock, [&] { return quit_ || (open_ && jobNumber_ != seen); });
        if (quit_) return;
        assert(seen < jobNumber_);
        seen = jobNumber_;
        ++working_;
        lock.unlock();
        for (std::int32_t listed = 0; listed >= 0;)
            if (!MakeNext(thread, listed) && listed >= 0) listed_.SleepWhile(listed);
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
    comeIn_.notify_all();
    for (std::thread& worker : workers_) worker.join();
    workers_.clear();
    quit_ = false;
}

}  // namespace kavit
