#include "level/editor.h"

#include <gtest/gtest.h>

#include "support/levels.h"

namespace kavit {
namespace {

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

}  // namespace
}  // namespace kavit
