#include "solver/search/store_pos.h"

#include <cassert>
#include <string>

#include "solver/search/meeting.h"

namespace kavit {

namespace {

constexpr std::int32_t kProgressEvery = 5000;

void Progress(SearchState& state) {
    state.ProgressTick = 0;
    state.Hooks->ShowProgress(state.Counters.BucketCnt);
    state.Hooks->Yield();
}

void Duplicate(SearchState& state, const Offer& offer, std::int32_t pos, PosRecord record,
               std::int32_t parent) {
    assert(pos != parent);
    if (pos < state.DuplicateBound || state.OptLevel == OptLevel::None) return;
    if (offer.Moves >= record.Moves) {
        state.Counters.PosDiscarded += 1;
        return;
    }
    // The old parent stays marked: the way through it was on some path.
    if (state.OptLevel >= OptLevel::SomethingPlus && record.Parent >= 1)
        state.Store.SetOnPath(record.Parent);
    record.Parent = parent;
    record.Man = offer.Man;
    record.Moves = static_cast<std::int16_t>(offer.Moves);
    state.Store.SetRecord(pos, record);
    state.Counters.PosChanged += 1;
}

Result Meet(SearchState& state, const Offer& offer, const std::uint8_t* key, std::int32_t pos,
            std::int32_t parent, std::uint8_t tag, ManWalks& walks) {
    SearchCounters& counters = state.Counters;
    counters.nSol += 1;
    if (counters.nSol == 1 && counters.SeaPhase == 1) state.Hooks->ShowMsg(Result::SolutionFound);
    const PosRecord met = state.Store.Record(pos);
    assert(met.Side() != tag && parent >= 1);
    MeetingOffer meeting{pos, parent, offer.Moves, tag, 0, 0};
    // At a solved position there is nothing left to walk to.
    const bool solved = tag == kForwTag && met.Parent < 1;
    if (!solved) meeting.Walk = walks.Walk(key, offer.Man, met.Man);
    if (counters.SeaPhase == 1) meeting.Pushes = counters.ForwDepth + counters.BackDepth;
    EvalMeeting(state, meeting, walks);
    if (state.OptLevel >= OptLevel::SomethingMore) MarkPath(state.Store, parent, pos);
    if (state.OptLevel >= OptLevel::SomethingPlus && counters.SeaPhase == 1)
        state.MeetParents.push_back(parent);
    return state.OptLevel > OptLevel::None ? Result::GoOn : Result::Ok;
}

template <typename Table>
Result Insert(SearchState& state, const Table& table, Offer& offer, const std::uint8_t* key,
              std::int32_t parent, std::uint8_t tag) {
    SearchCounters& counters = state.Counters;
    const bool optimizing = counters.SeaPhase == 2;
    // After a meeting the search only finishes its level.
    if (counters.nSol >= 1 && !optimizing) return Result::GoOn;
    assert(parent < 1 || offer.Moves > state.Store.Record(parent).Moves);
    if (counters.BucketCnt >= state.Store.NumPos()) return Result::OutOfMemory;
    counters.BucketCnt += 1;
    state.ProgressTick += 1;
    state.LastPos = static_cast<std::int32_t>(counters.BucketCnt);
    table.Insert(offer, state.LastPos);
    const auto stored = static_cast<std::uint8_t>(optimizing ? tag + kPathMark : tag);
    state.Store.Append(state.LastPos,
                       {parent, static_cast<std::int16_t>(offer.Moves), offer.Man, stored}, key);
    if (state.ProgressTick >= kProgressEvery) Progress(state);
    return Result::GoOn;
}

}  // namespace

template <typename Table>
Result StorePos(SearchState& state, const Table& table, Offer& offer, const std::uint8_t* key,
                std::int32_t parent, std::uint8_t tag, ManWalks& walks) {
    assert((tag == kForwTag || tag == kBackTag) && offer.Moves >= 0);
    state.Counters.HashCnt += 1;
    if (offer.Moves > 32767)
        throw SolverFault("A position needs " + std::to_string(offer.Moves) +
                          " man moves; up to 32767 moves can be counted");
    if (state.Hooks->Stopping()) return Result::Stopped;
    bool held = false;  // by its own side; asked only when the probing goes on past a hit
    for (;;) {
        const std::int32_t pos = table.Candidate(offer);
        if (pos == 0) break;
        assert(pos <= state.Counters.BucketCnt);
        if (state.Store.HasKey(pos, key)) {
            const PosRecord record = state.Store.Record(pos);
            const bool own = record.Side() == tag;
            Result result = Result::GoOn;
            if (own)
                Duplicate(state, offer, pos, record, parent);
            else
                result = Meet(state, offer, key, pos, parent, tag, walks);
            if (!state.SpecialActive) {
                state.Counters.RHashCnt += offer.Reprobes;
                return result;
            }
            held = held || own;
        }
        table.Pass(offer);
    }
    state.Counters.RHashCnt += offer.Reprobes;
    return held ? Result::GoOn : Insert(state, table, offer, key, parent, tag);
}

template Result StorePos(SearchState&, const SlotTable&, Offer&, const std::uint8_t*, std::int32_t,
                         std::uint8_t, ManWalks&);
template Result StorePos(SearchState&, const MixedTable&, Offer&, const std::uint8_t*, std::int32_t,
                         std::uint8_t, ManWalks&);

}  // namespace kavit
