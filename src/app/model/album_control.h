#pragma once

#include <functional>

#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"
#include "app/model/solve_control.h"

namespace kavit {

// The list beside the board: its marks, solving all of it, the solutions it knows, and writing it.
// Which level is on the board is up to LevelControl.
class AlbumControl {
  public:
    AlbumControl(Desk& desk, LevelControl& levels, SolutionControl& solution, SolveControl& solve)
        : desk_(desk), levels_(levels), solution_(solution), solve_(solve) {}

    // The list can be closed, and comes back; where there is none, the folder is listed.
    void ShowList(bool visible) {
        desk_.Screen.ListVisible = visible && !levels_.List().Entries.empty();
    }
    void Toggle();
    void Choose(int row);
    void NextUnsolved();
    // Begins, or ends what was begun.
    void SolveAll();
    // Plays the solution that the list has for the level, without a search.
    void ShowKnown();
    void Save();
    // A solve ended.
    void Ended(const SolveReport& report);

  private:
    void SolveNext(int from);
    void EndSolvingAll();
    void Mark(AlbumEntry& entry, const SolveReport& report);

    Desk& desk_;
    LevelControl& levels_;
    SolutionControl& solution_;
    SolveControl& solve_;
};

}  // namespace kavit
