#include "solver/search/meeting.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>

namespace kavit {

namespace {

bool Less(int first, int second, int keptFirst, int keptSecond) {
    return first < keptFirst || (first == keptFirst && second < keptSecond);
}

// Replaced as a whole: where memory runs out on the way, the old one stays.
void Keep(SearchState& state, std::size_t k, int moves, const std::vector<std::int32_t>& chain) {
    assert(chain.size() >= 3 && chain.front() == 0 && chain.back() == -1);
    assert(moves >= static_cast<int>(chain.size()) - 2);  // every push is a move
    std::optional<KeptSolution>& kept = state.Kept[k];
    kept = KeptSolution{.SolMoves = moves,
                        .SolPushes = static_cast<int>(chain.size()) - 2,
                        .SolPhase = state.Counters.SeaPhase,
                        .SolFoundAt = state.Counters.nSol,
                        .SolFoundAtSearch = kept ? kept->SolFoundAtSearch : 0,
                        .SolSteps = chain};
}

// The positions after each push of a meeting path, as KeptSolution::SolSteps holds them.
std::vector<std::int32_t> MeetingChain(const PositionStore& store, const MeetingOffer& meeting) {
    assert(meeting.Pos >= 1 && meeting.Parent >= 1);
    const bool forward = meeting.Tag == kForwTag;
    const std::int32_t forwEnd = forward ? meeting.Parent : meeting.Pos;
    assert(store.Record(forwEnd).Side() == kForwTag);
    std::vector<std::int32_t> chain;
    for (std::int32_t p = forwEnd; store.Record(p).Parent >= 1; p = store.Record(p).Parent)
        chain.push_back(p);
    chain.push_back(0);  // entry 0, not read
    std::reverse(chain.begin(), chain.end());
    for (std::int32_t p = forward ? meeting.Pos : meeting.Parent; p >= 1;
         p = store.Record(p).Parent)
        chain.push_back(p);
    chain.push_back(-1);
    assert(chain[0] == 0);
    return chain;
}

}  // namespace

bool KeepIfBetter(SearchState& state, int moves, const std::vector<std::int32_t>& solSteps) {
    const int pushes = static_cast<int>(solSteps.size()) - 2;
    bool replaced = false;
    const auto& [fewestMoves, fewestPushes] = state.Kept;
    assert(fewestMoves.has_value() == fewestPushes.has_value());
    if (!fewestMoves || Less(moves, pushes, fewestMoves->SolMoves, fewestMoves->SolPushes)) {
        Keep(state, 0, moves, solSteps);
        replaced = true;
    }
    if (!fewestPushes || Less(pushes, moves, fewestPushes->SolPushes, fewestPushes->SolMoves)) {
        Keep(state, 1, moves, solSteps);
        replaced = true;
    }
    assert(fewestMoves->SolMoves <= fewestPushes->SolMoves);
    assert(fewestMoves->SolPushes >= fewestPushes->SolPushes);
    return replaced;
}

int CountMoves(const BoardArrays& arrays, const PositionStore& store,
               const std::vector<std::int32_t>& solSteps, ManWalks& walks) {
    assert(solSteps.size() >= 2 && solSteps.back() == -1);
    int moves = 0;
    std::uint8_t man = arrays.KeyByte(arrays.ManStart);
    const int boxes = store.KeyLength() - 1;
    std::int32_t last = 1;
    for (std::size_t k = 1; solSteps[k] != -1; ++k) {
        const std::uint8_t* before = store.KeyAt(last);
        const std::uint8_t* after = store.KeyAt(solSteps[k]);
        // The one byte that is only in the first key, and the one that is only in the second.
        std::array<int, 256> count{};
        for (int i = 0; i < boxes; ++i) {
            count[before[i]] += 1;
            count[after[i]] -= 1;
        }
        const auto byteOf = [&](int wanted) {
            return static_cast<std::uint8_t>(std::find(count.begin(), count.end(), wanted) -
                                             count.begin());
        };
        const int from = arrays.KeyCell(byteOf(1));
        const int to = arrays.KeyCell(byteOf(-1));
        assert(from != to && arrays.Inside(from) && arrays.Inside(to));
        moves += walks.Walk(before, man, arrays.KeyByte(from - (to - from))) + 1;
        man = arrays.KeyByte(from);
        last = solSteps[k];
    }
    return moves;
}

void EvalMeeting(SearchState& state, const MeetingOffer& meeting, ManWalks& walks) {
    const PosRecord met = state.Store.Record(meeting.Pos);
    assert(met.Side() != meeting.Tag && meeting.Walk >= 0);
    int moves = meeting.Moves + met.Moves + meeting.Walk;
    if (moves > 32767)
        throw SolverFault("A solution of " + std::to_string(moves) +
                          " man moves was found; solutions of up to 32767 moves can be kept");
    const bool exact = state.Counters.SeaPhase == 1;
    const auto& [fewestMoves, fewestPushes] = state.Kept;
    const bool maybe = !fewestMoves || moves <= fewestMoves->SolMoves ||
                       moves < fewestPushes->SolMoves ||
                       (exact && meeting.Pushes < fewestPushes->SolPushes);
    bool replaced = false;
    if (maybe) {
        const std::vector<std::int32_t> chain = MeetingChain(state.Store, meeting);
        if (!exact) moves = CountMoves(state.Arrays, state.Store, chain, walks);
        replaced = KeepIfBetter(state, moves, chain);
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
    assert(store.Record(a).Side() != store.Record(b).Side());
    for (const std::int32_t end : {a, b}) {
        for (std::int32_t p = end; p >= 1;) {
            store.SetOnPath(p);
            assert(store.Record(p).Parent < p);  // who was stored before
            p = store.Record(p).Parent;
        }
    }
}

}  // namespace kavit
