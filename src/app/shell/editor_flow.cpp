#include "app/shell/pictures.h"
#include "app/shell/shell.h"

// The editing mode: Edit Board opens it, DONE (the caption of btnANIM meanwhile) closes it and
// leaves SOLVE ready for what was drawn. Escape offers the way back to the board as it was.
namespace kavit {

void Shell::EditBoard() {
    if (Refused(Guard::Edit) || editing_) return;
    SetTitle(Tr("Editing"));
    ApplyPending();
    boardBackup_ = board_;
    movedBackup_ = boardMoved_;
    ShowMsg(static_cast<int>(Result::Editing));
    view_.SetEnabled(Control::btnCLEAR, true);
    SetSolve(SolveState::Solve);  // what CLEAR enables, whatever was solved before
    view_.SetEnabled(Control::btnSOLVE, false);
    SetAnim(AnimCaption::Done, true);
    editing_ = true;
    editor_.Open();
    ShowBoard();  // a replay may have left its last move there
    ShowTools();
    ShowEditorButtons(true);
    view_.SetProgress(0);
    view_.SetVisible(Control::PBarAdvance, false);
}

// DONE keeps what was drawn.
void Shell::FinishEditing() {
    editing_ = false;
    editor_.Close();
    ShowTools();
    ShowEditorButtons(false);
    view_.SetVisible(Control::PBarAdvance, true);
    if (board_.Cell != boardBackup_.Cell) {
        boardImported_ = true;
        badBoard_ = false;
    }
    ForgetSolution();
    SetTitle(levelName_);
    ClearLabels();
    ShowMsg(0);
    SetAnim(AnimCaption::Anim, false);
    SetSolve(SolveState::Solve);
    view_.SetEnabled(Control::btnSOLVE, true);
    view_.SetEnabled(Control::btnCLEAR, true);
}

void Shell::UndoAll() {
    if (!editing_) return;
    if (board_ == boardBackup_) return FinishEditing();
    if (!view_.AskYesNo(Tr("Undo all changes since the editing began?"))) return;
    editor_.CellUp();
    board_ = boardBackup_;
    boardMoved_ = movedBackup_;
    ShowBoard();
}

void Shell::ShowEditorButtons(bool visible) {
    view_.SetVisible(Control::frmCommands, visible);
}

void Shell::SelectTool(int tool) {
    if (editing_) {
        editor_.SelectTool(tool);
    } else {
        eggCode_ = (eggCode_ * 10 + tool) % 1000;
    }
    ShowTools();
}

// A palette button toggles by itself when it is clicked, so all are set.
void Shell::ShowTools() {
    for (int tool = 0; tool < 10; ++tool) {
        view_.SetChecked(At(Control::ImgEdit0, tool), editing_ && editor_.Tool() == tool);
    }
}

void Shell::CellDown(int index) {
    if (editing_) ShowEdit(editor_.CellDown(board_, index));
}

void Shell::CellMove(int index, int x, int y) {
    (void)index;  // offsets count from the cell where the button went down, which is this one
    if (editing_) ShowEdit(editor_.CellMove(board_, x, y));
}

void Shell::CellUp(int index) {
    (void)index;
    editor_.CellUp();
}

void Shell::ShowEdit(const EditReply& reply) {
    for (const int cell : reply.Cells) {
        view_.ShowCell(cell, PictureOf(board_.Cell[static_cast<std::size_t>(cell)]));
    }
    if (!reply.Message.empty()) Say(Tr(reply.Message.c_str()));
}

void Shell::ShiftClicked(int index) {
    if (editing_) ShowTransform(ShiftBoard(board_, index));
}

void Shell::MirrorRotateClicked(int index) {
    if (editing_) ShowTransform(MirrorRotate(board_, index));
}

void Shell::ShowTransform(const TransformReply& reply) {
    if (reply.Changed) {
        boardMoved_ = true;
        ShowBoard();
    }
    if (!reply.Message.empty()) Say(Tr(reply.Message.c_str()));
}

void Shell::ClearClicked() {
    if (RefusedWhileSolving()) return;
    SetTitle("");
    view_.SetProgress(0);
    view_.SetText(Control::lblDebug, "");
    view_.SetText(Control::lblTimer, "");
    if (!editing_) {
        Reset();
        view_.SetEnabled(Control::btnCLEAR, false);
        SetAnim(AnimCaption::Anim, false);
        SetSolve(SolveState::Solve);
        importMode_ = importing_ = false;
    }
    view_.SetEnabled(Control::btnSOLVE, true);
    ForgetSolution();
    levelName_.clear();
    ClearBoard(board_);
    ShowBoard();
    SetImportVisible(false);
    editor_.CellUp();
}

}  // namespace kavit
