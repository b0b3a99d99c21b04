#include <gtest/gtest.h>

#include "output/animation.h"

namespace kavit {
namespace {

constexpr int kRight = 2;  // any button but the left one

// Row 2: the man, a box, floor, a goal; the man starts at cell 20.
Board Corridor() {
    Board board;
    for (std::size_t cell = 0; cell < 3 * Maxcol; ++cell) board.Cell[cell] = kWall;
    board.Cell[20] = kMan;
    board.Cell[21] = kBox;
    board.Cell[22] = kFloor;
    board.Cell[23] = kGoal;
    board.Cell[24] = kFloor;
    board.ManPos = 41;  // as after a shift
    board.MaxRow = 3;
    board.MaxCol = Maxcol;
    return board;
}

KeptSolution Solution(std::string letters, int moves) {
    KeptSolution solution;
    solution.SolString = std::move(letters);
    solution.SolMoves = moves;
    solution.SolPushes = 2;
    return solution;
}

// The window's side: does what it is told and keeps a protocol.
struct Player {
    Animation Anim;
    Board Level = Corridor();
    KeptSolution Kept = Solution("RRl", 3);
    int SeaPhase = 1;
    std::string Log;

    void Take(const AnimOrders& orders) {
        if (orders.RedrawBoard) Log += "redraw ";
        for (const CellPaint& paint : orders.Repaint) {
            Log += std::to_string(paint.Cell) + "=" + std::to_string(static_cast<int>(paint.What)) +
                   " ";
        }
        if (orders.ShowCounts) {
            Log += "counts " + std::to_string(Anim.AnimMoves()) + "," +
                   std::to_string(Anim.AnimPushes()) + " ";
        }
        if (!orders.RightLine.empty()) Log += "line '" + orders.RightLine + "' ";
        if (!orders.Warning.empty()) Log += "box '" + orders.Warning + "' ";
    }
    // 'L' and 'R' release a button, 't' ticks.
    std::string Do(const std::string& events) {
        Log.clear();
        for (const char event : events) {
            Take(event == 't'
                     ? Anim.Tick()
                     : Anim.MouseUp(event == 'L' ? kLeftButton : kRight, Level, Kept, SeaPhase));
        }
        return Log;
    }
    std::string State() const {
        return std::string(CaptionText(Anim.Caption())) + (Anim.AnimRunning() ? " running" : "");
    }
};

TEST(Animation, StateTable) {
    struct Case {
        const char* Events;
        const char* State;
        int Moves;
    };
    const Case cases[] = {
        {"", "ANIM", 0},
        {"L", "STOP running", 0},
        {"R", "STOP running", 0},
        {"Lt", "STOP running", 1},
        {"LtL", "STOP running", 1},    // the stop waits for the tick
        {"LtLt", "CONT< >REPEAT", 1},  // which performs no step
        {"LtRt", "CONT< >REPEAT", 1},
        {"LtLtt", "CONT< >REPEAT", 1},
        {"LtLtL", "STOP running", 1},  // left goes on
        {"LtLtLt", "STOP running", 2},
        {"LtLtR", "STOP running", 0},  // right starts again
        {"LtLtRt", "STOP running", 1},
        {"Lttt", "REPEAT", 3},
        {"Ltttt", "REPEAT", 3},
        {"LtttL", "STOP running", 0},
        {"LtttR", "STOP running", 0},
        {"LttLtLt", "REPEAT", 3},
    };
    for (const Case& c : cases) {
        Player player;
        player.Do(c.Events);
        EXPECT_EQ(player.State(), c.State) << c.Events;
        EXPECT_EQ(player.Anim.AnimMoves(), c.Moves) << c.Events;
    }
}

TEST(Animation, PaintsAtMostThreeCells) {
    Player player;
    EXPECT_EQ(player.Do("L"), "redraw ");
    EXPECT_EQ(player.Do("t"), "20=0 21=8 22=2 counts 1,1 ");
    EXPECT_EQ(player.Do("t"), "21=0 22=8 23=3 counts 2,2 ");
    EXPECT_EQ(player.Do("t"), "22=0 21=6 counts 3,2 ");
    // On goals, and in the other two directions.
    player.Level.Cell[20] = kManOnGoal;
    player.Level.Cell[39] = kGoal;
    player.Kept = Solution("durR", 4);
    EXPECT_EQ(player.Do("Lttt"),
              "redraw 20=1 39=5 counts 1,0 39=1 20=5 counts 2,0 20=1 21=8 counts 3,0 ");
}

TEST(Animation, NothingToShow) {
    for (const int moves : {0, 3}) {
        Player player;
        player.SeaPhase = moves == 3 ? 0 : 1;
        player.Kept.SolMoves = moves;
        EXPECT_EQ(player.Do("L"), "line 'Nothing to Show' ");
        EXPECT_EQ(player.State(), "ANIM");
    }
}

TEST(Animation, ABadLetterIsADisasterAtEveryTick) {
    Player player;
    player.Kept = Solution("Rx", 5);
    EXPECT_EQ(player.Do("Lttt"),
              "redraw 20=0 21=8 22=2 counts 1,1 box 'Solution disaster' box 'Solution disaster' ");
    EXPECT_EQ(player.State(), "STOP running");
    player.Do("Lt");
    EXPECT_EQ(player.State(), "CONT< >REPEAT");
}

TEST(Animation, LeavingTheBoardEndsTheReplay) {
    for (const char* letters : {"uu", "U"}) {
        Player player;
        player.Kept = Solution(letters, 2);
        const std::string log = player.Do("Ltt");
        EXPECT_NE(log.find("leaves the board"), std::string::npos) << log;
        EXPECT_EQ(player.State(), "REPEAT");
    }
}

TEST(Animation, TheEditorsCaptionIsNotTheReplays) {
    Player player;
    player.Do("Lt");
    player.Anim.SetCaption(AnimCaption::Done);
    EXPECT_EQ(player.Do("LRt"), "");
    EXPECT_EQ(player.State(), "DONE");
}

}  // namespace
}  // namespace kavit
