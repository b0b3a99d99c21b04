#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>
#include <vector>

#include "level/editor.h"
#include "level/editor_shapes.h"
#include "level/history.h"
#include "level/outside.h"
#include "level/turning_point.h"
#include "support/levels.h"

namespace kavit {
namespace {

using test::BoardOf;

TEST(Editor, PaintsASquare) {
    const struct {
        int Index, Code;
        bool Painted;
        int At20, At22, ManPos;  // afterwards: the man's square, a goal's, ManPos
    } rows[] = {
        {60, kWall, true, kMan, kGoal, 20},
        {22, kBoxOnGoal, true, kMan, kBoxOnGoal, 20},
        {20, kFloor, false, kMan, kGoal, 20},  // only another man takes his place
        {20, kGoal, false, kMan, kGoal, 20},
        {20, kWall, false, kMan, kGoal, 20},
        {20, kManOnGoal, true, kManOnGoal, kGoal, 20},
        {60, kMan, true, kFloor, kGoal, 60},
        {22, kMan, true, kFloor, kMan, 22},
        {0, kManOnGoal, true, kFloor, kGoal, 0},
        {-1, kWall, false, kMan, kGoal, 20},
        {kCells, kWall, false, kMan, kGoal, 20},
        {kCells - 1, kBox, true, kMan, kGoal, 20},
    };
    for (const auto& row : rows) {
        Board board = test::BoardOf("####\n#@ .\n####");
        SCOPED_TRACE(testing::Message() << row.Index << " " << row.Code);
        EXPECT_EQ(PaintCell(board, row.Index, static_cast<std::uint8_t>(row.Code)), row.Painted);
        if (row.Painted) {
            EXPECT_EQ(board.Cell[static_cast<std::size_t>(row.Index)], row.Code);
        }
        EXPECT_EQ(board.Cell[20], row.At20);
        EXPECT_EQ(board.Cell[22], row.At22);
        EXPECT_EQ(board.ManPos, row.ManPos);
    }
}

TEST(Editor, EveryOtherManLeavesTheBoard) {
    Board board = test::BoardOf("####\n#@ #\n####");
    board.Cell[60] = kManOnGoal;
    board.Cell[61] = 7;
    EXPECT_TRUE(PaintCell(board, 100, kMan));
    EXPECT_EQ(board.Cell[20], kFloor);
    EXPECT_EQ(board.Cell[60], kGoal);
    EXPECT_EQ(board.Cell[61], kFloor);
}

TEST(Editor, TheExtentGrowsOnly) {
    Board board = test::BoardOf("###\n# #\n###");
    const auto extent = [&] {
        return std::vector<int>{board.MinRow, board.MinCol, board.MaxRow, board.MaxCol};
    };
    const struct {
        int Index, Code;
        std::vector<int> Extent;
    } rows[] = {
        {322, kFloor, {1, 1, 3, 3}},
        {4 * Maxcol + 6, kGoal, {1, 1, 5, 7}},
        {4 * Maxcol + 6, kFloor, {1, 1, 5, 7}},
        {322, kBox, {1, 1, 17, 19}},
    };
    for (const auto& row : rows) {
        EXPECT_TRUE(PaintCell(board, row.Index, static_cast<std::uint8_t>(row.Code)));
        EXPECT_EQ(extent(), row.Extent);
    }
}

// A shape from one cell to another, or a fill where To is -1, and what the board shows then.
TEST(EditorShapes, OutlinesAndFills) {
    const char* room = "#####\n#@ .#\n# $ #\n#####";
    const struct {
        const char* Level;
        int From;
        int To;
        int Tool;
        bool Drawn;
        const char* Rows;
    } cases[] = {
        {"", 0, 40, kWall, true, "###|# #|###|"},
        {"", 40, 0, kWall, true, "###|# #|###|"},
        {"", 2, 38, kWall, true, "###|# #|###|"},
        {"", 21, 24, kBox, true, "      |  $$$$|"},
        {"", 0, 323, kWall, false, ""},
        {"", -1, 20, kWall, false, ""},
        {"", 0, 40, kMan, false, ""},
        {"", 0, 40, -1, false, ""},
        {room, 20, 41, kWall, false, "#####|#@###|#####|#####|"},
        {room, 1, 21, kBox, false, "#$$##|#@$.#|# $ #|#####|"},
        {room, 0, 4, kFloor, true, "     |#@ .#|# $ #|#####|"},
        {room, 21, -1, kWall, true, "#####|#@#.#|# $ #|#####|"},
        {room, 39, -1, kWall, true, "#####|#@ .#|##$ #|#####|"},
        {room, 22, -1, kBoxOnGoal, true, "#####|#@ *#|# $ #|#####|"},
        {room, 0, -1, kFloor, true, "     | @ . |  $  |     |"},
        {room, 20, -1, kWall, false, "#####|#@ .#|# $ #|#####|"},
        {room, 0, -1, kWall, false, "#####|#@ .#|# $ #|#####|"},
        {room, 323, -1, kWall, false, "#####|#@ .#|# $ #|#####|"},
        {"####\n#  #\n#  #\n####", 20, -1, kGoal, true, "####|#..#|#..#|####|"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.Level) + " " + std::to_string(c.From) + " " +
                     std::to_string(c.To));
        Board board = c.Level[0] == '\0' ? Board{} : BoardOf(c.Level);
        EXPECT_EQ(c.To == -1 && c.From >= 0 ? FillArea(board, c.From, c.Tool)
                                            : DrawRectangle(board, c.From, c.To, c.Tool),
                  c.Drawn);
        EXPECT_EQ(BoardText(board, "|"), c.Rows);
    }
    // The whole grid fills to its edges, and no further.
    Board board;
    EXPECT_TRUE(FillArea(board, 100, kWall));
    EXPECT_EQ(std::count(board.Cell.begin(), board.Cell.end(), kWall), kCells);
    EXPECT_EQ(board.MaxRow, Maxrow);
    EXPECT_EQ(board.MaxCol, Maxcol);
}

TEST(OutsideFloor, IsWhatNoWallEncloses) {
    const struct {
        const char* Level;
        const char* Outside;  // "o" where it is
    } cases[] = {
        {" ####\n #@ #\n## ##\n# $#\n####", "o####|o#@ #|## ##|# $#o|####o|"},
        {"####\n#@  \n####", "####|#@  |####|"},  // open: nobody knows
        {"####\n#  #\n####", "####|#  #|####|"},
        {"####   ###\n#@ # $ # #\n####   ###", "####ooo###|#@ #o$o# #|####ooo###|"},
        {"######\n#@## #\n#### #", "######|#@##o#|####o#|"},
    };
    for (const auto& c : cases) {
        const Board board = BoardOf(c.Level);
        std::string rows = BoardText(board, "|");
        for (const int cell : OutsideFloor(board)) {
            const int row = cell / Maxcol;
            const int col = cell % Maxcol;
            if (row < board.MaxRow && col < board.MaxCol)
                rows[static_cast<std::size_t>(row * (board.MaxCol + 1) + col)] = 'o';
        }
        EXPECT_EQ(rows, c.Outside);
    }
}

TEST(History, UndoesAndRedoes) {
    // A digit notes that state, '<' undoes, '>' redoes.
    const struct {
        const char* Words;
        int Now;
        bool Undo;
        bool Redo;
    } cases[] = {
        {"", 0, false, false},      {"<>", 0, false, false},    {"1", 1, true, false},
        {"12<", 1, true, true},     {"12<<", 0, false, true},   {"12<<<", 0, false, true},
        {"12<<>", 1, true, true},   {"12<<>>", 2, true, false}, {"12<3", 3, true, false},
        {"12<3<<", 0, false, true}, {"11<", 0, false, true},    {"12<1>", 2, true, false},
        {"0", 0, false, false},
    };
    for (const auto& c : cases) {
        History<int> history(0);
        for (const char* word = c.Words; *word != '\0'; ++word) {
            const int now = *word == '<'   ? history.Undo()
                            : *word == '>' ? history.Redo()
                                           : (history.Note(*word - '0'), history.Now());
            EXPECT_EQ(now, history.Now());
        }
        EXPECT_EQ(history.Now(), c.Now) << c.Words;
        EXPECT_EQ(history.CanUndo(), c.Undo) << c.Words;
        EXPECT_EQ(history.CanRedo(), c.Redo) << c.Words;
    }
}

using Solvable = TurningPoint::Solvable;

// Asks until there is no question left; positions of `unknown` are never answered.
TurningPoint Ask(std::int64_t last, std::int64_t lastYes, const std::vector<std::int64_t>& unknown,
                 int& asked) {
    TurningPoint turn(last);
    asked = 0;
    while (const auto k = turn.Next()) {
        EXPECT_TRUE(*k > turn.LastYes() && *k < turn.FirstNo());
        ++asked;
        const bool known = std::count(unknown.begin(), unknown.end(), *k) == 0;
        turn.Answer(*k, !known ? Solvable::Unknown : *k <= lastYes ? Solvable::Yes : Solvable::No);
        if (asked > 100) break;
    }
    return turn;
}

TEST(TurningPoint, HalvesExactly) {
    for (std::int64_t last = 0; last <= 33; ++last) {
        for (std::int64_t lastYes = -1; lastYes < last; ++lastYes) {
            SCOPED_TRACE(std::to_string(lastYes) + " of " + std::to_string(last));
            int asked = 0;
            const TurningPoint turn = Ask(last, lastYes, {}, asked);
            EXPECT_TRUE(turn.Exact());
            EXPECT_EQ(turn.LastYes(), lastYes);
            EXPECT_EQ(turn.FirstNo(), lastYes + 1);
            EXPECT_LE(asked, static_cast<int>(std::bit_width(static_cast<unsigned>(last + 1))));
        }
    }
}

TEST(TurningPoint, GoesAroundTheUnknown) {
    const struct {
        std::int64_t Last;
        std::int64_t Yes;
        std::vector<std::int64_t> Unknown;
        std::int64_t LastYes;
        std::int64_t FirstNo;
    } cases[] = {
        {15, 3, {7}, 3, 4},  // a question that had no answer is passed by the others
        {15, 10, {7}, 10, 11},
        {15, 6, {7}, 6, 8},  // unless the turn is there
        {15, 7, {7}, 6, 8},
        {15, 7, {6, 7}, 5, 8},
        {15, 7, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, -1, 15},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.Yes));
        int asked = 0;
        const TurningPoint turn = Ask(c.Last, c.Yes, c.Unknown, asked);
        EXPECT_EQ(turn.LastYes(), c.LastYes);
        EXPECT_EQ(turn.FirstNo(), c.FirstNo);
        EXPECT_LE(asked, 9);
    }
    TurningPoint turn(8, 2);
    for (int i = 0; i < 2; ++i) turn.Answer(*turn.Next(), Solvable::Unknown);
    EXPECT_FALSE(turn.Next());  // out of patience
    turn.Answer(20, Solvable::No);
    turn.Answer(-5, Solvable::Yes);
    EXPECT_EQ(turn.FirstNo(), 8);
    EXPECT_EQ(turn.LastYes(), -1);
}

}  // namespace
}  // namespace kavit
