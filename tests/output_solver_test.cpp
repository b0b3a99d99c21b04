#include <gtest/gtest.h>

#include "level/replay.h"
#include "output/dumps.h"
#include "output/solution_file.h"
#include "output/solve_session.h"
#include "support/levels.h"
#include "support/temp_folder.h"

// The texts as they come out of a real solve.
namespace kavit {
namespace {

using test::BoardOf;

// Shows each message as it comes, as both fronts do; asks for an end at the n-th of a kind.
struct Front : SolveObserver {
    SolveSession* Session = nullptr;
    Result StopAt = Result::Ok;
    int Times = 0;
    std::string Shown;

    void ShowMsg(Result message, const MessageLines& lines) override {
        Shown += lines.Left.value_or("-") + " | " + lines.Right.value_or("-") + "\n";
        if (message == StopAt && --Times == 0) {
            EXPECT_TRUE(Session->RequestStop());
        }
    }
};

struct Solve {
    explicit Solve(const Board& board, OptLevel optLevel = OptLevel::Something,
                   Result stopAt = Result::Ok, int times = 1)
        : Session(Engine) {
        EXPECT_TRUE(Engine.ApplySizes({20000, 8, 300}).Ok);
        View.Session = &Session;
        View.StopAt = stopAt;
        View.Times = times;
        Report = Session.Run(
            {.Level = board, .Options = {.OptLevel = optLevel}, .HideExpert = false}, View);
    }
    Solver Engine;
    SolveSession Session;
    Front View;
    SolveReport Report;
};

TEST(SolvedTexts, MessagesAndReport) {
    const Solve solve(BoardOf("#######\n#@$  .#\n#######\n"));
    const std::string& shown = solve.View.Shown;
    EXPECT_EQ(shown.rfind("Solver is now thinking very hard... | Analyzed up to  0 pushes\n", 0),
              0U);
    EXPECT_NE(shown.find("Solution found in 3 pushes | \n"
                         "Best solution  3/3 | on  1 analyzed so far\n"),
              std::string::npos)
        << shown;
    const SolveReport& report = solve.Report;
    EXPECT_EQ(report.Lines, (MessageLines{"Solution:  3/3", "on  1 analyzed"}));
    EXPECT_EQ(report.Sizes.NumPos, 20000);
    const std::string file = SolutionFileText(report);
    EXPECT_EQ(file.rfind("RRR\r\nRRR\r\n\r\n\\RESULT:         3/3\r\n", 0), 0U) << file;
    EXPECT_NE(file.find("\\nSol/Step:     1/1\r\n\\Best Solution between 1 analyzed\r\n"),
              std::string::npos)
        << file;
}

// Wherever a solve is stopped, what was found until then is there and nothing more is claimed.
TEST(SolvedTexts, AStopKeepsWhatIsKnown) {
    const Board board = test::BoardOfFile(KAVIT_EXAMPLES_FOLDER "/04-warehouse.xsb");
    constexpr auto kPlus = OptLevel::SomethingPlus;
    const Solve whole(board, kPlus);
    const std::int64_t pushes = whole.Report.Kept[1]->SolPushes;
    EXPECT_EQ(whole.Report.PushesLowerBound, pushes);
    EXPECT_TRUE(whole.Report.PushesProved && whole.Report.MovesProved);
    struct Case {
        OptLevel Level;
        Result StopAt;
        int Times;
        int Code;
        int LastMsg;
        std::int64_t Bound;
        const char* Left;
    };
    const Case cases[] = {
        {kPlus, Result::Ok, 1, 0, 29, pushes, "Best solution"},
        {kPlus, Result::Thinking, 1, 8, 8, 1, "Interrupted by user !"},
        {kPlus, Result::Thinking, 6, 8, 8, 6, "Interrupted by user !"},
        {OptLevel::Something, Result::SolutionFound, 1, 8, 88, pushes, "Interrupted by user but"},
        {OptLevel::Something, Result::BestSoFar, 1, 8, 88, pushes, "Interrupted by user but"},
        {kPlus, Result::BestSoFar, 1, 8, 88, pushes, "Interrupted by user but"},
        {kPlus, Result::ImprovingMoves, 1, 0, 88, pushes, "Interrupted by user but"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(static_cast<int>(c.StopAt)) + " x " + std::to_string(c.Times));
        Solve solve(board, c.Level, c.StopAt, c.Times);
        const SolveReport& report = solve.Report;
        EXPECT_EQ(static_cast<int>(report.Code), c.Code);
        EXPECT_EQ(static_cast<int>(report.LastMsg), c.LastMsg);
        EXPECT_EQ(report.Lines.Left.value_or("").rfind(c.Left, 0), 0U) << *report.Lines.Left;
        EXPECT_EQ(report.Cause, c.StopAt == Result::Ok ? StopCause::No : StopCause::User);
        EXPECT_EQ(report.PushesLowerBound, c.Bound);
        ASSERT_EQ(report.HasSolution(), c.LastMsg != 8);
        EXPECT_EQ(report.PushesProved, report.HasSolution());
        EXPECT_EQ(report.MovesProved, c.LastMsg == 29);
        if (report.HasSolution()) {
            EXPECT_EQ(report.Kept[1]->SolPushes, pushes);
            const ReplayOutcome played = Replay(board, report.Kept[0]->SolString);
            EXPECT_TRUE(played.Solved);
            EXPECT_EQ(SolutionFileText(report).find("\\Best Solution before Stopped\r\n") !=
                          std::string::npos,
                      c.LastMsg == 88);
        }
        // Asked once, it ends every run until it is taken back.
        if (c.StopAt == Result::Ok) continue;
        EXPECT_FALSE(solve.Session.RequestStop());
        const SolveRequest again{.Level = board};
        EXPECT_EQ(solve.Session.Run(again, solve.View).Code, Result::Stopped);
        solve.Session.ForgetStop();
        EXPECT_EQ(solve.Session.Run(again, solve.View).Code, Result::Ok);
    }
}

// A fault in the search leaves nothing, one in the optimizer what the search found.
TEST(SolvedTexts, AFaultKeepsWhatIsKnown) {
    struct Throwing : SolveObserver {
        Result At = Result::Ok;
        bool Memory = false;
        void ShowMsg(Result message, const MessageLines& /*lines*/) override {
            if (message != At) return;
            if (Memory) throw std::bad_alloc();
            throw SolverFault("broken");
        }
    };
    const Board board = test::BoardOfFile(KAVIT_EXAMPLES_FOLDER "/04-warehouse.xsb");
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({20000, 8, 300}).Ok);
    SolveSession session(solver);
    for (const Result at : {Result::Thinking, Result::ImprovingMoves}) {
        for (const bool memory : {false, true}) {
            Throwing view;
            view.At = at;
            view.Memory = memory;
            const SolveReport report = session.Run(
                {.Level = board, .Options = {.OptLevel = OptLevel::SomethingPlus}}, view);
            EXPECT_EQ(report.Fault, memory ? "Insuficient Memory" : "broken");
            EXPECT_TRUE(report.EndedEarly());
            ASSERT_EQ(report.HasSolution(), at == Result::ImprovingMoves);
            EXPECT_EQ(report.PushesProved, report.HasSolution());
            EXPECT_FALSE(report.MovesProved);
            EXPECT_EQ(report.PushesLowerBound.has_value(), report.HasSolution());
        }
    }
    SolveObserver still;
    EXPECT_EQ(session.Run({.Level = board}, still).Code, Result::Ok);
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
