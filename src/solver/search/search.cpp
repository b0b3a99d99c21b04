#include "solver/search/search.h"

#include <algorithm>
#include <cassert>

#include "solver/search/recount.h"

namespace kavit {

namespace {

constexpr std::size_t kLayersAtFirst = 251;

// The boxes outside the man's region never move: unless they are the goals there, no push can
// bring the two sides together.
bool OutsideSolved(const BoardArrays& arrays) {
    for (int c = 0; c < kCells; ++c) {
        const auto at = static_cast<std::size_t>(c);
        if (!arrays.Inside(c) && arrays.BoxStart[at] != arrays.GoalSq[at]) return false;
    }
    return true;
}

// One backward start for each region in which the man can stand when all boxes are home.
Result StoreBackwardStarts(SearchState& state, Expander& expander) {
    const BoardArrays& arrays = state.Arrays;
    assert(arrays.Enclosed && arrays.FirstIn <= arrays.LastIn);
    StartOffer start;
    start.Boxes = arrays.GoalSq;
    start.Tag = kBackTag;
    std::array<bool, kCells> seen{};
    Result result = Result::Ok;  // stays so where no free cell is left
    for (int c = arrays.FirstIn; c <= arrays.LastIn; ++c) {
        const auto free = [&](int cell) {
            return arrays.Inside(cell) && arrays.GoalSq[static_cast<std::size_t>(cell)] == 0;
        };
        if (!free(c) || seen[static_cast<std::size_t>(c)]) continue;
        std::vector<int> region = {c};
        seen[static_cast<std::size_t>(c)] = true;
        for (std::size_t i = 0; i < region.size(); ++i) {
            for (const int step : Dir) {
                const int n = region[i] + step;
                assert(n >= 0 && n < kCells);  // what is inside is not on the edge
                if (!free(n) || seen[static_cast<std::size_t>(n)]) continue;
                seen[static_cast<std::size_t>(n)] = true;
                region.push_back(n);
            }
        }
        start.ManCell = c;  // the smallest of its region
        result = expander.OfferStart(start);
        if (result == Result::Ok) return result;
        assert(result != Result::GoOn || state.LastPos == state.Counters.BucketCnt);
        state.End2 = state.LastPos;
        if (state.Top2 == 0) state.Top2 = state.LastPos;
    }
    return result;
}

Result PrepareSearch(SearchState& state, Expander& expander) {
    state.OptLevel =
        OptLevel::None;  // among start positions a meeting ends it, and nothing is improved
    assert(state.Counters.BucketCnt == 0);
    state.EvalCnt = 1000;
    state.DuplicateBound = 0;
    StartOffer start;
    start.Boxes = state.Arrays.BoxStart;
    start.ManCell = state.Arrays.ManStart;
    (void)expander.OfferStart(start);  // what stops it stops the next one too
    state.Top1 = state.End1 = state.LastPos;
    assert(state.Top1 == 1 || state.Hooks->Stopping());
    const Result result = StoreBackwardStarts(state, expander);
    assert(state.Top2 <= state.End2);
    LayerTables::Run(state.Layers.ForwTopEnd, 1, 1) = {state.Top1, state.End1};
    LayerTables::Run(state.Layers.BackTopEnd, 1, 1) = {state.Top2, state.End2};
    state.OptLevel = state.Options.OptLevel;
    state.ProgressTick = state.Counters.BucketCnt;
    state.Hooks->ShowProgress(state.Counters.BucketCnt);
    state.Hooks->Yield();
    return result;
}

// Expands the current level of a side; `top` and `end` become the level that it makes.
Result Step(SearchState& state, Expander& expander, std::uint8_t side, std::int32_t& top,
            std::int32_t& end, std::int64_t& depth, LayerTables::Table& table) {
    assert(side == kForwTag || side == kBackTag);
    assert(0 <= top && top <= end && end <= state.Counters.BucketCnt);
    depth += 1;
    const ExpandJob job{.Side = side, .Top = top, .End = end};
    state.DuplicateBound = top;
    const std::int64_t before = state.Counters.BucketCnt;
    state.LastPos = top = end = 0;
    const Result result = expander.Expand(job);
    assert(state.Counters.BucketCnt == before || state.LastPos == state.Counters.BucketCnt);
    if (state.Counters.BucketCnt > before) {
        top = static_cast<std::int32_t>(before + 1);
        end = static_cast<std::int32_t>(state.Counters.BucketCnt);
    }
    assert(top == 0 || (job.End < top && top <= end));
    if (result != Result::GoOn) return result;
    if constexpr (kRecount) RecountLayer(state, side, {job.Top, job.End}, {top, end});
    LayerTables::Run(table, depth + 1, 1) = {top, end};
    if (state.Counters.nSol > 0) return Result::Ok;
    return top > 0 ? Result::GoOn : Result::NoSolution;
}

Result ForwStep(SearchState& state, Expander& expander) {
    return Step(state, expander, kForwTag, state.Top1, state.End1, state.Counters.ForwDepth,
                state.Layers.ForwTopEnd);
}

Result BackStep(SearchState& state, Expander& expander) {
    return Step(state, expander, kBackTag, state.Top2, state.End2, state.Counters.BackDepth,
                state.Layers.BackTopEnd);
}

bool BackwardNext(const SearchState& state) {
    switch (state.Options.SeaType) {
        case SeaType::Forward:
            return false;
        case SeaType::Backward:
            return true;
        case SeaType::Both:
            return state.End1 - state.Top1 >= state.End2 - state.Top2;
    }
    throw SolverFault("Invalid Search Type");
}

Result SearchRounds(SearchState& state, Expander& expander) {
    SearchCounters& counters = state.Counters;
    state.Hooks->ShowMsg(Result::Thinking);
    counters.PushesLowerBound = 1;
    Result result = Result::GoOn;
    while (result == Result::GoOn) {
        const bool backward = BackwardNext(state);
        state.Hooks->ShowSide(backward ? '2' : '1');
        result = backward ? BackStep(state, expander) : ForwStep(state, expander);
        counters.LastSide = backward ? 2 : 1;
        counters.SeaSteps += 1;
        assert(counters.SeaSteps == counters.ForwDepth + counters.BackDepth);
        if (result == Result::GoOn) counters.PushesLowerBound = counters.SeaSteps + 1;
        state.Hooks->ShowMsg(Result::Thinking);
        if (counters.nSol > 0) break;
    }
    counters.ForwLevelCnt = counters.ForwDepth - (counters.LastSide == 1 ? 1 : 0);
    counters.BackLevelCnt = counters.BackDepth - (counters.LastSide == 2 ? 1 : 0);
    assert(counters.ForwLevelCnt >= 0 && counters.BackLevelCnt >= 0);
    state.Hooks->ShowProgress(counters.BucketCnt);
    state.Hooks->Yield();
    return result;
}

}  // namespace

void InitSearchCounters(SearchState& state) {
    state.Counters = SearchCounters{};
    state.Counters.SeaPhase = 1;
    for (auto& kept : state.Kept) kept.reset();
    for (auto* table : {&state.Layers.ForwTopEnd, &state.Layers.BackTopEnd}) {
        table->clear();
        table->resize(kLayersAtFirst);
    }
    state.Top1 = state.End1 = state.Top2 = state.End2 = state.LastPos = 0;
    state.ProgressTick = 0;
    state.SpecialActive = false;
    state.MeetParents.clear();
}

Result Search(SearchState& state, Expander& expander) {
    assert(state.Hooks != nullptr && state.Counters.SeaPhase == 1);
    assert(state.Store.KeyLength() == state.Arrays.NumBoxes + 1);
    if (!OutsideSolved(state.Arrays)) return Result::NoSolution;
    const Result result = PrepareSearch(state, expander);
    if (result == Result::Ok || result == Result::OutOfMemory) return result;
    return SearchRounds(state, expander);
}

}  // namespace kavit
