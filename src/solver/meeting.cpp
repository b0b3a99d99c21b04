#include "solver/meeting.h"

#include <algorithm>
#include <string>

namespace kavit {

namespace {

bool Better(int first, int second, int keptFirst, int keptSecond) {
    return first < keptFirst || (first == keptFirst && second < keptSecond);
}

void Keep(SearchState& state, int k, int moves, const std::vector<std::int32_t>& chain) {
    KeptSolution& kept = state.Kept[static_cast<std::size_t>(k)];
    kept.SolMoves = moves;
    kept.SolPushes = static_cast<int>(chain.size()) - 2;
    kept.SolPhase = state.Counters.SeaPhase;
    kept.SolFoundAt = state.Counters.nSol;
    kept.SolSteps = chain;
}

}  // namespace

std::vector<std::int32_t> MeetingChain(const PositionStore& store, const MeetingOffer& meeting) {
    const bool forward = meeting.Tag == kForwTag;
    const std::int32_t forwEnd = forward ? meeting.Parent : meeting.Pos;
    std::vector<std::int32_t> chain;
    for (std::int32_t p = forwEnd; store.Record(p).Parent >= 1; p = store.Record(p).Parent)
        chain.push_back(p);
    chain.push_back(0);  // entry 0, not read
    std::reverse(chain.begin(), chain.end());
    for (std::int32_t p = forward ? meeting.Pos : meeting.Parent; p >= 1;
         p = store.Record(p).Parent)
        chain.push_back(p);
    chain.push_back(-1);
    return chain;
}

void EvalMeeting(SearchState& state, const MeetingOffer& meeting) {
    const PosRecord met = state.Store.Record(meeting.Pos);
    const int moves = meeting.Moves + met.Moves + meeting.Walk;
    if (moves > 32767)
        throw SolverFault("A solution of " + std::to_string(moves) +
                          " man moves was found; solutions of up to 32767 moves can be kept");
    bool replaced = false;
    const bool maybe0 = moves <= state.Kept[0].SolMoves;
    const bool maybe1 =
        meeting.Pushes == 0 ||
        Better(meeting.Pushes, moves, state.Kept[1].SolPushes, state.Kept[1].SolMoves);
    if (maybe0 || maybe1) {
        const std::vector<std::int32_t> chain = MeetingChain(state.Store, meeting);
        const int pushes = static_cast<int>(chain.size()) - 2;
        if (Better(moves, pushes, state.Kept[0].SolMoves, state.Kept[0].SolPushes)) {
            Keep(state, 0, moves, chain);
            replaced = true;
        }
        if (Better(pushes, moves, state.Kept[1].SolPushes, state.Kept[1].SolMoves)) {
            Keep(state, 1, moves, chain);
            replaced = true;
        }
    }
    state.EvalCnt += 1;
    if (replaced || state.EvalCnt > 999 ||
        state.Hooks->RefreshDue.load(std::memory_order_relaxed)) {
        state.Hooks->RefreshDue.store(false, std::memory_order_relaxed);
        state.EvalCnt = 0;
        state.Hooks->ShowMsg(Result::BestSoFar);
    }
}

void MarkPath(PositionStore& store, std::int32_t a, std::int32_t b) {
    for (const std::int32_t end : {a, b}) {
        for (std::int32_t p = end; p >= 1;) {
            PosRecord record = store.Record(p);
            if (record.Tag < 10) {
                record.Tag = static_cast<std::uint8_t>(record.Tag + 10);
                store.SetRecord(p, record);
            }
            p = record.Parent;
        }
    }
}

}  // namespace kavit
