// A short run of the fuzzer, its shrinker, and cases that failed once.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>

#include "fuzz/fuzz_check.h"
#include "fuzz/reader_targets.h"
#include "fuzz/shrink.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

TEST(Fuzz, ShortRunFindsNothing) {
    FuzzTally tally;
    for (std::uint64_t seed = 1; seed <= 700; ++seed) {
        const FuzzCase fuzzCase = RandomCase(seed, seed % 20 == 0 ? 2 : 1);
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
    EXPECT_GE(tally.PassesStopped, 5) << tally.Text();
    EXPECT_GE(tally.PassesFull, 5) << tally.Text();
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
        "10,3,3,0,0,0,0,0,44444440000000000004000004000000000000440000400000000000044000440000000"
        "0000040001040000000000004020004000000000000400000400000000000040400040000000000004520044"
        "000000000000400010400000000000040400040000000000004444444;10,3,3,0,0,1,-1,0,444444400000"
        "0000000400000400000000000044000040000000000004400044000000000000400010400000000000040200"
        "0400000000000040000040000000000004040004000000000000452004400000000000040001040000000000"
        "0040400040000000000004444444",
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
        EXPECT_EQ(ReplayLine(back), ReplayLine(fuzzCase));
        ASSERT_EQ(back.Solves.size(), fuzzCase.Solves.size());
        EXPECT_EQ(back.Solves[0].Ask.Level, fuzzCase.Solves[0].Ask.Level) << seed;
    }
    EXPECT_THROW(ParseReplayLine(""), std::runtime_error);
    EXPECT_THROW(ParseReplayLine("10,8,1,0,0,0,0,4"), std::runtime_error);
    EXPECT_THROW(ParseReplayLine("10,8,1,0,0,0,0,0,4x4"), std::runtime_error);
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

// Every file of the corpus through the targets of coverage-guided fuzzing.
TEST(FuzzReaders, CorpusHolds) {
    const struct {
        const char* Folder;
        std::function<void(std::string_view)> Target;
    } targets[] = {{"level_file", FuzzLevelFile},
                   {"pasted_text", FuzzPastedText},
                   {"collection", FuzzCollection},
                   {"settings_file", FuzzSettingsFile}};
    for (const auto& [folder, target] : targets) {
        int files = 0;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::string(KAVIT_CORPUS_FOLDER "/") + folder)) {
            const std::string bytes = ReadWholeFile(entry.path().string());
            EXPECT_NO_THROW(target(bytes)) << entry.path();
            files += bytes.empty() ? 0 : 1;  // one that can't be read would be empty, too
        }
        EXPECT_GE(files, 5) << folder;
    }
}

}  // namespace
}  // namespace kavit::test
