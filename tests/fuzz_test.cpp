// A short run of the fuzzer, its shrinker, and cases that failed once.

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

#include "fuzz/fuzz_check.h"
#include "fuzz/shrink.h"

namespace kavit::test {
namespace {

TEST(Fuzz, ShortRunFindsNothing) {
    FuzzTally tally;
    for (std::uint64_t seed = 1; seed <= 400; ++seed) {
        const FuzzCase fuzzCase = RandomCase(seed);
        const FuzzFailure failure = CheckCase(fuzzCase, tally);
        ASSERT_FALSE(failure.Failed()) << "seed " << seed << ": " << failure.What << "\n"
                                       << failure.Detail << "\n"
                                       << ReplayLine(fuzzCase);
    }
    std::cout << tally.Text() << "\n";
    // The cases are worth asking about.
    EXPECT_GE(tally.Solvable, 80) << tally.Text();
    EXPECT_GE(tally.Unsolvable, 30) << tally.Text();
    EXPECT_GE(tally.Proved, 20) << tally.Text();
    EXPECT_GE(tally.FewestProved, 20) << tally.Text();
    EXPECT_GE(tally.FewestBetter, 2) << tally.Text();
    EXPECT_GE(tally.FewestStopped, 1) << tally.Text();
    EXPECT_GE(tally.FewestFull, 1) << tally.Text();
    for (const int result : {0, 1, 2, 3, 4, 8, 9, 14})
        EXPECT_GT(tally.Results[result], 0) << result << " of " << tally.Text();
}

TEST(Fuzz, WhatFailedOnceHolds) {
    const char* const lines[] = {
        // Stopped before its start was stored, with an earlier level's row in the store.
        "10,3,3,0,0,0,0,0,#######/#-----#/##----#/##---##/#---.-#/#-$---#/#-----#/#-#---#/#@$--##"
        "/#---.-#/#-#---#/#######;"
        "10,3,3,0,0,1,-1,0,#######/#-----#/##----#/##---##/#---.-#/#-$---#/#-----#/#-#---#/#@$--#"
        "#/#---.-#/#-#---#/#######",
    };
    for (const char* line : lines) {
        FuzzTally tally;
        const FuzzFailure failure = CheckCase(ParseReplayLine(line), tally);
        EXPECT_FALSE(failure.Failed()) << failure.What << "\n" << failure.Detail << "\n" << line;
    }
}

TEST(Fuzz, ReplayLineKeepsTheCase) {
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        const FuzzCase fuzzCase = RandomCase(seed);
        const FuzzCase back = ParseReplayLine(ReplayLine(fuzzCase));
        ASSERT_EQ(back.Solves.size(), fuzzCase.Solves.size());
        for (std::size_t i = 0; i < back.Solves.size(); ++i) {
            EXPECT_EQ(back.Solves[i].Ask.Level, fuzzCase.Solves[i].Ask.Level) << seed;
            EXPECT_EQ(back.Solves[i].Ask.Text(), fuzzCase.Solves[i].Ask.Text()) << seed;
        }
    }
    EXPECT_THROW(ParseReplayLine(""), std::runtime_error);
    EXPECT_THROW(ParseReplayLine("10,8,1,0,0,0,0,#"), std::runtime_error);
    EXPECT_THROW(ParseReplayLine("10,8,1,0,0,0,0,0,#x#"), std::runtime_error);
}

// As if every case failed in which two boxes stand side by side, with one of them on a goal.
TEST(Fuzz, ShrinkerKeepsWhatMatters) {
    const auto fails = [](const FuzzCase& fuzzCase) {
        return std::any_of(
            fuzzCase.Solves.begin(), fuzzCase.Solves.end(), [](const FuzzSolve& solve) {
                const auto& cell = solve.Ask.Level.Cell;
                for (std::size_t c = 0; c + 1 < kCells; ++c)
                    if (cell[c] == kBox && cell[c + 1] == kBoxOnGoal && solve.Ask.HashCase == 2)
                        return true;
                return false;
            });
    };
    int shrunk = 0;
    for (std::uint64_t seed = 1; seed <= 3000 && shrunk < 3; ++seed) {
        const FuzzCase found = RandomCase(seed);
        if (!fails(found)) continue;
        ++shrunk;
        const FuzzCase small = Shrink(found, fails);
        ASSERT_TRUE(fails(small)) << ReplayLine(small);
        ASSERT_EQ(small.Solves.size(), 1U) << ReplayLine(small);
        const auto& cell = small.Solves[0].Ask.Level.Cell;
        EXPECT_EQ(std::count(cell.begin(), cell.end(), kBox), 1) << ReplayLine(small);
        EXPECT_EQ(std::count(cell.begin(), cell.end(), kGoal), 0) << ReplayLine(small);
        EXPECT_EQ(small.Solves[0].Ask.OptLevel, 0) << ReplayLine(small);
    }
    EXPECT_EQ(shrunk, 3);
}

}  // namespace
}  // namespace kavit::test
