#include <gtest/gtest.h>

#include "output/dumps.h"
#include "output/messages.h"
#include "output/solution_file.h"
#include "support/levels.h"
#include "support/temp_folder.h"

// The texts as they come out of a real solve.
namespace kavit {
namespace {

using test::BoardOf;

// Shows each message as it comes, as both fronts do.
struct Front : SolverHooks {
    const Solver* Solving = nullptr;
    MessageCatalogue Catalogue;
    std::string Shown;

    void ShowMsg(Result message) override {
        MessageValues values;
        ReadValues(values, *Solving, *this);
        const MessageLines lines = Catalogue.ShowMsg(message, values);
        Shown += lines.Left.value_or("-") + " | " + lines.Right.value_or("-") + "\n";
    }
};

struct Solve {
    explicit Solve(Board board, OptLevel optLevel = OptLevel::Something) : Level(board) {
        EXPECT_TRUE(Engine.ApplySizes({1000, 8, 300}).Ok);
        Hooks.Solving = &Engine;
        EXPECT_EQ(Engine.AnalyseBoard(Level, {.OptLevel = optLevel}), Result::Ok);
        EXPECT_EQ(Engine.Search(Hooks), Result::Ok);
        Engine.BuildSolutions();
    }
    Board Level;
    Solver Engine;
    Front Hooks;
};

TEST(SolvedTexts, MessagesAndReport) {
    Solve solve(BoardOf("#######\n#@$  .#\n#######\n"));
    solve.Hooks.ShowMsg(Result::Solution);
    const std::string& shown = solve.Hooks.Shown;
    EXPECT_EQ(shown.rfind("Solver is now thinking very hard... | Analyzed up to  0 pushes\n", 0),
              0U);
    EXPECT_NE(shown.find("Solution found in 3 pushes | \n"
                         "Best solution  3/3 | on  1 analyzed so far\n"),
              std::string::npos)
        << shown;
    EXPECT_NE(shown.find("Solution:  3/3 | on  1 analyzed\n"), std::string::npos) << shown;

    ReportInput report;
    ReadSolver(report, solve.Engine);
    report.HideExpert = false;
    EXPECT_EQ(report.NumPos, 1000);
    const std::string file = SolutionFileText(report);
    EXPECT_EQ(file.rfind("RRR\r\nRRR\r\n\r\n\\RESULT:         3/3\r\n", 0), 0U) << file;
    EXPECT_NE(file.find("\\nSol/Step:     1/1\r\n\\Best Solution between 1 analyzed\r\n"),
              std::string::npos)
        << file;
}

TEST(SolvedTexts, Dumps) {
    const TempFolder folder;
    const std::string base = folder.Path("abc");
    // Low on the board, keys hold compact numbers; the line shows cells all the same.
    Board low;
    for (std::size_t cell = 14 * Maxcol; cell < 17 * Maxcol; ++cell) low.Cell[cell] = kWall;
    low.Cell[286] = kMan;
    low.Cell[287] = kBox;
    low.Cell[288] = kGoal;
    Solve compact(low);
    ASSERT_TRUE(compact.Engine.Counters().SqCompact);
    EXPECT_EQ(DumpPosition(1, 12, base, compact.Engine), "");
    EXPECT_NE(folder.Read("abc_Dist.txt").find(" 286 000] [ 287 286]\r\n"), std::string::npos)
        << folder.Read("abc_Dist.txt");

    const Solve solve(BoardOf("#######\n#@$  .#\n#######\n"), OptLevel::SomethingMore);
    EXPECT_EQ(DumpLevels(folder.Path("run"), "abc", solve.Engine), "");
    EXPECT_EQ(folder.Read("run_abc.txt"),
              LevelsText("abc", solve.Engine.Layers(), solve.Engine.Counters()));
    EXPECT_NE(folder.Read("run_abc.txt").find("SeaCnt = 001"), std::string::npos);
    for (const int pos : {1, 1}) EXPECT_EQ(DumpPosition(pos, 0, base, solve.Engine), "");
    const std::string line = folder.Read("abc.txt");
    EXPECT_NE(line.find(" 020 000] [ 21 20]\r\n Bucket: ( 0001)  [ 0"), std::string::npos) << line;

    for (const int pos : {0, 1001}) {
        EXPECT_NE(DumpPosition(pos, 0, base, solve.Engine).find("no position"), std::string::npos);
    }
    EXPECT_NE(DumpPosition(1, 0, folder.Path("no/folder"), solve.Engine), "");
}

}  // namespace
}  // namespace kavit
