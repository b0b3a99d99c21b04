#include <algorithm>
#include <deque>
#include <stdexcept>

#include "twin/plain_twin.h"

namespace kavit {

namespace {

std::size_t At(std::int64_t index) {
    return static_cast<std::size_t>(index);
}

// Steps from one cell to another over free floor; -1 when there is no way.
int Walk(const PlainCells<std::uint8_t>& board, int from, int to) {
    PlainCells<int> steps;
    steps.fill(-1);
    steps[At(from)] = 0;
    std::deque<int> open{from};
    while (!open.empty()) {
        const int cell = open.front();
        open.pop_front();
        if (cell == to) return steps[At(cell)];
        for (const int dir : Dir) {
            const int n = cell + dir;
            if (board[At(n)] != 0 || steps[At(n)] >= 0) continue;
            steps[At(n)] = steps[At(cell)] + 1;
            open.push_back(n);
        }
    }
    return -1;
}

}  // namespace

// The whole path of the meeting, from the start to the solved level.
void PlainTwin::EvalMeeting(std::int32_t meetPos, std::int32_t meetParent) {
    const bool meetIsForward = PosRec[At(meetPos)].Tag % 10 == 1;
    std::vector<std::int32_t> path;
    for (std::int32_t p = meetIsForward ? meetPos : meetParent; p >= 1; p = PosRec[At(p)].Parent) {
        path.push_back(p);
    }
    std::reverse(path.begin(), path.end());
    for (std::int32_t p = meetIsForward ? meetParent : meetPos; p >= 1; p = PosRec[At(p)].Parent) {
        path.push_back(p);
    }
    const PlainKept found{CountMoves(path), static_cast<int>(path.size()) - 1, nSol};
    const auto byMoves = [](const PlainKept& k) { return std::pair(k.SolMoves, k.SolPushes); };
    const auto byPushes = [](const PlainKept& k) { return std::pair(k.SolPushes, k.SolMoves); };
    if (byMoves(found) < byMoves(Kept[0])) Kept[0] = found;
    if (byPushes(found) < byPushes(Kept[1])) Kept[1] = found;
}

int PlainTwin::CountMoves(const std::vector<std::int32_t>& path) const {
    int man = ManStart;
    int moves = 0;
    for (std::size_t i = 1; i < path.size(); ++i) {
        PlainCells<std::uint8_t> before = EmptyBoard;
        PlainCells<std::uint8_t> after = EmptyBoard;
        for (const int b : BoxCells(path[i - 1])) before[At(b)] = 2;
        for (const int b : BoxCells(path[i])) after[At(b)] = 2;
        int from = 0;
        int to = 0;
        for (int c = 0; c < kCells; ++c) {
            if (before[At(c)] == 2 && after[At(c)] != 2) from = c;
            if (before[At(c)] != 2 && after[At(c)] == 2) to = c;
        }
        const int stand = from - (to - from);
        const int walk = Walk(before, man, stand);
        if (walk < 0) throw std::logic_error("the man cannot walk to a push of the path");
        moves += walk + 1;
        man = from;
    }
    return moves;
}

}  // namespace kavit
