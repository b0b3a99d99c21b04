#include <gtest/gtest.h>

#include "output/solution_file.h"

namespace kavit {
namespace {

// Three rows; the code 7 prints as a man, the code 77 as nothing.
Board SmallBoard() {
    Board board;
    const int codes[3][5] = {{4, 4, 4, 4, 4}, {4, 9, 3, 1, 77}, {4, 7, 2, 0, 4}};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t col = 0; col < 5; ++col) {
            board.Cell[row * Maxcol + col] = static_cast<std::uint8_t>(codes[row][col]);
        }
    }
    board.MaxRow = 3;
    board.MaxCol = 5;
    return board;
}

// Solved by the search alone, one solution, from a file.
SolveReport Plain() {
    SolveReport r;
    r.Request.Level = SmallBoard();
    r.Request.LevelName = "abc";
    KeptSolution kept;
    kept.SolMoves = 312;
    kept.SolPushes = 87;
    kept.SolPhase = 1;
    kept.SolFoundAt = 4;
    kept.SolString = "rdL";
    r.Kept = {kept, kept};
    r.Counters.BucketCnt = 4321;
    r.Counters.PosChanged = 10;
    r.Counters.PosDiscarded = 200;
    r.Counters.nSol = 7;
    r.Counters.SeaPhase = 1;
    r.Sizes.NumPos = 4000000;
    r.SeaStart = 1000;
    r.LastTick = 1012.348;
    return r;
}

// The same with all that can be more: two solutions, the optimizer stopped, an expert at work.
SolveReport Rich() {
    SolveReport r = Plain();
    r.Request.BoardMoved = true;
    r.Request.HideExpert = false;
    r.Request.Options.OptLevel = OptLevel::SomethingPlus;
    r.Request.Options.OptSpecial = true;
    r.Request.Options.HashCase = HashCase::Case1;
    r.Kept[1]->SolMoves = 298;
    r.Kept[1]->SolPushes = 91;
    r.Kept[1]->SolString = "ULd";
    r.Kept[1]->SolPhase = 2;
    r.Kept[1]->SolFoundAt = 5;
    r.Kept[0]->SolFoundAtSearch = 3;
    r.Counters.SeaPhase = 2;
    r.Counters.nSolSearch = 20;
    r.Counters.HashCnt = 2147483647;
    r.Counters.RHashCnt = 12;
    r.MovesProved = true;
    r.Cause = StopCause::User;
    return r;
}

TEST(SolutionFile, WholeFiles) {
    EXPECT_EQ(SolutionFileText(Plain()),
              "rdL\r\n"
              "rdL\r\n"
              "\r\n"
              "\\RESULT:         312/87\r\n"
              "\\Time:           12.35\r\n"
              "\\Pos.Count:      4321\r\n"
              "\\Best Solution between 7 analyzed\r\n");
    EXPECT_EQ(SolutionFileText(Rich()),
              "#####\r\n"
              "#+*.\r\n"
              "#@$ #\r\n"
              "\r\n"
              "rdL\r\n"
              "ULd\r\n"
              "\r\n"
              "\\RESULT:         312/87   298/91\r\n"
              "\\Time:           12.35\r\n"
              "\\Pos.Count:      4321\r\n"
              "\\Pos. Changed:   10\r\n"
              "\\Pos. Discarded: 200\r\n"
              "\\Bucket_size:    4000000\r\n"
              "\\HashCnt:        *0\r\n"
              "\\RHashCnt:       12\r\n"
              "\\nSol/Step:      3/1,   5/2\r\n"
              "\\Best Solution between 27 analyzed\r\n"
              "\\Best Solution before Stopped\r\n"
              "\\Moves proved:   yes\r\n");
}

TEST(SolutionFile, LinesThatDependOnOneThing) {
    const auto has = [](const SolveReport& r, const std::string& line) {
        return SolutionFileText(r).find(line + "\r\n") != std::string::npos;
    };
    SolveReport r = Plain();
    r.Request.HideExpert = false;
    EXPECT_TRUE(has(r, "\\HashCnt:        0"));
    EXPECT_TRUE(has(r, "\\nSol/Step:     4/1"));
    EXPECT_FALSE(has(r, "\\Moves proved:   no"));
    const std::pair<std::int64_t, const char*> counts[] = {{2147483646, "2147483646"},
                                                           {2147483648, "*1"},
                                                           {4294967294, "*2147483647"},
                                                           {4294967295, "4294967295"}};
    for (const auto& [count, text] : counts) {
        r.Counters.HashCnt = count;
        EXPECT_TRUE(has(r, std::string("\\HashCnt:        ") + text)) << count;
    }
    r.Kept[1]->SolPhase = 2;
    EXPECT_TRUE(has(r, "\\nSol/Step:     4/1, 4/2"));
    r.Request.Options.OptLevel = OptLevel::SomethingPlus;
    EXPECT_TRUE(has(r, "\\Moves proved:   no"));

    EXPECT_FALSE(has(r, "\\Hash:           mixed"));
    r.Counters.HashCase = HashCase::Mixed;
    EXPECT_TRUE(has(r, "\\Hash:           mixed"));

    r = Plain();
    r.Fault = "The optimizer met something that can't be";
    EXPECT_TRUE(has(r, "\\Best Solution before "));
    r.Cause = StopCause::Memory;
    EXPECT_TRUE(has(r, "\\Best Solution before Out of Memory"));
    r.Cause = StopCause::Time;
    EXPECT_TRUE(has(r, "\\Best Solution before TimeOut"));
    r.Request.BoardImported = true;
    EXPECT_EQ(SolutionFileText(r).rfind("#####\r\n#+*.\r\n#@$ #\r\n\r\nrdL\r\n", 0), 0U);
}

TEST(SolutionFile, TextView) {
    EXPECT_EQ(SolutionViewText(Plain()),
              "#####\r\n#+*.\r\n#@$ #\r\r\n\r\n"
              "rdL\r\n"
              "\r\n"
              "RESULT:  312/ 87");
    SolveReport r = Rich();
    EXPECT_EQ(SolutionViewText(r),
              "#####\r\n#+*.\r\n#@$ #\r\r\n\r\n"
              "rdL\r\n"
              "ULd\r\n"
              "\r\n"
              "RESULT:  312/ 87    298/ 91\r\n\r\n"
              "Best Solution before Stopped");
    r.Cause = StopCause::Time;
    EXPECT_EQ(SolutionViewText(r).substr(SolutionViewText(r).size() - 8), " TimeOut");
}

TEST(SolutionFile, FewestMovesOfAll) {
    struct Case {
        bool Two;
        bool Proved;
        std::optional<std::int64_t> Bound;
        const char* Says;
    };
    const Case cases[] = {
        {false, true, 312, "312, proved"},
        {true, true, 312, "312, proved; the second solution has the fewest pushes"},
        {false, false, 300, "312, at least 300 needed"}};
    for (const Case& c : cases) {
        SolveReport r = c.Two ? Rich() : Plain();
        r.Cause = StopCause::No;
        r.Request.Options.OptLevel = OptLevel::FewestOfAll;
        r.FewestMovesProved = c.Proved;
        r.MovesLowerBound = c.Bound;
        const std::string view = SolutionViewText(r);
        const std::string says = c.Says;
        EXPECT_EQ(view.substr(view.rfind("\r\n") + 2), "Fewest moves of all: " + says);
        const std::string file = SolutionFileText(r);
        const std::string line = "\\Fewest moves:   " + says + "\r\n";
        ASSERT_GT(file.size(), line.size());
        EXPECT_EQ(file.substr(file.size() - line.size()), line);
    }
}

TEST(SolutionFile, EqualMovesCountAsOneSolution) {
    SolveReport r = Plain();
    r.Kept[1]->SolPushes = 80;
    r.Kept[1]->SolString = "other";
    EXPECT_EQ(SolutionFileText(r), SolutionFileText(Plain()));
    EXPECT_EQ(SolutionViewText(r), SolutionViewText(Plain()));
}

TEST(SolutionFile, NameAndChoice) {
    using Kind = SolutionName::Kind;
    struct Case {
        const char* Level;
        bool HideExpert;
        kavit::OptLevel OptLevel;
        bool Special;
        std::optional<kavit::HashCase> HashCase;
        const char* Base;
    };
    const Case cases[] = {
        {"", false, OptLevel::SomethingMore, true, HashCase::Case1, ""},
        {"abc", true, OptLevel::SomethingMore, true, HashCase::Case1, "abc"},
        {"abc", false, OptLevel::None, false, {}, "abc_none"},
        {"abc", false, OptLevel::Something, false, HashCase::Default, "abc_some"},
        {"abc", false, OptLevel::SomethingMore, true, HashCase::Case1, "abc_more_sp_1"},
        {"abc", false, OptLevel::SomethingPlus, false, HashCase::Case2, "abc_plus_2"},
        {"abc", false, OptLevel::FewestOfAll, false, HashCase::Mixed, "abc_fewest_3"},
    };
    for (const Case& c : cases) {
        SolveRequest r;
        r.LevelName = c.Level;
        r.HideExpert = c.HideExpert;
        r.Options = {.OptLevel = c.OptLevel, .HashCase = c.HashCase, .OptSpecial = c.Special};
        const std::string base = c.Base;
        const std::string name = base.empty() ? "" : base + ".sol";
        EXPECT_EQ(SolutionBaseName(r), base);
        EXPECT_EQ(ChooseSolutionName(r, false, false), (SolutionName{Kind::Ask, name}));
        EXPECT_EQ(ChooseSolutionName(r, false, true),
                  (SolutionName{name.empty() ? Kind::Ask : Kind::Write, name}));
        EXPECT_EQ(ChooseSolutionName(r, true, true), (SolutionName{Kind::None, ""}));
    }
}

TEST(SolutionFile, Seconds) {
    const std::pair<std::pair<double, double>, const char*> cases[] = {
        {{5, 5}, "0"},           {{5, 5.004}, "0"},           {{5, 5.05}, "0.05"},
        {{5, 5.5}, "0.5"},       {{5, 15.996}, "11"},         {{5, 15.25}, "10.25"},
        {{86399, 1.75}, "2.75"}, {{86399, 86401.75}, "2.75"}, {{0.5, 86400.5}, "86400"},
    };
    for (const auto& [times, text] : cases) {
        EXPECT_EQ(SecondsText(times.first, times.second), text) << times.second;
    }
}

}  // namespace
}  // namespace kavit
