#pragma once

#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"

namespace kavit {

// The editing mode: Edit Board opens it, DONE (the caption of btnANIM meanwhile) closes it and
// leaves SOLVE ready for what was drawn. Escape offers the way back to the board as it was.
//
// The pen paints one cell where the button goes down and, unless it paints men, every cell that
// the pointer passes until the button goes up.
class EditorControl {
  public:
    EditorControl(Desk& desk, SettingsControl& settings, LevelControl& levels,
                  SolutionControl& solution)
        : desk_(desk), settings_(settings), levels_(levels), solution_(solution) {}

    void Open();
    void Done();
    void UndoAll();

    void SelectTool(int tool);
    void CellDown(int index);
    void CellMove(int index);  // the pointer is over this cell, or beside the board next to it
    void CellUp() { dragging_ = false; }
    void Shift(int index);
    void MirrorRotate(int index);
    void Clear();

  private:
    [[nodiscard]] bool PaintsMan() const { return tool_ >= kMan; }
    [[nodiscard]] bool Paint(int index, const char* refusal);
    void ShowBoard() { desk_.ShowBoard(levels_.Level().Board, man_); }

    Desk& desk_;
    SettingsControl& settings_;
    LevelControl& levels_;
    SolutionControl& solution_;

    OpenLevel before_;
    int tool_ = kNoTool;
    bool dragging_ = false;
    Picture man_ = Picture::ManDown;  // the way he looks is only his picture
};

}  // namespace kavit
