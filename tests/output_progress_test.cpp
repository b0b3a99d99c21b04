#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "level/shown_text.h"
#include "output/progress.h"
#include "output/recorded_solution.h"
#include "support/levels.h"

// What is said of a running solve, of solutions that came with a level, and of names from outside.
namespace kavit {
namespace {

TEST(Progress, HowFarTheMemoryReaches) {
    using Sizes = std::vector<double>;
    struct Case {
        Sizes Forward;
        Sizes Backward;
        double Room;
        SeaType Side;
        std::int64_t Pushes;  // 0: no guess
    };
    const Sizes doubling = {250, 500, 1000, 2000};
    const Case cases[] = {
        // 4000, 8000, 16000 and 32000 fit, the next 64000 do not: 7 layers and 4 more.
        {doubling, doubling, 60001, SeaType::Forward, 11},
        {doubling, doubling, 59999, SeaType::Forward, 10},
        {doubling, doubling, 60001, SeaType::Backward, 11},
        // The sides take turns: 4000 and 4000, 8000 and 8000.
        {doubling, doubling, 24001, SeaType::Both, 11},
        {doubling, doubling, 15999, SeaType::Both, 9},
        {doubling, doubling, 100, SeaType::Both, 7},
        {doubling, doubling, 1e30, SeaType::Forward, 94},
        // Only the last four steps count.
        {{1, 1, 1, 1000, 2000, 4000, 8000, 16000}, doubling, 31999, SeaType::Forward, 11},
        {{1, 1, 1, 1000, 2000, 4000, 8000, 16000}, doubling, 32001, SeaType::Forward, 12},
        // Just so many, just so large; of two layers of one size the backward one goes on.
        {{250, 500, 1000}, doubling, 2000, SeaType::Forward, 7},
        {{1000, 2000, 4000}, {444, 1333, 4000}, 9000, SeaType::Both, 5},
        {{4000, 4000, 4000}, doubling, 10, SeaType::Forward, 0},
        // Layers that are few, small or shrinking tell nothing.
        {{500, 1000}, {500, 1000}, 10, SeaType::Both, 0},
        {{250, 500, 999}, doubling, 10, SeaType::Forward, 0},
        {{4000, 2000, 1500}, doubling, 10, SeaType::Forward, 0},
        {{}, doubling, 10, SeaType::Both, 0},
    };
    for (const Case& c : cases) {
        const auto guess = GuessReach(c.Forward, c.Backward, c.Room, c.Side);
        EXPECT_EQ(guess.value_or(0), c.Pushes) << &c - cases;
    }
}

// Before and after each step of a search, at half a second each; and what the pass is at.
struct Steps : SolverHooks {
    const Solver* Solving = nullptr;
    ProgressMeter Meter;
    char Side = ' ';
    double Seconds = 0;
    std::int64_t Bound = 0;
    int InPass = 0;
    std::vector<std::int64_t> OffersAt = {0};  // at whole seconds

    void ShowSide(char side) override {
        Side = side;
        Check();
    }
    // Within a step, whose layer is not whole yet.
    void ShowProgress(std::int64_t /*positions*/) override {
        const SearchCounters& counters = Solving->Counters();
        const SolveProgress now = Meter.Read(*Solving, SeaType::Both, Side, Seconds);
        if (counters.SeaPhase == 2) return;
        EXPECT_EQ(now.ForwLayers + now.BackLayers, counters.SeaSteps);
        if (Side != ' ') {
            EXPECT_EQ(Side == '1' ? now.BackLayers : now.ForwLayers,
                      Side == '1' ? counters.BackDepth : counters.ForwDepth);
        }
    }
    void ShowMsg(Result message) override {
        if (message == Result::Thinking && Side != ' ') Check();
    }
    void Check() {
        Seconds += 0.5;
        const SearchCounters& counters = Solving->Counters();
        const SolveProgress now = Meter.Read(*Solving, SeaType::Both, Side, Seconds);
        EXPECT_EQ(now.SeaPhase, counters.SeaPhase);
        if (counters.SeaPhase == 2) {
            EXPECT_EQ(now.ForwLayers, counters.ForwLevel);
            EXPECT_EQ(now.BackLayers, counters.BackLevel);
            EXPECT_EQ(now.PushesLower, counters.OptimumPushes);
            ++InPass;
            return;
        }
        EXPECT_EQ(now.ForwLayers, counters.ForwDepth);
        EXPECT_EQ(now.BackLayers, counters.BackDepth);
        const bool met = counters.nSol > 0;
        EXPECT_EQ(now.PushesLower, now.ForwLayers + now.BackLayers + (met ? 0 : 1));
        EXPECT_GE(now.PushesLower, Bound);
        Bound = now.PushesLower;
        const auto& table =
            Side == '2' ? Solving->Layers().BackTopEnd : Solving->Layers().ForwTopEnd;
        const auto layer = (Side == '2' ? now.BackLayers : now.ForwLayers) + 1;
        const LayerRun run = LayerTables::Get(table, layer, 1);
        if (run.Top > 0) {
            EXPECT_EQ(now.LayerSize, run.End - run.Top + 1);
        }
        EXPECT_EQ(now.Positions, counters.BucketCnt);
        // Measured since the last whole second but one.
        if (Seconds == std::floor(Seconds)) OffersAt.push_back(now.Offers);
        const std::size_t since = OffersAt.size() - std::min<std::size_t>(OffersAt.size(), 2);
        EXPECT_DOUBLE_EQ(now.OffersPerSecond, static_cast<double>(now.Offers - OffersAt[since]) /
                                                  (Seconds - static_cast<double>(since)));
    }
};

TEST(Progress, LayersAndBound) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({100000, 8, 300}).Ok);
    Steps steps;
    steps.Solving = &solver;
    const Board board = test::BoardOfFile(KAVIT_EXAMPLES_FOLDER "/05-crossing.xsb");
    ASSERT_EQ(solver.AnalyseBoard(board, {.OptLevel = OptLevel::SomethingPlus}), Result::Ok);
    ASSERT_EQ(solver.Search(steps), Result::Ok);
    EXPECT_EQ(steps.Bound, solver.Kept(1)->SolPushes);
    EXPECT_EQ(solver.OptimizeMoves(steps), Result::GoOn);
    EXPECT_GT(steps.InPass, 20);
}

// Every call of a solve, in its order: messages by number, sides, and positions as progress.
struct Calls : SolverHooks {
    void ShowProgress(std::int64_t positions) override { Add(std::to_string(positions) + "p"); }
    void ShowSide(char side) override { Add(std::string(1, side)); }
    void ShowMsg(Result message) override { Add("m" + std::to_string(static_cast<int>(message))); }
    void Add(const std::string& call) {
        if (call == Last) {
            ++Times;
            return;
        }
        Text += (Times > 1 ? "*" + std::to_string(Times) + " " : " ") + call;
        Last = call;
        Times = 1;
    }
    std::string Text, Last;
    int Times = 0;
};

TEST(Progress, CallsOfASolve) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({100000, 8, 300}).Ok);
    Calls calls;
    const Board board = test::BoardOfFile(KAVIT_EXAMPLES_FOLDER "/05-crossing.xsb");
    ASSERT_EQ(solver.AnalyseBoard(board, {.OptLevel = OptLevel::SomethingPlus}), Result::Ok);
    ASSERT_EQ(solver.Search(calls), Result::Ok);
    EXPECT_EQ(solver.OptimizeMoves(calls), Result::GoOn);
    calls.Add("end");
    EXPECT_EQ(
        calls.Text,
        " 2p m5 2 m5 1 m5 2 m5 1 m5 2 m5 1 m5 2 m5 1 m5 2 m5 1 m5 2 m5 1 m5 2 m5 1 m5 2 m5 1 m5 2 "
        "m5 1 5000p m5 2 m5 1 m5 2 m5 1 10000p m5 2 m5 2 15000p m5 1 m5 2 20000p m5 1 25000p m5 2 "
        "m5 1 30000p m5 2 35000p m5 2 40000p m5 2 45000p m5 2 50000p m5 2 m91 m28*6 m5 51245p m25 "
        "F 51245p m25 B 51245p m25 B 51245p m25 F 51245p m25 B 51245p m25 F 51245p m25 B 51245p "
        "m25 F 51245p m25 B 51245p m25 F 51245p m25 B 51245p m25 F 51245p m25 B 51245p m25 F "
        "51245p m25 B 51245p m25 F 51245p m25 B 51245p m25 F 51245p m25 B 51245p m25 F 51245p m25 "
        "B 51245p m25 F 51245p m25 B 51245p m25 F 51245p m25 B 51245p m25 B 51245p m25 F 51245p "
        "m25 B 51245p m25 F 51245p m25 B 51245p m25 B 51245p m25 B 51245p m25 B 51245p B m28 m26 F "
        "m28 52227p m26 F m28 53442p m26 B*2 53775p m26 B*2 54264p*2 m28 end");
}

TEST(RecordedSolution, AsItCompares) {
    const Board board = test::BoardOf("#######\n#@$  .#\n#     #\n#######\n");
    struct Case {
        const char* Recorded;
        bool PushesProved;
        bool MovesProved;
        const char* Text;
    };
    const Case cases[] = {
        {"RRR", true, true,
         "Recorded solution: 3/3, with the fewest pushes, and the fewest moves for them"},
        {"RRR", true, false, "Recorded solution: 3/3, with the fewest pushes"},
        {"RRR", false, false, "Recorded solution: 3/3"},
        {"drlurRlRR", true, true, "The recorded solution does not solve it: letter 5: "},
        {"dururd", true, true, "The recorded solution does not solve it: letter 3: "},
        {"RR", true, true,
         "The recorded solution does not solve it: a box is left beside the goals"},
        {"RlrRR", true, true,
         "Recorded solution: 5/3, with the fewest pushes and 2 moves more than needed"},
        {"RdrruLdlluRRR", true, true, "Recorded solution: 13/5, 2 pushes more than needed"},
    };
    for (const Case& c : cases) {
        SolveReport found;
        found.Kept = {KeptSolution{.SolMoves = 3, .SolPushes = 3},
                      KeptSolution{.SolMoves = 3, .SolPushes = 3}};
        found.PushesProved = c.PushesProved;
        found.MovesProved = c.MovesProved;
        const std::string text = RecordedText(PlayRecorded(board, c.Recorded), found);
        EXPECT_EQ(text.rfind(c.Text, 0), 0U) << text;
    }
}

TEST(ShownText, OfNamesFromOutside) {
    EXPECT_EQ(ShownText("a\x1f\x7f b\n\xc3\xa9"), "a\\x1f\\x7f b\\x0a\xc3\xa9");
}

}  // namespace
}  // namespace kavit
