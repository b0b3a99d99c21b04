#pragma once

#include <optional>
#include <string>

#include "app/model/board_marks.h"
#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "app/model/solve_control.h"
#include "level/paths.h"
#include "level/play.h"
#include "level/turning_point.h"

namespace kavit {

// The level played by hand, and what is asked from where it stands.
//
// The played line belongs to the board that is loaded: a different board begins a new one, and
// nothing else loses it. The board shows it while there is no solution, or while the arrow keys
// are given to hand play.
class PlayControl {
  public:
    PlayControl(Desk& desk, const LevelControl& levels, SolutionControl& solution,
                SolveControl& solve)
        : desk_(desk), levels_(levels), solution_(solution), solve_(solve) {}

    // Who owns the arrow keys where both could. A solve gives them to the replay.
    void GiveArrows(bool replay);
    // Hand play is what the board shows.
    [[nodiscard]] bool OnBoard() const;

    void Step(int direction);
    void Undo() { Do(&HandPlay::Undo); }
    void Redo() { Do(&HandPlay::Redo); }
    void UndoPush() { Do(&HandPlay::UndoPush); }
    void RedoPush() { Do(&HandPlay::RedoPush); }
    void Restart() { Do(&HandPlay::Restart); }

    // A click walks the man, or chooses a box; the next one pushes it there. A drag pushes as well.
    void CellDown(int cell, bool rightButton);
    void CellUp(int cell);
    void CellHovered(int cell);
    // Escape; false when there was none.
    bool LeaveBox();

    void Copy();
    void Save();
    void SolveFromHere();

    void TurnDead() { showDead_ = !showDead_; }
    void TurnReach() { showReach_ = !showReach_; }

    // After each command: takes the board where it is due, and draws the marks.
    void Present();

  private:
    void Do(bool (HandPlay::*command)());
    void Changed();
    void PushTo(int cell);
    void Mark(BoardMarks& marks);
    void Came(const SolveReport& report);
    void AskNext();
    void Answered(const SolveReport& report);
    void SayTurn();

    Desk& desk_;
    const LevelControl& levels_;
    SolutionControl& solution_;
    SolveControl& solve_;

    HandPlay play_;
    Board start_;  // of the level that is played
    std::optional<BoxPaths> chosen_;
    std::optional<BoxPaths> pointed_;  // of the box under the pointer
    int downCell_ = -1;
    int hovered_ = -1;
    bool showDead_ = false;
    bool showReach_ = false;
    bool arrowsReplay_ = true;

    ReplayCursor asked_;                // the line, when the question came
    std::optional<TurningPoint> turn_;  // counted in its pushes
};

}  // namespace kavit
