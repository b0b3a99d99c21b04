#include "app/model/editor_control.h"

#include "level/editor.h"
#include "level/editor_shapes.h"
#include "level/refusal.h"
#include "level/transform.h"

namespace kavit {

void EditorControl::Open() {
    if (desk_.Refused(Need::Edit) || IsEditing(desk_.Now())) return;
    settings_.ApplyPending();
    before_ = levels_.Level();
    history_ = History<OpenLevel>(before_);
    drawn_ = false;
    desk_.Fire(Event::EditOpened);
    desk_.SetTitle("Editing");
    desk_.ShowMsg(Result::Editing);
    desk_.ClearLabels();
    dragging_ = false;
    man_ = Picture::ManDown;
    SelectTool(kWall);
    SelectShape(Shape::Pen);
}

void EditorControl::Done() {
    if (!IsEditing(desk_.Now())) return;
    desk_.Fire(Event::EditClosed);
    tool_ = desk_.Screen.Tool = kNoTool;
    OpenLevel& level = levels_.Level();
    if (level.Board.Cell != before_.Board.Cell) level.Bad = false;
    solution_.Forget();
    desk_.SetTitle(level.Name());
    desk_.ClearLabels();
    desk_.ShowMsg(Result::Ok);
    desk_.Window().Focus(Place::NextButton);
}

void EditorControl::UndoAll() {
    const OpenLevel& level = levels_.Level();
    if (level.Board == before_.Board && level.FileName == before_.FileName) return Done();
    if (desk_.Window().Ask("Undo all changes since the editing began?", Choices::YesNo) !=
        Choice::Yes) {
        return;
    }
    CellUp();
    levels_.Level() = before_;
    desk_.Fire(Event::EditUndone);
    desk_.SetTitle("Editing");
    Changed();
}

void EditorControl::Take(const OpenLevel& (History<OpenLevel>::*step)()) {
    if (!IsEditing(desk_.Now())) return;
    CellUp();
    levels_.Level() = (history_.*step)();
    drawn_ = true;
}

// A step is complete.
void EditorControl::Changed() {
    history_.Note(levels_.Level());
    drawn_ = true;
    desk_.ClearLabels();
    desk_.ShowMsg(Result::Editing);  // what a refused paste said no longer holds
}

void EditorControl::SelectShape(Shape shape) {
    shape_ = shape;
    desk_.Screen.Shape = static_cast<int>(shape);
}

void EditorControl::SelectTool(int tool) {
    if (tool < 0 || tool >= kTools) return;
    tool_ = desk_.Screen.Tool = tool;
}

void EditorControl::CellDown(int index, bool erase) {
    if (!IsEditing(desk_.Now())) return;
    pen_ = erase ? kFloor : tool_;
    underneath_.reset();
    if (shape_ != Shape::Pen && !erase && !PaintsMan()) {
        corner_ = index;
        dragging_ = shape_ == Shape::Rectangle;
        if (dragging_) underneath_ = levels_.Level().Board;
        if (shape_ == Shape::Fill) (void)FillArea(levels_.Level().Board, index, pen_);
        return;
    }
    if (PaintsMan() && pen_ != kManOnGoal) man_ = PictureOf(pen_);
    dragging_ = Paint(index, "You can't erase the Man") && !PaintsMan();
}

void EditorControl::CellMove(int index) {
    if (!IsEditing(desk_.Now()) || !dragging_) return;
    if (!underneath_) {
        (void)Paint(index, "Can't drag over the Man");
        return;
    }
    levels_.Level().Board = *underneath_;
    (void)DrawRectangle(levels_.Level().Board, corner_, index, pen_);
}

void EditorControl::CellUp() {
    if (!IsEditing(desk_.Now())) return;
    dragging_ = false;
    if (levels_.Level() != history_.Now()) Changed();
}

// False when the man stands there: only another man takes his place.
bool EditorControl::Paint(int index, const char* refusal) {
    // The three men who look to a side are the man.
    const int code = PaintsMan() && pen_ != kManOnGoal ? kMan : pen_;
    const bool painted = PaintCell(levels_.Level().Board, index, static_cast<std::uint8_t>(code));
    if (!painted) desk_.Say(refusal);
    return painted;
}

void EditorControl::Shift(int index) {
    if (!IsEditing(desk_.Now())) return;
    CellUp();
    if (ShiftBoard(levels_.Level().Board, index)) Changed();
}

void EditorControl::Put(const Board& board) {
    CellUp();
    levels_.Level().Board = board;
    Changed();
}

void EditorControl::MirrorRotate(int index) {
    if (!IsEditing(desk_.Now())) return;
    Board& board = levels_.Level().Board;
    if (!kavit::MirrorRotate(board, index)) {
        Board cut = board;
        RecomputeExtent(cut);
        desk_.Say("This level is " + std::to_string(cut.MaxCol - cut.MinCol + 1) +
                  " columns wide; only levels of up to " + std::to_string(Maxrow) +
                  " columns can be turned or mirrored");
    }
    Changed();
}

// CLEAR, in the editor or not.
void EditorControl::Clear() {
    if (desk_.Refused(Need::Exit)) return;
    if (!IsEditing(desk_.Now())) desk_.ShowMsg(Result::StartUp);
    CellUp();
    levels_.Clear();
    if (IsEditing(desk_.Now())) Changed();
}

void EditorControl::Present() {
    if (!IsEditing(desk_.Now())) return;
    desk_.ShowBoard(levels_.Level().Board, man_);
    BoardMarks& marks = desk_.Screen.Marks = {};
    if (!drawn_) return;
    std::string& line = desk_.Screen.Right;
    line.clear();
    for (const Refusal& refusal : WhyRefused(levels_.Level().Board)) {
        line += (line.empty() ? "" : "; ") + refusal.Text;
        marks.Wrong.insert(marks.Wrong.end(), refusal.Cells.begin(), refusal.Cells.end());
    }
}

}  // namespace kavit
