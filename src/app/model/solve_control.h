#pragma once

#include <functional>

#include "app/model/choices_control.h"
#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"
#include "output/solve_session.h"

namespace kavit {

// Seconds on any clock that never goes back.
using SecondsClock = std::function<double()>;

// A solve, from SOLVE to its report. The search itself runs where the view has it run; what it
// says comes in between other commands.
class SolveControl {
  public:
    SolveControl(Desk& desk, SettingsControl& settings, LevelControl& levels,
                 SolutionControl& solution, const ChoicesControl& choices, Solver& solver,
                 SecondsClock clock)
        : desk_(desk),
          settings_(settings),
          levels_(levels),
          solution_(solution),
          choices_(choices),
          session_(solver),
          clock_(std::move(clock)) {}

    void Start();
    void Stop();
    // STOP behind a search that ran out of memory.
    void LeaveOutOfMemory();
    // Once a second while a solve runs.
    void WatchTick();

    // Hears of the end of a solve, when the window shows it.
    std::function<void(const SolveReport&)> OnEnded;

    // From the search.
    void SearchSaid(const MessageLines& lines);
    void SearchCame(const SolveProgress& progress);
    void SideChanged(char side);
    void SearchEnded(SolveReport report);

  private:
    void ShowElapsed();
    void ShowEnd(const SolveReport& report);
    void OfferBlocks(const Board& level);
    void OfferMemory();

    Desk& desk_;
    SettingsControl& settings_;
    LevelControl& levels_;
    SolutionControl& solution_;
    const ChoicesControl& choices_;
    SolveSession session_;
    SecondsClock clock_;
    double begun_ = 0;
};

}  // namespace kavit
