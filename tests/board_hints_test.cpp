#include "solver/board_hints.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "solver/board/board_arrays.h"
#include "solver/board/grid.h"
#include "support/levels.h"

namespace kavit {
namespace {

TEST(BoardHints, DeadSquaresAndStuckBoxes) {
    using Cells = std::vector<int>;
    const struct {
        const char* Level;
        Cells Dead;
        Cells Stuck;
    } cases[] = {
        {"#######\n#@ $ .#\n#     #\n#######", {20, 39, 40, 41, 42, 43}, {}},
        {"######\n#$ @.#\n######", {20}, {20}},
        {"#####\n#*@ #\n#####", {21}, {}},       // solved, and stuck on a goal
        {"######\n#$*@.#\n######", {20}, {20}},  // as many boxes as goals do not matter
        {"######\n#@$  #\n# $$ #\n#  $.#\n#   .#\n######",
         {20, 21, 22, 23, 39, 58, 77},
         {21}},  // only dead squares beside it
        {"######\n#@   #\n# $$ #\n# $$.#\n#   .#\n######",
         {20, 21, 22, 23, 39, 58, 77},
         {40, 41, 59, 60}},
        {"######\n#@   #\n# $* #\n# $$.#\n#   .#\n######",  // one of four is on a goal
         {20, 21, 22, 23, 39, 58, 77},
         {40, 59, 60}},
        {"#####\n#@$  \n#####", {}, {}},
        {"####\n#$.#\n####", {}, {}},
        {"#####\n#@$@#\n#####", {}, {}},
        {"########\n#@ .#$ #\n########", {20}, {}},  // what the man can't reach says nothing
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.Level);
        const BoardHints hints = HintsOf(test::BoardOf(c.Level));
        EXPECT_EQ(hints.DeadSquares, c.Dead);
        EXPECT_EQ(hints.StuckBoxes, c.Stuck);
    }
}

// A larger shape than needed costs a search time, and nothing else.
TEST(Grid, HasTheSmallestShapeThatHoldsTheInside) {
    using Shape = Grid::Shape;
    const std::vector<std::tuple<std::size_t, int, Shape, bool>> cases = {
        {7, 15, Shape::kRows16x8, true},   {8, 8, Shape::kRows8x16, false},
        {15, 8, Shape::kRows8x16, false},  {15, 9, Shape::kRows16x16, false},
        {8, 9, Shape::kRows16x16, false},  {16, 2, Shape::kRows16x32, false},
        {8, 13, Shape::kRows16x16, false}, {9, 13, Shape::kRows16x16, true}};
    for (const auto& [cols, rows, shape, compact] : cases) {
        std::string level =
            std::string(cols + 2, '#') + "\n#@$." + std::string(cols - 3, ' ') + "#\n";
        for (int row = 1; row < rows; ++row) level += "#" + std::string(cols, ' ') + "#\n";
        BoardArrays arrays;
        ASSERT_EQ(AnalyseBoard(test::BoardOf(level + std::string(cols + 2, '#')), 8, arrays),
                  Result::Ok);
        EXPECT_EQ(Grid(arrays).BoardShape, shape) << cols << " " << rows;
        EXPECT_EQ(arrays.SqCompact, compact) << cols << " " << rows;
        EXPECT_EQ(arrays.KeyCell(arrays.KeyByte(arrays.LastIn)), arrays.LastIn);
    }
}

}  // namespace
}  // namespace kavit
