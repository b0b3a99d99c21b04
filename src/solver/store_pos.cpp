#include "solver/store_pos.h"

#include <string>

#include "solver/meeting.h"

namespace kavit {

namespace {

constexpr std::int32_t kProgressEvery = 5000;

// Whole words; the bytes behind the key are masked out of the last one.
bool SameKey(const std::uint8_t* a, const std::uint8_t* b, int length) {
    int at = 0;
    for (; at + 8 <= length; at += 8) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, a + at, 8);
        std::memcpy(&y, b + at, 8);
        if (x != y) return false;
    }
    return std::memcmp(a + at, b + at, static_cast<std::size_t>(length - at)) == 0;
}

void Progress(SearchState& state) {
    state.ProgressTick = 0;
    state.Hooks->ShowProgress(state.Counters.BucketCnt);
    state.Hooks->Yield();
}

void Duplicate(SearchState& state, const Offer& offer, std::int32_t pos, PosRecord record,
               std::int32_t parent) {
    if (pos < state.DuplicateBound || state.OptLevel == 0) return;
    if (offer.Moves >= record.Moves) {
        state.Counters.PosDiscarded += 1;
        return;
    }
    if (state.OptLevel == 3 && record.Parent >= 1) {
        // The old parent stays marked: the way through it was on some path.
        PosRecord old = state.Store.Record(record.Parent);
        if (old.Tag < 10) {
            old.Tag = static_cast<std::uint8_t>(old.Tag + 10);
            state.Store.SetRecord(record.Parent, old);
        }
    }
    record.Parent = parent;
    record.Man = offer.Man;
    record.Moves = static_cast<std::int16_t>(offer.Moves);
    state.Store.SetRecord(pos, record);
    state.Counters.PosChanged += 1;
}

Result Meet(SearchState& state, const Offer& offer, const std::uint8_t* key, std::int32_t pos,
            std::int32_t parent, std::uint8_t tag, WalkMeter& walk) {
    state.Counters.nSol += 1;
    if (state.Counters.nSol == 1) state.Hooks->ShowMsg(Result::SolutionFound);
    const PosRecord met = state.Store.Record(pos);
    MeetingOffer meeting{pos, parent, offer.Moves, tag, 0, 0};
    // At a solved position there is nothing left to walk to.
    const bool solved = tag == kForwTag && met.Parent < 1;
    if (!solved) meeting.Walk = walk.Walk(key, offer.Man, met.Man);
    if (state.Counters.SeaPhase == 1)
        meeting.Pushes = state.Counters.ForwDepth + state.Counters.BackDepth;
    EvalMeeting(state, meeting);
    if (state.OptLevel >= 2) MarkPath(state.Store, parent, pos);
    if (state.OptLevel == 3) state.Meetings.push_back({pos, parent});
    return state.OptLevel > 0 ? Result::GoOn : Result::Ok;
}

Result Insert(SearchState& state, const Offer& offer, const std::uint8_t* key, std::int32_t parent,
              std::uint8_t tag) {
    SearchCounters& counters = state.Counters;
    if (counters.nSol >= 1) return Result::GoOn;  // after a meeting the level is only finished
    if (counters.BucketCnt >= state.Store.NumPos()) return Result::OutOfMemory;
    counters.BucketCnt += 1;
    state.ProgressTick += 1;
    state.LastPos = counters.BucketCnt;
    state.Store.Slots()[offer.Slot] =
        state.Store.Fingerprint(offer.Mix) | static_cast<std::uint32_t>(counters.BucketCnt);
    state.Store.Append(counters.BucketCnt,
                       {parent, static_cast<std::int16_t>(offer.Moves), offer.Man, tag}, key);
    if (state.ProgressTick >= kProgressEvery) Progress(state);
    return Result::GoOn;
}

}  // namespace

Result StorePos(SearchState& state, Offer& offer, const std::uint8_t* key, std::int32_t parent,
                std::uint8_t tag, WalkMeter& walk) {
    PositionStore& store = state.Store;
    state.Counters.HashCnt += 1;
    if (offer.Moves > 32767)
        throw SolverFault("A position needs " + std::to_string(offer.Moves) +
                          " man moves; up to 32767 moves can be counted");
    if (state.Hooks->StopSea.load(std::memory_order_relaxed)) return Result::Stopped;
    const std::uint32_t* slots = store.Slots();
    const std::uint32_t print = store.Fingerprint(offer.Mix);
    for (;;) {
        const std::uint32_t slot = slots[offer.Slot];
        if (slot == 0) break;
        if (store.Fingerprint(slot) == print) {
            const auto pos = static_cast<std::int32_t>(slot & store.IndexMask());
            if (SameKey(store.KeyAt(pos), key, store.KeyLength())) {
                state.Counters.RHashCnt += offer.Reprobes;
                const PosRecord record = store.Record(pos);
                if (record.Tag % 10 != tag) return Meet(state, offer, key, pos, parent, tag, walk);
                Duplicate(state, offer, pos, record, parent);
                return Result::GoOn;
            }
        }
        offer.Slot = store.NextSlot(offer.Slot, offer.Step);
        ++offer.Reprobes;
    }
    state.Counters.RHashCnt += offer.Reprobes;
    return Insert(state, offer, key, parent, tag);
}

void CheckCounters(const SearchCounters& counters) {
    constexpr std::int64_t most = 2147483647;
    if (counters.RHashCnt > most || counters.HashCnt > most)
        throw SolverFault(
            "More than 4294967294 positions were offered or probed: the counters "
            "HashCnt and RHashCnt are full");
    constexpr std::int64_t nearly = most - 4096;  // more than one position can add
    if (counters.PosDiscarded > nearly || counters.PosChanged > nearly || counters.nSol > nearly)
        throw SolverFault("Some 2147480000 duplicates or meetings: their counter is full");
}

}  // namespace kavit
