#pragma once

#include <string>
#include <vector>

#include "cli/exit_status.h"
#include "cli/level_list.h"
#include "cli/level_report.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/sol_target.h"
#include "cli/standard_streams.h"
#include "output/solve_session.h"

namespace kavit {

// The road of every level from its file to its answer: read, solve, write down.
// One solver serves all levels, so that the store is made once.
class SolveCommand {
  public:
    explicit SolveCommand(const Options& options);

    [[nodiscard]] ExitStatus Run();

  private:
    [[nodiscard]] bool ApplyOptions(ExitStatus& status);
    [[nodiscard]] LevelReport SolveLevel(const LevelSource& source);
    void Dump(LevelReport& report) const;
    void Publish(const LevelReport& report);
    void TakeStatus(ExitStatus status);

    const Options& options_;
    std::vector<LevelSource> levels_;
    Solver solver_;
    SolveSession session_;
    ProgressBar progress_;
    SolTarget target_;
    AnswerStream answers_;
    ExitStatus status_ = ExitStatus::Solved;
};

}  // namespace kavit
