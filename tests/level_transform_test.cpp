#include "level/transform.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "support/levels.h"

namespace kavit {
namespace {

using std::string;
using test::BoardOf;

// The rectangle of the occupied squares, rows split by "|".
string Shape(Board board) {
    RecomputeExtent(board);
    string shape;
    for (int row = board.MinRow; row <= board.MaxRow; ++row) {
        for (int col = board.MinCol; col <= board.MaxCol; ++col) {
            shape += CellToChar(board.Cell[static_cast<std::size_t>((row - 1) * Maxcol + col - 1)]);
        }
        shape += '|';
    }
    return shape;
}

// Moved down and right, the man still known.
Board Shifted(Board board, int rows, int cols) {
    for (int i = 0; i < rows; ++i) ShiftBoard(board, 1);
    for (int i = 0; i < cols; ++i) ShiftBoard(board, 2);
    board.ManPos = static_cast<std::int16_t>(board.ManPos + rows * Maxcol + cols);
    return board;
}

int IndexOf(int row, int col) {
    return (row - 1) * Maxcol + col - 1;
}

// A level of this size at the top left, with something in each corner and one man, who is known.
Board RandomBoard(std::mt19937& random, int height, int width) {
    const auto upTo = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    const auto cell = [](Board& board, int row, int col) -> std::uint8_t& {
        return board.Cell[static_cast<std::size_t>(IndexOf(row, col))];
    };
    Board board;
    for (int row = 1; row <= height; ++row) {
        for (int col = 1; col <= width; ++col) {
            const bool corner = (row == 1 || row == height) && (col == 1 || col == width);
            cell(board, row, col) = corner ? kWall : static_cast<std::uint8_t>(upTo(5));
        }
    }
    const int row = 1 + upTo(height);
    const int col = 1 + upTo(width);
    cell(board, row, col) = kMan;
    board.ManPos = static_cast<std::int16_t>(IndexOf(row, col));
    return board;
}

std::array<int, 4> Extent(const Board& board) {
    return {board.MinRow, board.MinCol, board.MaxRow, board.MaxCol};
}

TEST(Transform, RecomputeExtent) {
    Board board;
    board.MinRow = board.MaxRow = 9;
    RecomputeExtent(board);
    EXPECT_EQ(Extent(board), (std::array{32767, 32767, 0, 0}));
    board.Cell[static_cast<std::size_t>(IndexOf(3, 19))] = kGoal;
    board.Cell[static_cast<std::size_t>(IndexOf(17, 2))] = kMan;
    RecomputeExtent(board);
    EXPECT_EQ(Extent(board), (std::array{3, 2, 17, 19}));
}

TEST(Transform, ShiftsStopAtTheEdge) {
    const string text = "###\n#@ \n #$";
    struct Case {
        int Button;
        int Steps;  // that the level can go from row 3, column 5
        int Row;    // where its corner is then
        int Col;
    };
    for (const Case& c : {Case{0, 4, 3, 1}, Case{1, 12, 15, 5}, Case{2, 12, 3, 17},
                          Case{3, 2, 1, 5}, Case{4, 1, 8, 9}}) {
        SCOPED_TRACE(c.Button);
        Board board = Shifted(BoardOf(text), 2, 4);
        const int man = board.ManPos;
        for (int i = 0; i < c.Steps; ++i) EXPECT_TRUE(ShiftBoard(board, c.Button));
        const Board before = board;
        EXPECT_FALSE(ShiftBoard(board, c.Button));
        EXPECT_EQ(board, before);
        EXPECT_EQ(Shape(board), "###|#@ | #$|");
        EXPECT_EQ(Extent(board), (std::array{c.Row, c.Col, c.Row + 2, c.Col + 2}));
        EXPECT_EQ(board.ManPos, man);  // it does not follow
    }
}

// Every size, from every corner: the middle, in whole shape. Halves are dropped on the way, so that
// an odd leftover stays on the side that the level comes from.
TEST(Transform, CentresEverySize) {
    std::mt19937 random(5);
    for (int height = 1; height <= Maxrow; ++height) {
        for (int width = 1; width <= Maxcol; ++width) {
            const Board level = RandomBoard(random, height, width);
            const int freeRows = Maxrow - height;
            const int freeCols = Maxcol - width;
            for (int corner = 0; corner < 4; ++corner) {
                const bool low = (corner & 1) != 0;
                const bool right = (corner & 2) != 0;
                Board board = Shifted(level, low ? freeRows : 0, right ? freeCols : 0);
                ShiftBoard(board, 4);
                ASSERT_EQ(Shape(board), Shape(level)) << height << " by " << width;
                EXPECT_EQ(board.MinRow, 1 + (freeRows + (low ? 1 : 0)) / 2);
                EXPECT_EQ(board.MinCol, 1 + (freeCols + (right ? 1 : 0)) / 2);
                EXPECT_FALSE(ShiftBoard(board, 4));
            }
        }
    }
}

TEST(Transform, EachButton) {
    const Board board = Shifted(BoardOf("####\n#@.#\n##$#"), 2, 3);
    const std::vector<string> shapes = {"###|#@#|$.#|###|", "####|#.@#|#$##|", "###|#.$|#@#|###|",
                                        "##$#|#@.#|####|", "#$##|#.@#|####|"};
    const std::vector<int> men = {IndexOf(4, 5), IndexOf(4, 6), IndexOf(5, 5), IndexOf(4, 5),
                                  IndexOf(4, 6)};
    for (int button = 0; button < 5; ++button) {
        SCOPED_TRACE(button);
        Board turned = board;
        EXPECT_TRUE(MirrorRotate(turned, button));
        EXPECT_EQ(Shape(turned), shapes[static_cast<std::size_t>(button)]);
        EXPECT_EQ(turned.ManPos, men[static_cast<std::size_t>(button)]);
        EXPECT_EQ(turned.MinRow, 3);
        EXPECT_EQ(turned.MinCol, 4);
    }
    Board empty;
    EXPECT_TRUE(MirrorRotate(empty, 0));
    EXPECT_FALSE(ShiftBoard(empty, 4));
    EXPECT_EQ(empty, Board{});
    // Without a man, and with a button that there is not.
    Board noMan = BoardOf("####\n#.##");
    const Board before = noMan;
    for (const int button : {-1, 5}) {
        EXPECT_FALSE(ShiftBoard(noMan, button));
        EXPECT_TRUE(MirrorRotate(noMan, button));
        EXPECT_EQ(noMan.Cell, before.Cell);
    }
    EXPECT_TRUE(MirrorRotate(noMan, 1));
    EXPECT_EQ(Shape(noMan), "####|##.#|");
    EXPECT_EQ(noMan.ManPos, before.ManPos);
}

TEST(Transform, ATurnStaysOnTheBoard) {
    const string flat = "#" + string(15, '$') + "#\n#@\n";  // 2 by 17
    for (const int button : {0, 2}) {
        Board board = Shifted(BoardOf(flat), 9, 1);
        EXPECT_TRUE(MirrorRotate(board, button));
        EXPECT_EQ(board.MinRow, 1);  // ends in row 17
        EXPECT_EQ(board.MaxRow, 17);
        EXPECT_EQ(board.MinCol, 2);
        Board high = Shifted(board, 0, 15);  // now 17 by 2, in columns 17 and 18
        EXPECT_TRUE(MirrorRotate(high, button));
        EXPECT_EQ(high.MinCol, 3);  // ends in column 19
        EXPECT_EQ(high.MaxCol, 19);
    }
}

TEST(Transform, TooWideIsRefused) {
    const Board board = BoardOf("#" + string(16, ' ') + "#\n#@");
    for (int button = 0; button < 5; ++button) {
        Board turned = board;
        EXPECT_FALSE(MirrorRotate(turned, button));
        EXPECT_EQ(turned, board);
    }
}

// Four turns, two mirrors, a turn and its opposite, and the half turn in three ways, on boards of
// every size that can be turned, anywhere on the board.
TEST(Transform, TheLawsOfTurning) {
    const std::vector<std::vector<int>> identities = {{0, 0, 0, 0}, {2, 2, 2, 2}, {1, 1}, {3, 3},
                                                      {4, 4},       {0, 2},       {2, 0}, {0, 0, 4},
                                                      {1, 3, 4},    {0, 1, 0, 1}};
    std::mt19937 random(7);
    for (int height = 1; height <= Maxrow; ++height) {
        for (int width = 1; width <= Maxrow; ++width) {
            const Board level = RandomBoard(random, height, width);
            const Board start = Shifted(
                level, static_cast<int>(random() % static_cast<unsigned>(Maxrow + 1 - height)),
                static_cast<int>(random() % static_cast<unsigned>(Maxcol + 1 - width)));
            for (const std::vector<int>& buttons : identities) {
                Board board = start;
                bool turns = false;
                for (const int button : buttons) {
                    EXPECT_TRUE(MirrorRotate(board, button));
                    turns = turns || button == 0 || button == 2;
                }
                ASSERT_EQ(Shape(board), Shape(start)) << buttons[0] << buttons[1];
                const auto manPos = static_cast<std::size_t>(board.ManPos);
                ASSERT_EQ(board.Cell[manPos], kMan);
                if (turns) continue;  // a turn may have to move the level away from the edge
                ASSERT_EQ(board.Cell, start.Cell);
                ASSERT_EQ(board.ManPos, start.ManPos);
            }
        }
    }
}

// The same level wherever it lies and whichever way it is turned, until a square is painted.
TEST(Transform, KnowsALevelAgain) {
    std::mt19937 random(11);
    for (int i = 0; i < 50; ++i) {
        const Board level = RandomBoard(random, 2 + i % 8, 3 + i % 7);
        Board board = level;
        for (int button = 0; button < 5; ++button) {
            EXPECT_TRUE(MirrorRotate(board, button));
            ShiftBoard(board, static_cast<int>(random() % 5));
            EXPECT_TRUE(SameLevel(board, level));
        }
        auto& cell = board.Cell[static_cast<std::size_t>(board.ManPos)];
        cell = kManOnGoal;
        EXPECT_FALSE(SameLevel(board, level));
        EXPECT_FALSE(SameLevel(level, board));
    }
    EXPECT_TRUE(SameLevel(Board(), Board()));
    EXPECT_FALSE(SameLevel(Board(), BoardOf("#")));
    EXPECT_FALSE(SameLevel(BoardOf("##"), BoardOf("#")));
}

}  // namespace
}  // namespace kavit
