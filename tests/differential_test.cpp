// The solver against its plain twin and against an exhaustive search, on random small levels.

#include <gtest/gtest.h>

#include "fuzz/fuzz_check.h"
#include "solver/store/slot_table.h"
#include "support/figures.h"
#include "support/levels.h"
#include "support/plain_oracle.h"
#include "support/random_level.h"

namespace kavit::test {
namespace {

constexpr std::int32_t kLargeStore = 50000;

// Any settings at all, with stores from one position up.
Question RandomQuestion(std::uint64_t seed, int scale) {
    constexpr std::int32_t kStores[] = {1,  2,   3,   4,    5,    7,           10,         11,
                                        20, 100, 500, 1000, 4000, kLargeStore, kLargeStore};
    Random random(seed * 7919 + 17);
    Question question;
    question.Level = RandomLevel(seed, scale);
    question.NumPos = kStores[random.Pick(0, std::size(kStores) - 1)];
    question.Blocks = random.Percent(90) ? 8 : random.Pick(1, 5);
    question.OptLevel = random.Pick(0, 3);
    question.SeaType = random.Pick(0, 2);
    question.HashCase = random.Pick(0, kMixed);
    if (random.Percent(10)) question.StopAfter = random.Pick(1, 60);
    if (random.Percent(2)) question.StopAfter = -1;
    return question;
}

void CompareWithTwin(std::uint64_t firstSeed, int count, int scale) {
    Solver solver;  // one for all, so that nothing of an earlier level may matter
    for (std::uint64_t seed = firstSeed; seed < firstSeed + static_cast<unsigned>(count); ++seed) {
        const Question question = RandomQuestion(seed, scale);
        PlainTwin twin(question.NumPos, question.Blocks, 0, 0, 0);
        const Figures plain = Ask(twin, question);
        const Figures ours = AskWithSizes(solver, question);
        ASSERT_EQ(ours.Text(), plain.Text()) << "seed " << seed << ", " << question.Text();
        ASSERT_EQ(StoreDifference(solver, twin), "") << "seed " << seed << ", " << question.Text();
    }
}

TEST(Differential, SmallLevelsCountAsTheTwin) {
    CompareWithTwin(1, 3000, 1);
}

TEST(Differential, LargerLevelsCountAsTheTwin) {
    CompareWithTwin(100001, 150, 2);
}

TEST(Differential, VerdictsHoldAgainstTheWholeGame) {
    Solver solver;
    int solved = 0;
    int unsolvable = 0;
    for (std::uint64_t seed = 200001; seed <= 200300; ++seed) {
        Question question = RandomQuestion(seed, 1);
        question.NumPos = kLargeStore;
        question.Blocks = 8;
        question.StopAfter = 0;
        const Figures ours = AskWithSizes(solver, question);
        if (ours.Result == 2 || ours.Result == 9) continue;
        const OracleAnswer truth = AskOracle(question.Level, 150000);
        if (truth.Verdict == OracleVerdict::TooBig) continue;
        if (truth.Verdict == OracleVerdict::Unsolvable) {
            ++unsolvable;
            EXPECT_TRUE(ours.Result == 3 || ours.Result == 14) << ours.Text() << question.Text();
            continue;
        }
        ++solved;
        ASSERT_EQ(ours.Result, 0) << "seed " << seed << ", " << question.Text();
        EXPECT_EQ(ours.SolPushes[1], truth.Pushes) << "seed " << seed << ", " << question.Text();
        EXPECT_GE(ours.SolMoves[1], truth.Moves) << "seed " << seed << ", " << question.Text();
    }
    // The levels are worth asking about.
    EXPECT_GE(solved, 100);
    EXPECT_GE(unsolvable, 30);
}

TEST(Differential, SameQuestionTwiceGivesTheSame) {
    Solver solver;
    for (std::uint64_t seed = 300001; seed <= 300150; ++seed) {
        const Question a = RandomQuestion(seed, 1);
        Question b = RandomQuestion(seed + 1000, 1);
        if (seed % 2 == 0) {  // half of them in the same store
            b.NumPos = a.NumPos;
            b.Blocks = a.Blocks;
        }
        const Figures firstA = AskWithSizes(solver, a);
        const Figures firstB = AskWithSizes(solver, b);
        ASSERT_EQ(AskWithSizes(solver, a).Text(), firstA.Text()) << "seed " << seed;
        ASSERT_EQ(AskWithSizes(solver, b).Text(), firstB.Text()) << "seed " << seed;
    }
}

// The optimizer and its strings, too: all that the user gets is the same with either table.
TEST(Differential, MixedGivesWhatDefaultGives) {
    std::vector<FuzzSolve> solves;
    for (const char* name : {"02-corner-shop", "04-warehouse", "05-crossing", "06-long-way"}) {
        FuzzSolve solve;
        solve.Ask.Level = BoardOfFile(KAVIT_EXAMPLES_FOLDER "/" + std::string(name) + ".xsb");
        for (const int optLevel : {0, 1, 2, 3}) {
            solve.Ask.OptLevel = optLevel;
            for (const bool special : {false, true}) {
                solve.Ask.OptSpecial = special;
                solves.push_back(solve);
            }
        }
    }
    FuzzSolve tiny = solves[2];
    for (tiny.Ask.NumPos = 1; tiny.Ask.NumPos <= 50; ++tiny.Ask.NumPos) solves.push_back(tiny);
    Solver solver;
    for (FuzzSolve& solve : solves) {
        const std::string plain = WithoutTable(SolveText(solver, solve));
        solve.Ask.HashCase = kMixed;
        EXPECT_EQ(WithoutTable(SolveText(solver, solve)), plain) << solve.Ask.Text();
    }
}

// Which table answers where none is asked for, and that one asked for is obeyed at any size.
TEST(Differential, TableByTheSizeOfTheStore) {
    const struct {
        std::int64_t NumPos;
        std::optional<HashCase> Asked;
        HashCase InForce;
        std::int64_t HashSize;
        double Bytes;
    } cases[] = {
        {100, std::nullopt, HashCase::Default, 127, 18.12},
        {100, HashCase::Mixed, HashCase::Mixed, 131, 20.04},
        {8000000, std::nullopt, HashCase::Default, 9600037, 17.8},
        {8000001, std::nullopt, HashCase::Mixed, 10000007, 19.67},
        {8000001, HashCase::Case2, HashCase::Case2, 9600037, 17.8},
    };
    for (const auto& c : cases) {
        Solver solver;
        ASSERT_TRUE(solver.ApplySizes({c.NumPos, 4, 300}).Ok);
        SearchLevel(solver, BoardOf(kEasy), {.HashCase = c.Asked});
        EXPECT_EQ(solver.Counters().HashCase, c.InForce) << c.NumPos;
        EXPECT_EQ(solver.Counters().HashSize, c.HashSize) << c.NumPos;
        EXPECT_NEAR(solver.Counters().BytesPerPosition, c.Bytes, 0.01) << c.NumPos;
    }
}

// The described tables end where their prime test does; Mixed goes on.
TEST(Differential, DescribedTablesHaveAnEnd) {
    PrimeTable primes;
    EXPECT_EQ(SlotTable::SizeFor(SlotTable::kMostPositions, primes), 1073676287);
    EXPECT_THROW((void)SlotTable::SizeFor(SlotTable::kMostPositions + 1, primes), SolverFault);
}

}  // namespace
}  // namespace kavit::test
