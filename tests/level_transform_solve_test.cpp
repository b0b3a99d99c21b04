#include <gtest/gtest.h>

#include <string>

#include "level/level_reader.h"
#include "level/replay.h"
#include "level/transform.h"
#include "solver/solver.h"

namespace kavit {
namespace {

// The fewest pushes that solve the board, by a solution that was played through; -1 for none.
int FewestPushes(const Board& board) {
    Solver solver;
    EXPECT_TRUE(solver.ApplySizes({20000, 4, 60}).Ok);
    SolverHooks hooks;
    if (solver.AnalyseBoard(board, {}) != Result::Ok) return -1;
    if (solver.Search(hooks) != Result::Ok) return -1;
    solver.BuildSolutions();
    const ReplayOutcome replay = Replay(board, solver.Kept(1).SolString);
    EXPECT_TRUE(replay.Solved);
    return static_cast<int>(replay.Pushes);
}

// Wherever a level stands and however it is turned, it takes the same pushes.
TEST(Transform, ALevelStaysAsHardAsItWas) {
    const std::string level =
        "#######\n"
        "#  #  ###\n"
        "# $ $ ..#\n"
        "#  ## # #\n"
        "##  $@ .#\n"
        " #  ## ##\n"
        " #     #\n"
        " #######\n";
    Board board;
    ASSERT_TRUE(ImportLevelText(level, board, {}).Loaded());
    const int pushes = FewestPushes(board);
    ASSERT_EQ(pushes, 12);
    for (const int shift : {4, 1, 2, 4, 3, 0}) {
        ShiftBoard(board, shift);
        EXPECT_EQ(FewestPushes(board), pushes) << "shift " << shift;
    }
    for (const int button : {0, 1, 2, 3, 4, 0, 0, 2, 1}) {
        ASSERT_TRUE(MirrorRotate(board, button).Changed);
        EXPECT_EQ(FewestPushes(board), pushes) << "button " << button;
    }
}

}  // namespace
}  // namespace kavit
