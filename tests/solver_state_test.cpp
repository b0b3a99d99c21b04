// The order of the facade's calls, and what is left behind by a solve that ended in any way:
// nothing.

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "solver/solver.h"
#include "support/failing_new.h"
#include "support/figures.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

constexpr const char* kLevel = "########\n#@$  . #\n# $  . #\n#  #   #\n########";
constexpr SolverOptions kPlus{.OptLevel = OptLevel::SomethingPlus};

class CountingHooks : public StopAt {
  public:
    explicit CountingHooks(std::int64_t throwAt = 0, std::int64_t stopAt = 0)
        : StopAt(stopAt), throwAt_(throwAt) {}
    void Yield() override {
        StopAt::Yield();
        if (Yields == throwAt_) throw std::runtime_error("a fault on the way");
    }

  private:
    std::int64_t throwAt_;
};

// Stops at the first solution.
struct StopAtMeeting final : SolverHooks {
    void ShowMsg(Result message) override {
        if (message == Result::SolutionFound) RequestStop(StopCause::User);
    }
};

// Goes through a solve as far as it answers; all that it counts, as text.
std::string Whole(Solver& solver) {
    SolverHooks hooks;
    SearchLevel(solver, BoardOf(kLevel), kPlus);
    std::ostringstream text;
    text << static_cast<int>(solver.OptimizeMoves(hooks));
    solver.BuildSolutions();
    const SearchCounters& c = solver.Counters();
    for (const std::int64_t count :
         {c.BucketCnt, c.PosChanged, c.PosDiscarded, c.nSol, c.nSolSearch, c.HashCnt, c.RHashCnt,
          c.SeaSteps, c.ForwDepth, c.BackDepth, c.ForwLevel, c.BackLevel, c.PushesLowerBound})
        text << " " << count;
    for (const int k : {0, 1}) text << " " << solver.Kept(k)->SolString;
    for (std::int64_t pos = 1; pos <= c.BucketCnt; ++pos) {
        const StoredPosition position = solver.Position(pos);
        text << " " << position.Tag << "," << position.Parent << "," << position.Moves;
    }
    return text.str() + (c.MovesProved ? " proved" : "");
}

TEST(SolverState, EveryCallOutOfOrderSaysSo) {
    SolverHooks hooks;
    StopAt stopped(3);
    StopAtMeeting atMeeting;
    const auto analyse = [](Solver& s, const char* level = kLevel) {
        (void)s.AnalyseBoard(BoardOf(level), kPlus);
    };
    const struct {
        SolverState Stage;
        std::function<void(Solver&)> Reach;
        std::string_view Answered;  // of A analyse, S search, O optimize, B build, F fewest
    } rows[] = {
        {SolverState::Sized, [](Solver&) {}, "A"},
        {SolverState::Sized, [&](Solver& s) { analyse(s, "#####\n#@* #\n#####"); }, "A"},
        {SolverState::Analysed, [&](Solver& s) { analyse(s); }, "AS"},
        {SolverState::Solved, [](Solver& s) { SearchLevel(s, BoardOf(kLevel), kPlus); }, "AOB"},
        {SolverState::Optimized,
         [&](Solver& s) {
             SearchLevel(s, BoardOf(kLevel), kPlus);
             (void)s.OptimizeMoves(hooks);
         },
         "AB"},
        {SolverState::Solved,
         [](Solver& s) {
             SearchLevel(s, BoardOf(kLevel), kPlus);
             s.BuildSolutions();
         },
         "AOBF"},
        {SolverState::Lent,
         [&](Solver& s) {
             SearchLevel(s, BoardOf(kLevel), {.OptLevel = OptLevel::FewestOfAll});
             s.BuildSolutions();
             (void)s.FewestMoves(hooks);
         },
         "A"},
        {SolverState::Ended,
         [&](Solver& s) {
             analyse(s);
             EXPECT_EQ(s.Search(stopped), Result::Stopped);
         },
         "A"},
        {SolverState::Ended,
         [&](Solver& s) {
             analyse(s, kUnsolvable);
             EXPECT_EQ(s.Search(hooks), Result::NoSolution);
         },
         "A"},
        {SolverState::StoppedWithSolution,
         [&](Solver& s) {
             analyse(s);
             EXPECT_EQ(s.Search(atMeeting), Result::Stopped);
         },
         "AB"},
        {SolverState::Sized,
         [](Solver& s) {
             SearchLevel(s, BoardOf(kLevel), kPlus);
             EXPECT_TRUE(s.ApplySizes({500, 3, 300}).Ok);
             EXPECT_THROW((void)s.Position(1), SolverFault);
         },
         "A"},
        {SolverState::Sized,
         [](Solver& s) {
             SearchLevel(s, BoardOf(kLevel), kPlus);
             EXPECT_FALSE(s.ApplySizes({2147483647, 32767, 300}).Ok);
         },
         "A"},
    };
    const std::pair<char, std::function<void(Solver&)>> calls[] = {
        {'A', [](Solver& s) { (void)s.AnalyseBoard(BoardOf(kEasy), {}); }},
        {'S', [&](Solver& s) { (void)s.Search(hooks); }},
        {'O', [&](Solver& s) { (void)s.OptimizeMoves(hooks); }},
        {'B', [](Solver& s) { s.BuildSolutions(); }},
        {'F', [&](Solver& s) { (void)s.FewestMoves(hooks); }},
    };
    for (const auto& row : rows) {
        for (const auto& [letter, call] : calls) {
            SCOPED_TRACE(std::to_string(&row - rows) + " " + letter);
            Solver solver;
            EXPECT_THROW(call(solver), SolverFault);  // without a store
            ASSERT_TRUE(solver.ApplySizes({1000, 2, 300}).Ok);
            stopped.StopSea = atMeeting.StopSea = StopCause::No;
            stopped.Yields = 0;
            row.Reach(solver);
            EXPECT_EQ(solver.Stage(), row.Stage);
            if (row.Answered.find(letter) != std::string_view::npos) {
                EXPECT_NO_THROW(call(solver));
            } else {
                EXPECT_THROW(call(solver), SolverFault);
                EXPECT_EQ(solver.Stage(), row.Stage);
            }
        }
    }
}

TEST(SolverState, AStopAfterAMeetingKeepsTheSolution) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({1000, 2, 300}).Ok);
    StopAtMeeting hooks;
    const Board board = BoardOf(kLevel);
    ASSERT_EQ(solver.AnalyseBoard(board, {}), Result::Ok);
    ASSERT_EQ(solver.Search(hooks), Result::Stopped);
    EXPECT_EQ(solver.Counters().nSol, 1);
    solver.BuildSolutions();
    EXPECT_EQ(KeptFault(solver, board), "");
    EXPECT_EQ(solver.Kept(1)->SolPushes, solver.Counters().PushesLowerBound);
    // The bound grows with each whole layer and never passes the truth.
    SearchLevel(solver, board);
    const int pushes = solver.Kept(1)->SolPushes;
    EXPECT_EQ(solver.Counters().PushesLowerBound, pushes);
    std::int64_t last = 0;
    for (std::int64_t at = 1;; ++at) {
        StopAt early(at);
        ASSERT_EQ(solver.AnalyseBoard(board, {}), Result::Ok);
        if (solver.Search(early) != Result::Stopped) break;
        EXPECT_GE(solver.Counters().PushesLowerBound, last);
        last = solver.Counters().PushesLowerBound;
    }
    EXPECT_EQ(last, pushes);
}

TEST(SolverState, NothingIsLeftOfAnEarlierSolve) {
    Solver fresh;
    ASSERT_TRUE(fresh.ApplySizes({1000, 8, 300}).Ok);
    const std::string expected = Whole(fresh);
    const Board other = BoardOf("########\n#. $  .#\n# $ @  #\n#      #\n########");
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({1000, 8, 300}).Ok);
    const auto disturb = [&](std::int64_t throwAt, std::int64_t stopAt,
                             const SolverOptions& options, const Board& board) {
        CountingHooks hooks(throwAt, stopAt);
        try {
            if (solver.AnalyseBoard(board, options) != Result::Ok) return;
            if (solver.Search(hooks) == Result::Ok) (void)solver.OptimizeMoves(hooks);
        } catch (const std::exception&) {
        }
    };
    constexpr SolverOptions kSpecial{
        .OptLevel = OptLevel::SomethingPlus, .HashCase = HashCase::Case2, .OptSpecial = true};
    for (std::int64_t at = -1; at < 300; at = at * 5 / 4 + 1) {
        SCOPED_TRACE(at);
        disturb(at, 0, kSpecial, other);
        EXPECT_EQ(Whole(solver), expected);
        disturb(0, at, kSpecial, other);
        EXPECT_EQ(Whole(solver), expected);
    }
    for (const char* level : {"#####\n#@* #\n#####", kUnsolvable, kLong}) {
        disturb(0, 0, {}, BoardOf(level));  // refused, without a solution, out of memory
        EXPECT_EQ(Whole(solver), expected);
    }
    // Out of memory in the heap, anywhere.
    for (int at = 1;; ++at) {
        bool failed = false;
        {
            const FailingNew failing(at);
            disturb(0, 0, kSpecial, other);
            failed = failing.Failed();
        }
        EXPECT_EQ(Whole(solver), expected) << at;
        if (!failed) break;
    }
}

}  // namespace
}  // namespace kavit::test
