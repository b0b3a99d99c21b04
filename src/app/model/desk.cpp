#include "app/model/desk.h"

#include "level/outside.h"

namespace kavit {

bool Desk::Refused(Need need) {
    const char* const text = RefusalOf(Now(), need);
    if (text != nullptr) Say(text);
    return text != nullptr;
}

void Desk::Show() {
    Screen.Phase = Now();
    Screen.Keys = ButtonsOf(machine_);
    view_.Show(Screen);
}

void Desk::ShowMsg(Result number, const MessageValues& values) {
    PutLines(messages_.ShowMsg(number, values));
}

void Desk::PutLines(const MessageLines& lines) {
    if (lines.Left) Screen.Left = *lines.Left;
    if (lines.Right) Screen.Right = *lines.Right;
}

void Desk::ShowBoard(const Board& board, Picture man) {
    for (std::size_t cell = 0; cell < board.Cell.size(); ++cell) {
        Screen.Cells[cell] = board.Cell[cell] == kMan ? man : PictureOf(board.Cell[cell]);
    }
    if (IsEditing(Now())) return;  // all of the grid can be drawn on
    for (const int cell : OutsideFloor(board))
        Screen.Cells[static_cast<std::size_t>(cell)] = Picture::Outside;
}

void Desk::SetTitle(const std::string& rest) {
    Screen.Title = rest.empty() ? program_ : program_ + " " + rest;
}

void Desk::ClearLabels() {
    Screen.Debug.clear();
    Screen.Timer.clear();
    Screen.Side.clear();
    Screen.Details.clear();
    Screen.Progress = 0;
}

}  // namespace kavit
