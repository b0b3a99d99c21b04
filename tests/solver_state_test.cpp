// The order of the facade's calls, and what is left behind by a solve that ended in any way:
// nothing.

#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "solver/solver.h"
#include "support/failing_new.h"
#include "support/figures.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

constexpr const char* kLevel = "########\n#@$  . #\n# $  . #\n#  #   #\n########";
constexpr SolverOptions kPlus{.OptLevel = OptLevel::SomethingPlus};
constexpr SolverOptions kFewest{.OptLevel = OptLevel::FewestOfAll};

// Stops at the first solution.
struct StopAtMeeting final : SolverHooks {
    void ShowMsg(Result message) override {
        if (message == Result::SolutionFound) RequestStop(StopCause::User);
    }
};

std::string Whole(Solver& solver) {
    SolverHooks hooks;
    return WholeText(solver, BoardOf(kLevel), kPlus, hooks);
}

// One step of a solver's life: A analyse, S search, O optimize, B build, F fewest; the level
// analysed may also be one that is solved (d) or has no solution (u), the search stopped (x) or
// stopped at a meeting (m), and the sizes may change (z) or be too large (Z).
void Step(Solver& solver, char letter) {
    SolverHooks hooks;
    StopAt stopped(3);
    StopAtMeeting atMeeting;
    const std::map<char, std::function<void()>> steps = {
        {'A', [&] { (void)solver.AnalyseBoard(BoardOf(kLevel), kFewest); }},
        {'S', [&] { (void)solver.Search(hooks); }},
        {'O', [&] { (void)solver.OptimizeMoves(hooks); }},
        {'B', [&] { solver.BuildSolutions(); }},
        {'F', [&] { (void)solver.FewestMoves(hooks); }},
        {'d', [&] { (void)solver.AnalyseBoard(BoardOf("#####\n#@* #\n#####"), kFewest); }},
        {'u', [&] { (void)solver.AnalyseBoard(BoardOf(kUnsolvable), kFewest); }},
        {'x', [&] { EXPECT_EQ(solver.Search(stopped), Result::Stopped); }},
        {'m', [&] { EXPECT_EQ(solver.Search(atMeeting), Result::Stopped); }},
        {'z',
         [&] {
             EXPECT_TRUE(solver.ApplySizes({500, 3, 300}).Ok);
         }},
        {'Z',
         [&] {
             EXPECT_FALSE(solver.ApplySizes({2147483647, 32767, 300}).Ok);
         }},
    };
    steps.at(letter)();
}

TEST(SolverState, EveryCallOutOfOrderSaysSo) {
    const struct {
        const char* Steps;
        SolverState Stage;
        std::string_view Answered;
    } rows[] = {
        {"", SolverState::Sized, "A"},
        {"d", SolverState::Sized, "A"},
        {"A", SolverState::Analysed, "AS"},
        {"AS", SolverState::Solved, "AOB"},
        {"ASO", SolverState::Optimized, "AB"},
        {"ASB", SolverState::Solved, "AOBF"},
        {"ASOB", SolverState::Optimized, "ABF"},
        {"ASBF", SolverState::Lent, "A"},
        {"Ax", SolverState::Ended, "A"},
        {"uS", SolverState::Ended, "A"},
        {"Am", SolverState::StoppedWithSolution, "AB"},
        {"ASz", SolverState::Sized, "A"},
        {"ASZ", SolverState::Sized, "A"},
    };
    for (const auto& row : rows) {
        for (const char letter : {'A', 'S', 'O', 'B', 'F'}) {
            SCOPED_TRACE(row.Steps + std::string(" ") + letter);
            Solver solver;
            EXPECT_THROW(Step(solver, letter), SolverFault);  // without a store
            ASSERT_TRUE(solver.ApplySizes({1000, 2, 300}).Ok);
            for (const char* step = row.Steps; *step != '\0'; ++step) Step(solver, *step);
            EXPECT_EQ(solver.Stage(), row.Stage);
            if (row.Stage == SolverState::Sized) {
                EXPECT_THROW((void)solver.Position(1), SolverFault);
            }
            if (row.Answered.find(letter) != std::string_view::npos) {
                EXPECT_NO_THROW(Step(solver, letter));
            } else {
                EXPECT_THROW(Step(solver, letter), SolverFault);
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
    const auto disturb = [&](StopAt hooks, const SolverOptions& options, const Board& board) {
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
        for (const bool fault : {false, true}) {
            disturb(StopAt(at, fault), kSpecial, other);
            EXPECT_EQ(Whole(solver), expected);
        }
    }
    for (const char* level : {"#####\n#@* #\n#####", kUnsolvable, kLong}) {
        disturb(StopAt(0), {}, BoardOf(level));  // refused, without a solution, out of memory
        EXPECT_EQ(Whole(solver), expected);
    }
    // Out of memory in the heap, anywhere.
    for (int at = 1;; ++at) {
        bool failed = false;
        {
            const FailingNew failing(at);
            disturb(StopAt(0), kSpecial, other);
            failed = failing.Failed();
        }
        EXPECT_EQ(Whole(solver), expected) << at;
        if (!failed) break;
    }
}

}  // namespace
}  // namespace kavit::test
