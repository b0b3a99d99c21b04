#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/exit_status.h"
#include "cli/level_book.h"
#include "cli/level_feed.h"
#include "cli/level_list.h"
#include "cli/level_report.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/run_summary.h"
#include "cli/sol_target.h"
#include "cli/standard_streams.h"
#include "cli/store_choice.h"
#include "output/solve_session.h"

namespace kavit {

// The road of every level from its file to its answer: read, solve, write down. One solver serves
// all levels, so that the store is made once for all that take the same.
class SolveCommand {
  public:
    explicit SolveCommand(const Options& options);

    [[nodiscard]] ExitStatus Run();

  private:
    [[nodiscard]] bool CheckOptions();
    void RunLevels();
    [[nodiscard]] bool List();
    [[nodiscard]] LevelReport ReadEntry(const LevelEntry& entry);
    void Solve(const LevelEntry& entry, LevelReport& report);
    [[nodiscard]] bool MakeStore(LevelReport& report);
    void Explain(LevelReport& report) const;
    void Dump(LevelReport& report) const;
    void Publish(const LevelReport& report);
    void Finish(double seconds);
    void TakeStatus(ExitStatus status);

    const Options& options_;
    std::vector<LevelFile> files_;
    std::uint64_t available_;
    Solver solver_;
    SolveSession session_;
    LevelFeed feed_;
    ProgressBar progress_;
    SolTarget target_;
    LevelBook book_;
    RunSummary summary_;
    AnswerStream answers_;
    ExitStatus status_ = ExitStatus::Solved;
};

}  // namespace kavit
