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
          solver_(solver),
          session_(solver),
          clock_(std::move(clock)) {}

    void Start() { StartFrom(levels_.Level().Board, Purpose::Level, nullptr); }
    // What a search is for: the level, a position of a game, or a question about one, whose answer
    // is no solution to show.
    enum class Purpose : std::uint8_t { Level, FromHere, Probe };
    using Then = std::function<void(const SolveReport&)>;
    // `then` hears of the end, when the window shows it.
    void StartFrom(const Board& board, Purpose purpose, Then then);
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
    void SearchEnded(const SolveReport& report);

  private:
    void Begun();
    void ShowElapsed();
    void ShowEnd(const SolveReport& report);
    void OfferBlocks(const Board& level);
    void OfferMemory();
    [[nodiscard]] bool MayOffer() const;
    void ShowFigures(const SolveReport& report);

    Desk& desk_;
    SettingsControl& settings_;
    LevelControl& levels_;
    SolutionControl& solution_;
    const ChoicesControl& choices_;
    Solver& solver_;
    SolveSession session_;
    Purpose purpose_ = Purpose::Level;
    Then then_;
    SecondsClock clock_;
    double begun_ = 0;
};

}  // namespace kavit
