#include "solver/board_hints.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

}  // namespace
}  // namespace kavit
