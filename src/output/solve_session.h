#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

#include "output/messages.h"
#include "output/progress.h"
#include "output/solve_report.h"
#include "output/watch.h"
#include "solver/hooks.h"
#include "solver/solver.h"

// The one way in which a level is solved: analysis, search, moves pass, proof, assembly of the
// move strings, within a time limit and until somebody stops it. Whoever solves - command line,
// window, tests - makes a request and reads a report.
//
//     kavit::Solver solver;
//     if (!solver.ApplySizes({}).Ok) return;
//     kavit::SolveSession session(solver);
//     kavit::SolveObserver observer;  // derive from it to watch
//     const kavit::SolveReport report = session.Run({.Level = board}, observer);
//     if (report.HasSolution()) std::puts(report.Kept[0]->SolString.c_str());
//
// What was found is reported whichever way the solve ended. The layers of the search are complete
// but for the last one, so a meeting in it has the fewest pushes even when the search was stopped
// there; its moves are only the fewest seen so far.
namespace kavit {

// Sees a solve from the inside, on the thread of Run. Every call may be left as it is.
class SolveObserver {
  public:
    virtual ~SolveObserver() = default;
    // A status message while the solve runs. The last one is in the report, and not shown here.
    virtual void ShowMsg(Result message, const MessageLines& lines) { (void)message, (void)lines; }
    // At most ten times a second.
    virtual void ShowProgress(const SolveProgress& progress) { (void)progress; }
    // '1' forward, '2' backward in the search, 'F' and 'B' in the moves pass.
    virtual void ShowSide(char side) { (void)side; }
};

class SolveSession final : private SolverHooks {
  public:
    // The solver's sizes are applied before Run, and stay as they are.
    explicit SolveSession(Solver& solver) : solver_(solver) {}

    // Never throws for what the solver meets: a fault is part of the report.
    [[nodiscard]] SolveReport Run(const SolveRequest& request, SolveObserver& observer);

    // Ends the run that is going on, and every later one at its first position, until ForgetStop:
    // a stop that arrives between two levels is not lost. From any thread and from a signal
    // handler. True for the first request.
    bool RequestStop() noexcept;
    void ForgetStop() noexcept { asked_ = false; }
    [[nodiscard]] bool StopRequested() const noexcept { return asked_; }

  private:
    // Expanding a position takes from a tenth of a microsecond to some milliseconds, reading the
    // clock some 30 ns: every 64 positions it costs nothing, and no limit is missed by much.
    static constexpr int kPositionsPerLook = 64;

    static constexpr double kProgressSeconds = 0.1;
    using Clock = std::chrono::steady_clock;

    void ShowProgress(std::int64_t /*bucketCnt*/) override { Look(); }
    void ShowSide(char side) override;
    void ShowMsg(Result message) override;
    void Yield() override {
        if (--left_ == 0) Look();
    }

    void Start(const SolveRequest& request);
    void Look();
    void Search(SolveReport& report);
    void Improve(SolveReport& report);
    void Assemble(SolveReport& report);
    void SeekFewest(SolveReport& report);
    void Conclude(SolveReport& report);

    Solver& solver_;
    SolveObserver* observer_ = nullptr;  // while Run runs
    std::atomic<bool> asked_{false};
    MessageCatalogue catalogue_;
    DayClock clock_;
    SolveWatch watch_;
    ProgressMeter meter_;
    SeaType searched_ = SeaType::Both;
    char side_ = ' ';
    Clock::time_point started_;
    double nextTick_ = 0;
    double nextProgress_ = 0;
    int left_ = kPositionsPerLook;
};

}  // namespace kavit
