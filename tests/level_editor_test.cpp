#include "level/editor.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "level/transform.h"
#include "support/levels.h"

namespace kavit {
namespace {

using Cells = std::vector<int>;

struct Drawing {
    Drawing() { Pen.Open(); }
    explicit Drawing(const std::string& text) : Drawing() { Level = test::BoardOf(text); }

    // Clicks one cell with a tool.
    EditReply Click(int tool, int index) {
        Pen.SelectTool(tool);
        const EditReply reply = Pen.CellDown(Level, index);
        Pen.CellUp();
        return reply;
    }
    int At(int index) const { return Level.Cell[static_cast<std::size_t>(index)]; }

    Board Level;
    Editor Pen;
};

TEST(Editor, PaintsWhereTheButtonGoesDown) {
    Drawing drawing;
    EXPECT_EQ(drawing.Pen.Tool(), kWall);
    for (int tool = 0; tool < kTools; ++tool) {
        EXPECT_EQ(drawing.Click(tool, 20 + tool).Cells.empty(), tool == kFloor) << tool;
        EXPECT_EQ(drawing.Click(tool, 20 + tool).Cells, Cells{}) << tool;  // it is that already
        EXPECT_EQ(drawing.At(20 + tool), tool);
    }
    drawing.Pen.SelectTool(10);
    drawing.Pen.SelectTool(-1);
    EXPECT_EQ(drawing.Pen.Tool(), 9);
    EXPECT_EQ(drawing.Pen.CellDown(drawing.Level, -1).Cells, Cells{});
    EXPECT_EQ(drawing.Pen.CellDown(drawing.Level, kCells).Cells, Cells{});
}

TEST(Editor, NothingWhileClosed) {
    Drawing drawing;
    drawing.Pen.CellDown(drawing.Level, 5);
    drawing.Pen.Close();
    const Board before = drawing.Level;
    EXPECT_EQ(drawing.Pen.Tool(), kNoTool);
    drawing.Pen.SelectTool(kBox);
    EXPECT_EQ(drawing.Pen.Tool(), kNoTool);
    EXPECT_EQ(drawing.Pen.CellDown(drawing.Level, 6).Cells, Cells{});
    EXPECT_EQ(drawing.Pen.CellMove(drawing.Level, 400, 0).Cells, Cells{});
    EXPECT_EQ(drawing.Level, before);
}

TEST(Editor, TheManIsSingle) {
    Drawing drawing("####\n#@.#\n####");
    const int man = 20;
    for (const int tool : {kFloor, kGoal, kBox, kBoxOnGoal, kWall}) {
        const EditReply reply = drawing.Click(tool, man);
        EXPECT_EQ(reply.Message, "You can't erase the Man");
        EXPECT_EQ(reply.Cells, Cells{});
        EXPECT_EQ(drawing.At(man), kMan);
    }
    EXPECT_EQ(drawing.Click(kManOnGoal, man).Cells, Cells{man});  // on his own square
    EXPECT_EQ(drawing.Level.ManPos, man);
    EXPECT_EQ(drawing.Click(kMan, 40).Cells, (Cells{40, man}));
    EXPECT_EQ(drawing.At(man), kGoal);  // a goal again
    EXPECT_EQ(drawing.Click(kManOnGoal, 41).Cells, (Cells{41, 40}));
    EXPECT_EQ(drawing.At(40), kFloor);
    EXPECT_EQ(drawing.Level.ManPos, 41);
    // A further kind of man is not lifted: only the two that the rules know are.
    EXPECT_EQ(drawing.Click(7, 60).Cells, (Cells{60, 41}));
    EXPECT_EQ(drawing.Click(kMan, 61).Cells, Cells{61});
    EXPECT_EQ(drawing.At(60), 7);
}

// ManPos does not follow a shift, so that only a man on his old place would be lifted.
TEST(Editor, AfterAShiftASecondManCanStay) {
    Drawing drawing("####\n#@ #\n####");
    EXPECT_TRUE(ShiftBoard(drawing.Level, 1).Changed);
    EXPECT_EQ(drawing.Click(kMan, 40).Cells, Cells{40});
    EXPECT_EQ(drawing.At(39), kMan);
}

TEST(Editor, DragsUntilTheButtonIsReleased) {
    Drawing drawing;
    Editor& pen = drawing.Pen;
    Board& board = drawing.Level;
    const int start = 5 * Maxcol + 5;
    pen.CellDown(board, start);
    struct Step {
        int X;
        int Y;
        int Index;
    };
    const std::vector<Step> steps = {
        {330, 0, start + 1},           {659, 329, start + 1},
        {660, 330, start + 21},        {-1, 0, start - 1},
        {0, -1, start - 19},           {-329, -329, start - 20},
        {-330, 0, start - 2},  // the cell's very edge counts as the next one
        {0, 100000, 16 * 19 + 5},      {0, -100000, 5},
        {100000, 0, 5 * 19 + 18},      {-100000, 0, 5 * 19},
        {2147483647, 2147483647, 322}, {-2147483647 - 1, -2147483647 - 1, 0},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(std::to_string(step.X) + ", " + std::to_string(step.Y));
        pen.CellMove(board, step.X, step.Y);
        EXPECT_EQ(drawing.At(step.Index), kWall);
        EXPECT_EQ(pen.CellMove(board, step.X, step.Y).Cells, Cells{});
    }
    int walls = 0;
    for (const std::uint8_t code : board.Cell) walls += code == kWall ? 1 : 0;
    EXPECT_EQ(walls, 13);  // the start and every step, of which two meet
    pen.CellUp();
    EXPECT_EQ(pen.CellMove(board, 990, 990).Cells, Cells{});
}

TEST(Editor, DragsAroundTheMan) {
    Drawing drawing("@\n####");
    drawing.Level.Cell[1] = kMan;
    drawing.Level.ManPos = 1;
    drawing.Pen.SelectTool(kBox);
    drawing.Pen.CellDown(drawing.Level, 0);
    const EditReply over = drawing.Pen.CellMove(drawing.Level, 330, 0);
    EXPECT_EQ(over.Message, "Can't drag over the Man");
    EXPECT_EQ(over.Cells, Cells{});
    EXPECT_EQ(drawing.At(1), kMan);
    EXPECT_EQ(drawing.Pen.CellMove(drawing.Level, 660, 0).Cells, Cells{2});
    // A drag does not begin on the man, and no man is dragged.
    drawing.Pen.CellUp();
    drawing.Pen.CellDown(drawing.Level, 1);
    EXPECT_EQ(drawing.Pen.CellMove(drawing.Level, 0, 990).Cells, Cells{});
    drawing.Pen.SelectTool(kMan);
    drawing.Pen.CellDown(drawing.Level, 100);
    EXPECT_EQ(drawing.Pen.CellMove(drawing.Level, 330, 0).Cells, Cells{});
}

TEST(Editor, TheExtentGrowsOnly) {
    Drawing drawing("###\n# #\n###");
    const auto extent = [&] {
        const Board& b = drawing.Level;
        return std::vector<int>{b.MinRow, b.MinCol, b.MaxRow, b.MaxCol};
    };
    drawing.Click(kFloor, 322);
    EXPECT_EQ(extent(), (std::vector<int>{1, 1, 3, 3}));
    drawing.Click(kGoal, 4 * Maxcol + 6);
    EXPECT_EQ(extent(), (std::vector<int>{1, 1, 5, 7}));
    drawing.Click(kFloor, 4 * Maxcol + 6);
    EXPECT_EQ(extent(), (std::vector<int>{1, 1, 5, 7}));
    drawing.Pen.SelectTool(kBox);
    drawing.Pen.CellDown(drawing.Level, 0);
    drawing.Pen.CellMove(drawing.Level, 100000, 100000);
    EXPECT_EQ(extent(), (std::vector<int>{1, 1, 17, 19}));
}

}  // namespace
}  // namespace kavit
