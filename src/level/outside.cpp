#include "level/outside.h"

#include <algorithm>
#include <bitset>

#include "level/steps.h"

namespace kavit {

std::vector<int> OutsideFloor(const Board& board) {
    std::bitset<kCells> seen;
    std::vector<int> reached;
    const auto reach = [&](int cell) {
        if (cell < 0 || CodeAt(board, cell) == kWall || seen[static_cast<std::size_t>(cell)])
            return;
        seen.set(static_cast<std::size_t>(cell));
        reached.push_back(cell);
    };
    for (int cell = 0; cell < kCells; ++cell) {
        for (int direction = 0; direction < 4; ++direction)
            if (NextCell(cell, direction) < 0) reach(cell);
    }
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (int direction = 0; direction < 4; ++direction) reach(NextCell(reached[i], direction));
    }
    const auto isMan = [](std::uint8_t code) { return code >= kMan; };
    const bool outside = std::any_of(reached.begin(), reached.end(),
                                     [&](int cell) { return isMan(CodeAt(board, cell)); });
    if (outside || std::none_of(board.Cell.begin(), board.Cell.end(), isMan)) return {};
    std::erase_if(reached, [&](int cell) { return CodeAt(board, cell) != kFloor; });
    return reached;
}

}  // namespace kavit
