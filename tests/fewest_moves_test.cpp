#include <gtest/gtest.h>

#include <string>

#include "solver/solver.h"
#include "support/corpus.h"
#include "support/levels.h"

// The fewest moves of any solution: what is found, what is claimed when something ends the search,
// and what it takes.

namespace {

using namespace kavit;

constexpr SolverOptions kFewest{.OptLevel = OptLevel::FewestOfAll};

// Everything up to the search for the fewest moves; false when memory ends it before.
bool Prepare(Solver& solver, const Board& board) {
    SolverHooks hooks;
    if (solver.AnalyseBoard(board, kFewest) != Result::Ok) return false;
    if (solver.Search(hooks) != Result::Ok) return false;
    (void)solver.OptimizeMoves(hooks);
    solver.BuildSolutions();
    return true;
}

struct Row {
    const char* Level;
    int Pushes;  // solution 1
    int Moves;
    int FewestPushes;  // solution 0
    int FewestMoves;
    // What the search takes: anything that prunes less, or more, or in another order shows here.
    int Positions;
    int Offers;

    [[nodiscard]] Board Cells() const {
        const std::string folder = *Level == '0' ? KAVIT_EXAMPLES_FOLDER : test::OwnLevels();
        return test::BoardOfFile(folder + "/" + Level + ".xsb");
    }
};

constexpr Row kRows[] = {
    {"man_on_goal", 5, 7, 5, 7, 0, 6},
    {"fewest_walled", 4, 15, 6, 13, 290, 880},
    {"fewest_two", 8, 19, 10, 18, 481, 1308},
    {"fewest_four", 11, 45, 15, 38, 234, 554},
    {"fewest_six", 8, 26, 14, 25, 382, 1044},
    {"boxes_line", 9, 29, 9, 29, 1803, 7799},
    {"fewest_tall", 27, 49, 27, 49, 486, 951},
    {"02-corner-shop", 13, 36, 13, 36, 83, 154},
    {"03-two-rooms", 21, 44, 21, 44, 1052, 3628},
    {"04-warehouse", 26, 92, 26, 92, 1514, 3664},
    {"05-crossing", 34, 105, 38, 101, 55019, 174697},
};

TEST(FewestMoves, AreFoundAndProvedAtTheirCost) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({100000, 12, 300}).Ok);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.Level);
        const Board board = row.Cells();
        ASSERT_TRUE(Prepare(solver, board));
        EXPECT_EQ(solver.Kept(1)->SolPushes, row.Pushes);
        EXPECT_EQ(solver.Kept(1)->SolMoves, row.Moves);
        SolverHooks hooks;
        EXPECT_EQ(solver.FewestMoves(hooks), Result::GoOn);
        const SearchCounters& counters = solver.Counters();
        EXPECT_EQ(solver.Kept(0)->SolPushes, row.FewestPushes);
        EXPECT_EQ(solver.Kept(0)->SolMoves, row.FewestMoves);
        EXPECT_EQ(test::KeptFault(solver, board), "");
        EXPECT_EQ(solver.Kept(1)->SolMoves, row.Moves);
        EXPECT_TRUE(counters.FewestMovesProved);
        EXPECT_EQ(counters.MovesLowerBound, row.FewestMoves);
        EXPECT_EQ(counters.FewestPositions, row.Positions);
        EXPECT_EQ(counters.FewestOffers, row.Offers);
    }
}

// What must be true of a search that was ended at any time; answers the bound.
std::int64_t CheckEnded(const Solver& solver, const Board& board, Result result, int fewest) {
    const SearchCounters& counters = solver.Counters();
    EXPECT_EQ(test::KeptFault(solver, board), "");
    EXPECT_GE(solver.Kept(0)->SolMoves, fewest);
    EXPECT_LE(counters.MovesLowerBound, fewest);
    EXPECT_GE(counters.MovesLowerBound, solver.Kept(1)->SolPushes);
    EXPECT_EQ(counters.FewestMovesProved, solver.Kept(0)->SolMoves == counters.MovesLowerBound);
    EXPECT_TRUE(counters.FewestMovesProved || result != Result::GoOn);
    return counters.MovesLowerBound;
}

TEST(FewestMoves, AStopOrAFullStoreLeavesABoundThatRises) {
    for (const Row& row : kRows) {
        if (row.Positions > 500) continue;
        SCOPED_TRACE(row.Level);
        const Board board = row.Cells();
        Solver solver;
        ASSERT_TRUE(solver.ApplySizes({100000, 12, 300}).Ok);
        std::int64_t least = 0;
        Result result = Result::Stopped;
        for (int at = 1; result == Result::Stopped; ++at) {
            ASSERT_TRUE(Prepare(solver, board));
            test::StopAt hooks(at);
            result = solver.FewestMoves(hooks);
            const std::int64_t bound = CheckEnded(solver, board, result, row.FewestMoves);
            EXPECT_GE(bound, least);
            least = bound;
        }
        EXPECT_EQ(result, Result::GoOn);
        EXPECT_EQ(least, row.FewestMoves);
        for (int numPos = 1 + row.Positions / 8; numPos <= row.Positions + 1;
             numPos += 1 + numPos / 8) {
            ASSERT_TRUE(solver.ApplySizes({numPos, 12, 300}).Ok);
            if (!Prepare(solver, board)) continue;
            SolverHooks hooks;
            result = solver.FewestMoves(hooks);
            (void)CheckEnded(solver, board, result, row.FewestMoves);
            EXPECT_LE(solver.Counters().FewestPositions, numPos);
            EXPECT_TRUE(numPos >= row.Positions || result == Result::OutOfMemory) << numPos;
        }
    }
}

TEST(FewestMoves, AreLookedForWhenAskedForAndNotBefore) {
    const Board board = test::BoardOf(test::kEasy);
    Solver solver;
    SolverHooks hooks;
    ASSERT_TRUE(solver.ApplySizes({1000, 8, 300}).Ok);
    test::SearchLevel(solver, board, kFewest);
    EXPECT_THROW((void)solver.FewestMoves(hooks), SolverFault);
    solver.BuildSolutions();
    EXPECT_EQ(solver.Position(1).Moves, 0);
    EXPECT_EQ(solver.FewestMoves(hooks), Result::GoOn);
    EXPECT_THROW((void)solver.Position(1), SolverFault);
    test::SearchLevel(solver, board, {.OptLevel = OptLevel::SomethingPlus});
    solver.BuildSolutions();
    EXPECT_EQ(solver.FewestMoves(hooks), Result::GoOn);
    EXPECT_EQ(solver.Counters().FewestPositions, 0);
    EXPECT_FALSE(solver.Counters().FewestMovesProved);
    EXPECT_EQ(solver.Position(1).Moves, 0);
}

// Every level whose fewest moves are known is settled again.
TEST(FewestMoves, ReachTheFewestMovesKnown) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({1200000, 8, 300}).Ok);
    int proved = 0;
    int rows = 0;
    for (const std::string& folder : test::LevelFolders()) {
        for (const test::MovesRow& row : test::ReadMoves(folder)) {
            if (!row.FewestMoves) continue;
            SCOPED_TRACE(row.Level);
            const Board board = test::BoardOfFile(folder + "/" + row.Level + ".xsb");
            if (!Prepare(solver, board)) continue;
            ++rows;
            SolverHooks hooks;
            const Result result = solver.FewestMoves(hooks);
            (void)CheckEnded(solver, board, result, *row.FewestMoves);
            proved += solver.Counters().FewestMovesProved ? 1 : 0;
        }
    }
    // At most one of them needs more positions.
    EXPECT_GE(proved, rows - 1);
    EXPECT_GT(rows, 12);
}

}  // namespace
