#pragma once

#include <unistd.h>

#include "output/progress.h"
#include "output/solve_session.h"

namespace kavit {

// The progress bar on standard error. It shows only where somebody looks, and only when the solve
// takes long enough to be looked at; it leaves no trace.
class ProgressBar final : public SolveObserver {
  public:
    void ShowProgress(const SolveProgress& progress) override;
    // After each solve.
    void Clear();

  private:
    bool wanted_ = isatty(STDERR_FILENO) == 1;
    bool shown_ = false;
};

}  // namespace kavit
