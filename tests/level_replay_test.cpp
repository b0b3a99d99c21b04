#include "level/replay.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/levels.h"

namespace kavit {
namespace {

using test::BoardOf;

struct ReplayCase {
    const char* Level;
    const char* Lurd;
    bool Solved;
    std::int64_t Moves;
    std::int64_t Pushes;
    std::size_t FailedAt;
    const char* What;  // "" when every letter can be played
};

TEST(Replay, PlaysOrSaysWhere) {
    const char* room = "######\n#@ $.#\n#    #\n######";
    const char* boxes = "#######\n#@$$. #\n#  .  #\n#######";
    const std::vector<ReplayCase> cases = {
        {room, "rR", true, 2, 1, 0, ""},
        {room, "drurdlruL", false, 3, 0, 3, "a box is in the way of a step"},
        {room, "", false, 0, 0, 0, ""},
        {room, "d", false, 1, 0, 0, ""},
        {room, "rRL", false, 2, 1, 2, "there is no box to push"},
        {room, "rRl", true, 3, 1, 0, ""},
        {room, "rRR", false, 2, 1, 2, "the box would be pushed into a wall"},
        {room, "rr", false, 1, 0, 1, "a box is in the way of a step"},
        {room, "rrr", false, 1, 0, 1, "a box is in the way of a step"},
        {room, "l", false, 0, 0, 0, "the man would walk into a wall"},
        {room, "L", false, 0, 0, 0, "the man would walk into a wall"},
        {room, "R", false, 0, 0, 0, "there is no box to push"},
        {room, "rx", false, 1, 0, 1, "'x' is no move letter"},
        {room, "\n", false, 0, 0, 0, "'\\x0a' is no move letter"},
        {boxes, "R", false, 0, 0, 0, "the box would be pushed into another box"},
        {"#+$*#", "", false, 0, 0, 0, ""},  // one box off goal
        {"#@*#", "", true, 0, 0, 0, ""},
        {"#+*.#", "R", true, 1, 1, 0, ""},
        {"# .#", "", false, 0, 0, 0, "there is no man"},
        {"#@@#", "", false, 0, 0, 0, "there is more than one man"},
    };
    for (const ReplayCase& c : cases) {
        SCOPED_TRACE(std::string(c.Level) + "\n" + c.Lurd);
        const ReplayOutcome outcome = Replay(BoardOf(c.Level), c.Lurd);
        EXPECT_EQ(outcome.What, c.What);
        EXPECT_EQ(outcome.FailedAt, c.FailedAt);
        EXPECT_EQ(outcome.Solved, c.Solved);
        EXPECT_EQ(outcome.Moves, c.Moves);
        EXPECT_EQ(outcome.Pushes, c.Pushes);
    }
}

// The edge of the board is a wall, on all four sides, for the man and for a box; and the row below
// is not the next column.
TEST(Replay, TheEdgeHolds) {
    struct Case {
        int Man;
        int Box;
        const char* Lurd;
        const char* What;
    };
    const std::vector<Case> cases = {
        {0, 40, "u", "the man would walk into a wall"},
        {19, 40, "l", "the man would walk into a wall"},
        {18, 40, "r", "the man would walk into a wall"},
        {322, 40, "d", "the man would walk into a wall"},
        {20, 19, "L", "the box would be pushed into a wall"},
        {36, 37, "R", "the box would be pushed into a wall"},
        {20, 1, "U", "the box would be pushed into a wall"},
        {300, 319, "D", "the box would be pushed into a wall"},
    };
    for (const Case& c : cases) {
        Board board;
        board.Cell[static_cast<std::size_t>(c.Box)] = kBox;
        board.Cell[static_cast<std::size_t>(c.Man)] = kMan;
        board.ManPos = 200;  // out of date, as after a shift
        EXPECT_EQ(Replay(board, c.Lurd).What, c.What) << c.Man << c.Lurd;
    }
}

}  // namespace
}  // namespace kavit
