#pragma once

#include <optional>
#include <string>

#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "output/solve_session.h"
#include "solver/solver.h"

namespace kavit {

// Solves what is drawn beside the drawing, when the user has it so: after each pause, with a solver
// of its own and within small limits, so that a setter sees what moving one wall does. A board that
// changes meanwhile ends the search for the one before.
class AsideControl {
  public:
    AsideControl(Desk& desk, const LevelControl& levels) : desk_(desk), levels_(levels) {}

    void Turn();
    // The drawing has rested for a moment.
    void Rested();
    void Ended(const SolveReport& report);
    // After each command.
    void Present();

  private:
    [[nodiscard]] bool Wanted() const { return on_ && IsEditing(desk_.Now()); }

    Desk& desk_;
    const LevelControl& levels_;
    Solver solver_;
    SolveSession session_{solver_};
    bool on_ = false;
    bool running_ = false;
    bool rested_ = false;  // while a search for an older board came to its end
    std::optional<Board> asked_;
    std::string answer_;
};

}  // namespace kavit
