#include <gtest/gtest.h>

#include "level/replay.h"
#include "output/solution_file.h"
#include "output/solve_session.h"
#include "support/levels.h"

// The texts as they come out of a real solve.
namespace kavit {
namespace {

// Asks for an end at the n-th message of a kind.
struct Front : SolveObserver {
    SolveSession* Session = nullptr;
    Result StopAt = Result::Ok;
    int Times = 0;

    void ShowMsg(Result message, const MessageLines& /*lines*/) override {
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

}  // namespace
}  // namespace kavit
