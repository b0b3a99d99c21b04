#include "solver/moves/optimize_moves.h"

#include <cassert>

namespace kavit {

namespace {

constexpr std::int32_t kNoMoreLayers = 2147483647;

// One side of the pass: its tables, its counters, its letter.
struct Side {
    std::uint8_t Tag;
    char Letter;
    LayerTables::Table* Table;
    std::int64_t* Level;    // the level in hand, shown by messages 25 and 26
    std::int64_t LevelCnt;  // levels that the search expanded whole
    std::int64_t Depth;     // levels that the search expanded
    std::int32_t* Top;
    std::int32_t* End;
};

class Pass {
  public:
    Pass(SearchState& state, Expander& expander)
        : state_(state),
          expander_(expander),
          forw_{kForwTag,
                'F',
                &state.Layers.ForwTopEnd,
                &state.Counters.ForwLevel,
                state.Counters.ForwLevelCnt,
                state.Counters.ForwDepth,
                &state.Top1,
                &state.End1},
          back_{kBackTag,
                'B',
                &state.Layers.BackTopEnd,
                &state.Counters.BackLevel,
                state.Counters.BackLevelCnt,
                state.Counters.BackDepth,
                &state.Top2,
                &state.End2} {}

    Result Run() {
        Result result = Replay();
        if (result == Result::GoOn) {
            state_.SpecialActive = state_.Options.OptSpecial;
            result = FinishLastLayer(state_.Counters.LastSide == 1 ? forw_ : back_);
        }
        if (result == Result::GoOn) result = Beyond(forw_);
        if (result == Result::GoOn) result = Beyond(back_);
        Progress();
        return result;
    }

  private:
    [[nodiscard]] LayerRun RunOf(const Side& side, std::int64_t level, int slot) const {
        return LayerTables::Get(*side.Table, level, slot);
    }
    void Record(const Side& side, std::int64_t level, int slot, LayerRun run) {
        assert(run.Top == 0 || (run.Top <= run.End && run.End <= state_.Counters.BucketCnt));
        LayerTables::Run(*side.Table, level, slot) = run;
    }
    void Progress() {
        state_.Hooks->ShowProgress(state_.Counters.BucketCnt);
        state_.Hooks->Yield();
    }

    // Expands the tagged positions of a run; Top and End of the side become what it stores.
    Result Reexpand(Side& side, LayerRun run) {
        assert(run.Top >= 1 && run.Top <= run.End);
        state_.Hooks->ShowSide(side.Letter);
        const std::int64_t before = state_.Counters.BucketCnt;
        state_.LastPos = *side.Top = *side.End = 0;
        state_.DuplicateBound = run.Top;
        const Result result = expander_.Expand(
            {.Side = side.Tag, .Top = run.Top, .End = run.End, .OnPathOnly = true});
        if (state_.Counters.BucketCnt > before) {
            assert(run.End <= before);  // it has grown by the layer that is made
            *side.Top = static_cast<std::int32_t>(before + 1);
            *side.End = static_cast<std::int32_t>(state_.Counters.BucketCnt);
        }
        return result;
    }

    // The stored levels again, in the order in which the search made them.
    Result Replay() {
        std::int64_t f = 1;
        std::int64_t b = 1;
        for (;;) {
            const std::int32_t nextF =
                f <= LayersOf(forw_) ? RunOf(forw_, f, 1).Top : kNoMoreLayers;
            const std::int32_t nextB =
                b <= LayersOf(back_) ? RunOf(back_, b, 1).Top : kNoMoreLayers;
            if (nextF == kNoMoreLayers && nextB == kNoMoreLayers) return Result::GoOn;
            assert(nextF != nextB);
            const bool forward = nextF < nextB;
            const Result result = ReplayLayer(forward ? forw_ : back_, forward ? f : b);
            if (result != Result::GoOn) return result;
            (forward ? f : b) += 1;
            Progress();
        }
    }
    // The first level is always gone through.
    static std::int64_t LayersOf(const Side& side) { return side.LevelCnt > 0 ? side.LevelCnt : 1; }

    Result ReplayLayer(Side& side, std::int64_t level) {
        *side.Level = level;
        state_.Hooks->ShowMsg(Result::ImprovingMoves);
        return EachSlot(side, level, [&](int slot, LayerRun made) {
            // A run that only slot 2 stored has no Top and is passed over later.
            if (slot == 1) Record(side, level + 1, 2, made);
            if (slot == 2 && made.End >= 1)
                Record(side, level + 1, 2, {RunOf(side, level + 1, 2).Top, made.End});
        });
    }

    // The level in which the two sides met, which the search left unfinished.
    Result FinishLastLayer(Side& side) {
        const std::int64_t level = *side.Level += 1;
        return EachSlot(side, level, [&](int slot, LayerRun made) {
            if (slot == 1) Record(side, level + 1, 2, made);
            if (slot == 2) Record(side, level + 2, 1, made);
        });
    }

    Result Beyond(Side& side) {
        for (*side.Level += 1; *side.Level <= side.Depth + 2; *side.Level += 1) {
            state_.Hooks->ShowMsg(Result::BeyondOptimum);
            const Result result = EachSlot(side, *side.Level, [&](int slot, LayerRun made) {
                Record(side, *side.Level + 1, slot, made);
            });
            if (result != Result::GoOn) return result;
            Progress();
        }
        *side.Level -= 1;
        assert(*side.Level == side.Depth + 2);
        return Result::GoOn;
    }

    // Expands the runs of a level that hold something; `record` takes what each of them stored.
    template <typename TakeMade>
    Result EachSlot(Side& side, std::int64_t level, TakeMade record) {
        for (const int slot : {1, 2}) {
            const LayerRun run = RunOf(side, level, slot);
            if (run.Top <= 0) continue;
            const Result result = Reexpand(side, run);
            if (result != Result::GoOn) return result;
            record(slot, {*side.Top, *side.End});
        }
        return Result::GoOn;
    }

    SearchState& state_;
    Expander& expander_;
    Side forw_;
    Side back_;
};

}  // namespace

Result OptimizeMoves(SearchState& state, Expander& expander) {
    SearchCounters& counters = state.Counters;
    assert(counters.SeaPhase == 1 && counters.nSol > 0 && state.Kept[0] && state.Kept[1]);
    counters.SeaPhase = 2;
    for (auto& kept : state.Kept) kept->SolFoundAtSearch = kept->SolFoundAt;
    state.SpecialActive = false;
    state.EvalCnt = 1000;
    counters.nSolSearch = counters.nSol;
    counters.nSol = 0;
    counters.ForwLevel = 0;
    counters.BackLevel = 0;
    counters.OptimumPushes = counters.ForwLevelCnt + counters.BackLevelCnt + 1;
    const Result result = Pass(state, expander).Run();
    state.SpecialActive = false;
    return result;
}

}  // namespace kavit
