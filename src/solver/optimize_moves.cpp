#include "solver/optimize_moves.h"

namespace kavit {

namespace {

constexpr std::int32_t kNoMoreLevels = 2147483647;

// One side of the pass: its tables, its counters, its letter.
struct Side {
    std::uint8_t Tag;
    char Letter;
    LevelTables::Table* Table;
    int* Level;    // the level in hand, shown by messages 25 and 26
    int LevelCnt;  // levels that the search expanded whole
    int Depth;     // levels that the search expanded
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
                &state.Levels.ForwTopEnd,
                &state.Counters.ForwLevel,
                state.Counters.ForwLevelCnt,
                state.Counters.ForwDepth,
                &state.Top1,
                &state.End1},
          back_{kBackTag,
                'B',
                &state.Levels.BackTopEnd,
                &state.Counters.BackLevel,
                state.Counters.BackLevelCnt,
                state.Counters.BackDepth,
                &state.Top2,
                &state.End2} {}

    Result Run() {
        Result result = Replay();
        if (result == Result::GoOn) {
            state_.SpecialActive = state_.Options.OptSpecial;
            result = FinishLastLevel(state_.Counters.LastSide == 1 ? forw_ : back_);
        }
        if (result == Result::GoOn) result = Beyond(forw_);
        if (result == Result::GoOn) result = Beyond(back_);
        Progress();
        return result;
    }

  private:
    [[nodiscard]] LevelRun RunOf(const Side& side, int level, int slot) const {
        return LevelTables::Get(*side.Table, level, slot);
    }
    void Record(const Side& side, int level, int slot, LevelRun run) {
        LevelTables::Run(*side.Table, level, slot) = run;
    }
    void Progress() {
        state_.Hooks->ShowProgress(state_.Counters.BucketCnt);
        state_.Hooks->Yield();
    }

    // Expands the tagged positions of a run; Top and End of the side become what it stores.
    Result Reexpand(Side& side, LevelRun run) {
        state_.Hooks->ShowSide(side.Letter);
        const std::int32_t before = state_.Counters.BucketCnt;
        state_.LastPos = *side.Top = *side.End = 0;
        state_.DuplicateBound = run.Top;
        const Result result = expander_.Expand({side.Tag, run.Top, run.End, true});
        if (state_.Counters.BucketCnt > before) {
            *side.Top = before + 1;
            *side.End = state_.Counters.BucketCnt;
        }
        return result;
    }

    // The stored levels again, in the order in which the search made them.
    Result Replay() {
        int f = 1;
        int b = 1;
        for (;;) {
            const std::int32_t nextF =
                f <= LevelsOf(forw_) ? RunOf(forw_, f, 1).Top : kNoMoreLevels;
            const std::int32_t nextB =
                b <= LevelsOf(back_) ? RunOf(back_, b, 1).Top : kNoMoreLevels;
            if (nextF == kNoMoreLevels && nextB == kNoMoreLevels) return Result::GoOn;
            const bool forward = nextF < nextB;
            const Result result = ReplayLevel(forward ? forw_ : back_, forward ? f : b);
            if (result != Result::GoOn) return result;
            (forward ? f : b) += 1;
            Progress();
        }
    }
    // The first level is always gone through.
    static int LevelsOf(const Side& side) { return side.LevelCnt > 0 ? side.LevelCnt : 1; }

    Result ReplayLevel(Side& side, int level) {
        *side.Level = level;
        state_.Hooks->ShowMsg(Result::ImprovingMoves);
        for (const int slot : {1, 2}) {
            const LevelRun run = RunOf(side, level, slot);
            if (run.Top <= 0) continue;
            const Result result = Reexpand(side, run);
            if (result != Result::GoOn) return result;
            // A run that only slot 2 stored has no Top and is passed over later.
            if (slot == 1) Record(side, level + 1, 2, {*side.Top, *side.End});
            if (slot == 2 && *side.End >= 1)
                Record(side, level + 1, 2, {RunOf(side, level + 1, 2).Top, *side.End});
        }
        return Result::GoOn;
    }

    // The level in which the two sides met, which the search left unfinished.
    Result FinishLastLevel(Side& side) {
        const int level = *side.Level += 1;
        for (const int slot : {1, 2}) {
            const LevelRun run = RunOf(side, level, slot);
            if (run.Top <= 0) continue;
            const Result result = Reexpand(side, run);
            if (result != Result::GoOn) return result;
            if (slot == 1) Record(side, level + 1, 2, {*side.Top, *side.End});
            if (slot == 2) Record(side, level + 2, 1, {*side.Top, *side.End});
        }
        return Result::GoOn;
    }

    Result Beyond(Side& side) {
        for (*side.Level += 1; *side.Level <= side.Depth + 2; *side.Level += 1) {
            state_.Hooks->ShowMsg(Result::BeyondOptimum);
            for (const int slot : {1, 2}) {
                const LevelRun run = RunOf(side, *side.Level, slot);
                if (run.Top <= 0) continue;
                const Result result = Reexpand(side, run);
                if (result != Result::GoOn) return result;
                Record(side, *side.Level + 1, slot, {*side.Top, *side.End});
            }
            Progress();
        }
        *side.Level -= 1;
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
    counters.SeaPhase = 2;
    for (KeptSolution& kept : state.Kept) kept.SolFoundAtSearch = kept.SolFoundAt;
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
