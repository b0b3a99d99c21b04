#include "solver/solver.h"

#include <algorithm>
#include <cassert>
#include <chrono>
#include <initializer_list>
#include <new>

#include "level/replay.h"
#include "solver/moves/build_solution.h"
#include "solver/moves/fewest_moves.h"
#include "solver/moves/optimize_moves.h"
#include "solver/moves/prove_moves.h"
#include "solver/search/recount.h"
#include "solver/search/search.h"
#include "solver/search/worth_threads.h"
#include "solver/store/store_size.h"

namespace kavit {

namespace {

class Stopwatch {
  public:
    explicit Stopwatch(double& seconds) : seconds_(&seconds) {}
    ~Stopwatch() {
        *seconds_ =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
    }
    Stopwatch(const Stopwatch&) = delete;
    Stopwatch& operator=(const Stopwatch&) = delete;

  private:
    double* seconds_;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

// No thread of a search outlives the call that started it.
class ThreadsGuard {
  public:
    explicit ThreadsGuard(Expander& expander) : expander_(expander) {}
    ~ThreadsGuard() { expander_.EndThreads(); }
    ThreadsGuard(const ThreadsGuard&) = delete;
    ThreadsGuard& operator=(const ThreadsGuard&) = delete;

  private:
    Expander& expander_;
};

}  // namespace

struct Solver::State : SearchState {
    using SearchState::SearchState;

    kavit::Sizes Sizes{0, 0, 0};
    Board Start;  // as it was analysed, for the replay
    std::unique_ptr<kavit::Expander> Expander;
    SolverState Stage = SolverState::NoStore;

    // Throws unless the stage is one of those that the call answers in.
    void Need(std::initializer_list<SolverState> stages, const char* otherwise) const {
        if (std::find(stages.begin(), stages.end(), Stage) == stages.end())
            throw SolverFault(otherwise);
    }
    // False: there is not so much memory, and the old sizes are in force, or none at all.
    bool Resize(const kavit::Sizes& fields);
    void Finish(KeptSolution& kept, const BuiltSolution& built) const;
    // Nothing is left of any search.
    void Forget() {
        Expander.reset();
        InitSearchCounters(*this);
        Stage = Sizes.NumPos > 0 ? SolverState::Sized : SolverState::NoStore;
    }
};

Solver::Solver() : Solver(MachineMemory()) {}
Solver::Solver(MemorySource& memory) : state_(std::make_unique<State>(memory)) {}
Solver::~Solver() = default;
Solver::Solver(Solver&&) noexcept = default;
Solver& Solver::operator=(Solver&&) noexcept = default;

bool Solver::State::Resize(const kavit::Sizes& fields) {
    return Store.Resize(fields.NumPos, fields.Blocks);
}

ApplyReply Solver::ApplySizes(const Sizes& fields) {
    if (fields.MaxTime > 86400) return {false, false, "MaxTime can't exceed 86400 secs."};
    if (fields.Blocks <= 0) return {false, false, "Blocks can't be zero or negative"};
    if (fields.NumPos <= 0)
        return {false, false, "Max number of positions can't be zero or negative"};
    if (fields.MaxTime <= 0) return {false, false, "Max elapsed time can't be zero or negative"};
    Sizes& applied = state_->Sizes;
    if (fields.Blocks == applied.Blocks && fields.NumPos == applied.NumPos) {
        applied.MaxTime = fields.MaxTime;
        return {};
    }
    if (fields.NumPos > 2147483647 || fields.Blocks > 32767 || !state_->Resize(fields)) {
        if (state_->Store.NumPos() == 0) applied = {0, 0, 0};  // even the old sizes are gone
        state_->Forget();  // the old store may have been given back and taken again
        return {false, false, "Insuficient Memory"};
    }
    applied = fields;
    state_->Forget();
    return {true, true, ""};
}

const Sizes& Solver::AppliedSizes() const {
    return state_->Sizes;
}

SolverState Solver::Stage() const {
    return state_->Stage;
}

std::uint64_t Solver::MostBytes() const {
    return state_->Store.MostBytes();
}

Result Solver::AnalyseBoard(const Board& board, const SolverOptions& options) {
    if (state_->Stage == SolverState::NoStore)
        throw SolverFault("The solver has no memory for positions yet");
    const HashCase hashCase = options.HashCase.value_or(HashFor(state_->Sizes.NumPos));
    if (options.OptLevel > OptLevel::FewestOfAll) throw SolverFault("Invalid optimizer level");
    if (hashCase > HashCase::Mixed) throw SolverFault("Invalid hash case");
    if (options.SeaType > SeaType::Backward) throw SolverFault("Invalid Search Type");
    state_->Forget();
    state_->Options = options;
    state_->Start = board;
    const Result result = kavit::AnalyseBoard(board, state_->Store.Blocks(), state_->Arrays);
    state_->Counters.NumBoxes = state_->Arrays.NumBoxes;
    state_->Counters.SqCompact = state_->Arrays.SqCompact;
    state_->Counters.HashCase = hashCase;
    state_->Counters.HashSize = state_->Store.HashSize(hashCase);
    state_->Counters.BytesPerPosition = state_->Store.BytesPerPosition(hashCase);
    if (result != Result::Ok) return result;
    assert(state_->Arrays.NumBoxes <= state_->Store.Blocks());
    state_->Store.Clear(state_->Arrays.NumBoxes, hashCase);
    state_->Expander = std::make_unique<kavit::Expander>(*state_);
    state_->Stage = SolverState::Analysed;
    return Result::Ok;
}

void SetWorthThreads(Solver& solver, int chunks) {
    solver.state_->WorthThreads = chunks;
}

Result Solver::Search(SolverHooks& hooks) {
    state_->Need({SolverState::Analysed}, "No level has been analysed for this search");
    state_->Stage = SolverState::Ended;  // also when a fault ends it
    state_->Hooks = &hooks;
    const Stopwatch watch(state_->Counters.SearchSeconds);
    const ThreadsGuard guard(*state_->Expander);
    const Result result = kavit::Search(*state_, *state_->Expander);
    if constexpr (kRecount) RecountStore(*state_);
    assert(result != Result::Ok || (state_->Kept[0] && state_->Kept[1]));
    assert(state_->Counters.BucketCnt <= state_->Sizes.NumPos);
    if (result == Result::Ok)
        state_->Stage = SolverState::Solved;
    else if (state_->Kept[0])
        state_->Stage = SolverState::StoppedWithSolution;
    return result;
}

Result Solver::OptimizeMoves(SolverHooks& hooks) {
    state_->Need({SolverState::Solved},
                 "The optimizer needs a search that has just found a solution");
    state_->Stage = SolverState::Optimized;
    if (state_->Options.OptLevel < OptLevel::SomethingMore) return Result::GoOn;
    state_->Hooks = &hooks;
    const ThreadsGuard guard(*state_->Expander);
    Result result = Result::GoOn;
    {
        const Stopwatch watch(state_->Counters.PassSeconds);
        result = kavit::OptimizeMoves(*state_, *state_->Expander);
    }
    if constexpr (kRecount) RecountStore(*state_);
    if (result != Result::GoOn || state_->Options.OptLevel < OptLevel::SomethingPlus) return result;
    const Stopwatch watch(state_->Counters.ProofSeconds);
    result = ProveMoves(*state_, *state_->Expander);
    // Want of memory for the proof takes nothing from the solutions, nor from the pass.
    return result == Result::Stopped ? result : Result::GoOn;
}

// Writes the string and plays it by the rules of the board.
void Solver::State::Finish(KeptSolution& kept, const BuiltSolution& built) const {
    assert(built.SolBuildPushes > 0);
    kept.SolString = built.SolBuild;
    const ReplayOutcome replay = Replay(Start, kept.SolString);
    if (!replay.Solved || replay.Moves != kept.SolMoves || replay.Pushes != kept.SolPushes)
        throw SolverFault("Internal error: a solution of " + std::to_string(kept.SolMoves) +
                          " moves and " + std::to_string(kept.SolPushes) +
                          " pushes does not replay on the board");
}

void Solver::BuildSolutions() {
    state_->Need({SolverState::Solved, SolverState::Optimized, SolverState::StoppedWithSolution},
                 "No solution is known that could be built");
    for (auto& known : state_->Kept) {
        state_->Finish(known.value(),
                       BuildSolution(state_->Arrays, state_->Store, known->SolSteps));
    }
    if (state_->Kept[0]->SolMoves == state_->Kept[1]->SolMoves)
        state_->Kept[1]->SolString = state_->Kept[0]->SolString;
}

Result Solver::FewestMoves(SolverHooks& hooks) {
    constexpr const char* unbuilt =
        "The search for the fewest moves begins at a solution that was built";
    state_->Need({SolverState::Solved, SolverState::Optimized}, unbuilt);
    std::optional<KeptSolution>& best = state_->Kept[0];
    if (best.value().SolString.empty()) throw SolverFault(unbuilt);
    if (state_->Options.OptLevel < OptLevel::FewestOfAll) return Result::GoOn;
    SearchCounters& counters = state_->Counters;
    const Stopwatch watch(counters.FewestSeconds);
    state_->Stage = SolverState::Lent;
    // Every push is a move.
    counters.MovesLowerBound = state_->Kept[1]->SolPushes;
    try {
        const FewestAnswer answer =
            SearchFewestMoves(state_->Arrays, state_->Store.Lend(), best->SolMoves,
                              {counters.Threads, state_->WorthThreads}, counters, hooks);
        assert(counters.MovesLowerBound <= answer.Moves && answer.Moves <= best->SolMoves);
        if (!answer.Pushes.empty()) {
            KeptSolution found = *best;
            found.SolMoves = answer.Moves;
            found.SolPushes = static_cast<int>(answer.Pushes.size());
            found.SolPhase = 2;
            found.SolSteps.clear();
            state_->Finish(found, BuildSolution(state_->Arrays, answer.Pushes));
            best = std::move(found);
        }
        counters.FewestMovesProved = answer.Moves == counters.MovesLowerBound;
        return answer.Code;
    } catch (const std::bad_alloc&) {
        return Result::OutOfMemory;
    }
}

const std::optional<KeptSolution>& Solver::Kept(int k) const {
    return state_->Kept.at(static_cast<std::size_t>(k));
}

const SearchCounters& Solver::Counters() const {
    return state_->Counters;
}

StoredPosition Solver::Position(std::int64_t pos) const {
    if (state_->Stage == SolverState::Lent)
        throw SolverFault("The positions have made room for the search for the fewest moves");
    if (pos < 1 || pos > state_->Counters.BucketCnt)
        throw SolverFault("There is no position " + std::to_string(pos) + ": " +
                          std::to_string(state_->Counters.BucketCnt) + " are stored");
    const BoardArrays& arrays = state_->Arrays;
    const PosRecord record = state_->Store.Record(static_cast<std::int32_t>(pos));
    StoredPosition position{record.Tag, record.Parent, record.Moves, arrays.KeyCell(record.Man), {},
                            0};
    for (const std::uint8_t byte : state_->Store.Key(static_cast<std::int32_t>(pos)))
        position.Boxes.push_back(arrays.KeyCell(byte));
    position.NormalisedMan = position.Boxes.back();
    position.Boxes.pop_back();
    return position;
}

const LayerTables& Solver::Layers() const {
    return state_->Layers;
}

}  // namespace kavit
