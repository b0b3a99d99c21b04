#pragma once

#include <optional>

#include "app/model/desk.h"
#include "app/model/level_control.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"
#include "level/history.h"

namespace kavit {

// The editing mode: Edit Board opens it, DONE (the caption of btnANIM meanwhile) closes it and
// leaves SOLVE ready for what was drawn. Escape offers the way back to the board as it was.
//
// A stroke, a shape, a shift, a turn, CLEAR, a paste are each one step of undo and redo; undoing
// everything can be undone as well. While the board is drawn, what keeps it from being solved is
// marked and said.
//
// The pen paints one cell where the button goes down and, unless it paints men, every cell that
// the pointer passes until the button goes up.
class EditorControl {
  public:
    // What a press does: the pen draws, or it lays out the walls of a room, or floods an area.
    enum class Shape : std::uint8_t { Pen, Rectangle, Fill };

    EditorControl(Desk& desk, SettingsControl& settings, LevelControl& levels,
                  SolutionControl& solution)
        : desk_(desk), settings_(settings), levels_(levels), solution_(solution) {}

    void Open();
    void Done();
    void UndoAll();

    void SelectTool(int tool);
    void SelectShape(Shape shape);
    void CellDown(int index, bool erase);
    void CellMove(int index);  // the pointer is over this cell, or beside the board next to it
    void CellUp();
    void Undo() { Take(&History<OpenLevel>::Undo); }
    void Redo() { Take(&History<OpenLevel>::Redo); }
    void Shift(int index);
    void MirrorRotate(int index);
    void Clear();
    // Another level in the place of the drawing.
    void Put(const Board& board);
    // After each command: the drawing and its marks.
    void Present();

  private:
    [[nodiscard]] bool PaintsMan() const { return pen_ >= kMan; }
    void Take(const OpenLevel& (History<OpenLevel>::*step)());
    void Changed();
    [[nodiscard]] bool Paint(int index, const char* refusal);

    Desk& desk_;
    SettingsControl& settings_;
    LevelControl& levels_;
    SolutionControl& solution_;

    OpenLevel before_;
    int tool_ = kNoTool;
    Shape shape_ = Shape::Pen;
    bool dragging_ = false;
    int pen_ = kFloor;                 // what is painted with
    int corner_ = 0;                   // of a rectangle that is dragged open
    std::optional<Board> underneath_;  // and the board without it
    History<OpenLevel> history_;
    bool drawn_ = false;              // something was, since the editor opened
    Picture man_ = Picture::ManDown;  // the way he looks is only his picture
};

}  // namespace kavit
