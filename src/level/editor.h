#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "level/board.h"

namespace kavit {

inline constexpr int kNoTool = -1;
inline constexpr int kTools = 10;       // a tool is the cell code that it paints
inline constexpr int kCellUnits = 330;  // side of a cell in the units of CellMove

// What a press or a drag did: the cells whose code changed, and a refusal to show, "" for none.
struct EditReply {
    std::vector<int> Cells;
    std::string Message;
};

// The pen of the board editor. It paints one cell where the button goes down and, unless it paints
// men, every cell that the pointer passes until the button goes up. Between Open and Close only.
//
// It keeps the man single as far as ManPos tells where he is; a board that was shifted since may
// end up with two. Painting widens the board's extent; floor never shrinks it.
class Editor {
  public:
    void Open();  // with the wall as its tool
    void Close();
    [[nodiscard]] bool Editing() const { return editing_; }

    // Tool 0..9; anything else, and any call while closed, is ignored.
    void SelectTool(int tool);
    [[nodiscard]] int Tool() const { return tool_; }

    EditReply CellDown(Board& board, int index);
    // The pointer is at (x, y), measured from the top left corner of the cell where the button went
    // down. Beyond the board's edge the nearest cell counts.
    EditReply CellMove(Board& board, int x, int y);
    void CellUp();

  private:
    [[nodiscard]] bool PaintsMan() const { return tool_ >= kMan; }
    void Paint(Board& board, int index, EditReply& reply) const;

    bool editing_ = false;
    int tool_ = kNoTool;
    bool dragOn_ = false;
    int dragRow_ = 1;
    int dragCol_ = 1;
};

}  // namespace kavit
