#include "level/steps.h"

namespace kavit {

namespace {

std::uint8_t& Code(Board& board, int cell) {
    return board.Cell[static_cast<std::size_t>(cell)];
}

void Clear(Board& board, int cell) {
    Code(board, cell) = OnGoal(Code(board, cell)) ? kGoal : kFloor;
}

void PutBox(Board& board, int cell) {
    Code(board, cell) = OnGoal(Code(board, cell)) ? kBoxOnGoal : kBox;
}

void PutMan(Board& board, int cell) {
    Code(board, cell) = OnGoal(Code(board, cell)) ? kManOnGoal : kMan;
    board.ManPos = static_cast<std::int16_t>(cell);
}

}  // namespace

bool FreeCell(const Board& board, int cell) {
    return cell >= 0 && cell < kCells && CodeAt(board, cell) != kWall &&
           !HoldsBox(CodeAt(board, cell));
}

int DirectionOf(char letter) {
    const std::size_t at = (IsPush(letter) ? kPushLetters : kWalkLetters).find(letter);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

bool IsPush(char letter) {
    return kPushLetters.find(letter) != std::string_view::npos;
}

int TheMan(const Board& board) {
    int man = -1;
    for (int cell = 0; cell < kCells; ++cell) {
        if (!HoldsMan(CodeAt(board, cell))) continue;
        if (man >= 0) return -1;
        man = cell;
    }
    return man;
}

char StepMan(Board& board, int direction) {
    const int to = NextCell(board.ManPos, direction);
    if (to < 0 || CodeAt(board, to) == kWall) return '\0';
    const bool push = HoldsBox(CodeAt(board, to));
    if (push) {
        const int beyond = NextCell(to, direction);
        if (!FreeCell(board, beyond)) return '\0';
        PutBox(board, beyond);
    }
    Clear(board, board.ManPos);
    PutMan(board, to);
    return (push ? kPushLetters : kWalkLetters)[static_cast<std::size_t>(direction)];
}

void TakeBack(Board& board, char letter) {
    const int direction = DirectionOf(letter);
    const int man = board.ManPos;
    Clear(board, man);
    if (IsPush(letter)) {
        Clear(board, NextCell(man, direction));
        PutBox(board, man);
    }
    PutMan(board, NextCell(man, (direction + 2) % 4));
}

bool IsSolved(const Board& board) {
    bool any = false;
    for (const std::uint8_t code : board.Cell) {
        if (code == kBox) return false;
        any = any || code == kBoxOnGoal;
    }
    return any;
}

}  // namespace kavit
