#include "level/editor.h"

#include <algorithm>

#include "level/import_grid.h"

namespace kavit {

namespace {

std::uint8_t& CellAt(Board& board, int index) {
    return board.Cell[static_cast<std::size_t>(index)];
}

// How many cells the pointer is away, along one axis. One unit before the cell is the cell before.
int CellOffset(int units) {
    return units / kCellUnits - (units < 0 ? 1 : 0);
}

// Takes the man off the square where he stood before.
void LiftOldMan(Board& board, EditReply& reply) {
    const int index = board.ManPos;
    if (index < 0 || index >= kCells) return;
    std::uint8_t& cell = CellAt(board, index);
    if (cell != kMan && cell != kManOnGoal) return;
    cell = cell == kManOnGoal ? kGoal : kFloor;
    reply.Cells.push_back(index);
}

}  // namespace

void Editor::Open() {
    editing_ = true;
    dragOn_ = false;
    tool_ = kWall;
}

void Editor::Close() {
    editing_ = false;
    dragOn_ = false;
    tool_ = kNoTool;
}

void Editor::SelectTool(int tool) {
    if (editing_ && tool >= 0 && tool < kTools) tool_ = tool;
}

void Editor::Paint(Board& board, int index, EditReply& reply) const {
    std::uint8_t& cell = CellAt(board, index);
    if (cell != tool_) reply.Cells.push_back(index);
    cell = static_cast<std::uint8_t>(tool_);
    if (tool_ != kFloor) WidenExtent(board, index / Maxcol + 1, index % Maxcol + 1);
}

EditReply Editor::CellDown(Board& board, int index) {
    EditReply reply;
    if (!editing_ || index < 0 || index >= kCells) return reply;
    dragOn_ = !PaintsMan();
    dragRow_ = index / Maxcol + 1;
    dragCol_ = index % Maxcol + 1;
    const std::uint8_t old = CellAt(board, index);
    if (old == tool_) return reply;
    if (old >= kMan && !PaintsMan()) {
        dragOn_ = false;
        reply.Message = "You can't erase the Man";
        return reply;
    }
    Paint(board, index, reply);
    if (PaintsMan() && board.ManPos != index) {
        LiftOldMan(board, reply);
        board.ManPos = static_cast<std::int16_t>(index);
    }
    return reply;
}

EditReply Editor::CellMove(Board& board, int x, int y) {
    EditReply reply;
    if (!editing_ || !dragOn_) return reply;
    const int row = std::clamp(dragRow_ + CellOffset(y), 1, Maxrow);
    const int col = std::clamp(dragCol_ + CellOffset(x), 1, Maxcol);
    const int index = (row - 1) * Maxcol + (col - 1);
    if (CellAt(board, index) >= kMan) {
        reply.Message = "Can't drag over the Man";
    } else {
        Paint(board, index, reply);
    }
    return reply;
}

void Editor::CellUp() {
    dragOn_ = false;
}

}  // namespace kavit
