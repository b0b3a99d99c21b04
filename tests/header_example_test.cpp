#include <gtest/gtest.h>

#include <string>

#include "level/board.h"
#include "level/level_reader.h"

// The example in the comment of solver/solver.h, made into a function when the build is configured.
void HeaderExample(const kavit::Board& board);

TEST(HeaderExample, SolvesAsItSays) {
    kavit::Board board;
    ASSERT_TRUE(kavit::ImportLevelText("#####\n#@$.#\n#####", board, {}).Loaded());
    ::testing::internal::CaptureStdout();
    HeaderExample(board);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "R\n");
}
