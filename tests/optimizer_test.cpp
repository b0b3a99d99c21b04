#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "solver/solver.h"
#include "support/corpus.h"
#include "support/levels.h"

// The optimizer pass and the proof of the fewest moves: what they reach, and what they leave when
// something ends them.

namespace {

using namespace kavit;

Board Example(const std::string& name) {
    return test::BoardOfFile(KAVIT_EXAMPLES_FOLDER "/" + name + ".xsb");
}

void ExpectWhole(Solver& solver, const Board& board, int pushes) {
    solver.BuildSolutions();
    EXPECT_EQ(test::KeptFault(solver, board), "");
    EXPECT_EQ(solver.Kept(1)->SolPushes, pushes);
}

TEST(Optimizer, AStopAnywhereKeepsTheSolutionsAndClaimsNothing) {
    const Board board = Example("04-warehouse");
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({100000, 8, 300}).Ok);
    const SolverOptions options{.OptLevel = OptLevel::SomethingPlus, .OptSpecial = true};
    test::StopAt whole(0);
    test::SearchLevel(solver, board, options);
    ASSERT_EQ(solver.OptimizeMoves(whole), Result::GoOn);
    ASSERT_TRUE(solver.Counters().MovesProved);
    const int best = solver.Kept(1)->SolMoves;
    const int pushes = solver.Kept(1)->SolPushes;
    // The last yields are the proof's, the others the pass's.
    const std::int64_t last = whole.Yields;
    for (const std::int64_t at : {std::int64_t{1}, std::int64_t{2}, last / 4, last / 2, last - 40,
                                  last - 10, last - 1, last}) {
        test::StopAt hooks(at);
        test::SearchLevel(solver, board, options);
        const Result result = solver.OptimizeMoves(hooks);
        ExpectWhole(solver, board, pushes);
        EXPECT_GE(solver.Kept(1)->SolMoves, best);
        EXPECT_EQ(result == Result::Stopped, at < last || result != Result::GoOn) << at;
        EXPECT_EQ(solver.Counters().MovesProved, result == Result::GoOn) << at;
    }
}

// Level 3 reaches the fewest moves known and proves them, whatever the search type and the hash; a
// store that fills up before a solution is no failure of the proof.
TEST(Optimizer, LevelThreeReachesTheFewestMovesKnown) {
    std::vector<test::MovesRow> rows;
    for (const std::string& folder : test::LevelFolders())
        for (test::MovesRow& row : test::ReadMoves(folder))
            if (row.Moves) rows.push_back(std::move(row));
    constexpr auto kPlus = OptLevel::SomethingPlus;
    constexpr SolverOptions settings[] = {
        {.OptLevel = kPlus},
        {.OptLevel = kPlus, .HashCase = HashCase::Case1, .OptSpecial = true},
        {.OptLevel = kPlus, .SeaType = SeaType::Forward, .HashCase = HashCase::Case2},
        {.OptLevel = kPlus, .SeaType = SeaType::Backward}};
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({250000, 20, 300}).Ok);
    int proved = 0;
    for (const test::MovesRow& row : rows) {
        const Board board = test::BoardOfFile(row.Folder + "/" + row.Level + ".xsb");
        for (const SolverOptions& options : settings) {
            SCOPED_TRACE(row.Level + ", setting " + std::to_string(&options - settings));
            SolverHooks hooks;
            ASSERT_EQ(solver.AnalyseBoard(board, options), Result::Ok);
            const Result result = solver.Search(hooks);
            if (result == Result::OutOfMemory) continue;
            ASSERT_EQ(result, Result::Ok);
            if (solver.OptimizeMoves(hooks) != Result::GoOn) continue;
            solver.BuildSolutions();
            EXPECT_TRUE(solver.Counters().MovesProved);
            EXPECT_EQ(solver.Kept(1)->SolPushes, row.Pushes.value());
            EXPECT_EQ(solver.Kept(1)->SolMoves, row.Moves.value());
            EXPECT_LE(solver.Kept(0)->SolMoves, row.Moves.value());
            ++proved;
        }
    }
    EXPECT_GT(proved, 80);
}

}  // namespace
