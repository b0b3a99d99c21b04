#include "support/plain_oracle.h"

#include <algorithm>
#include <queue>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kavit::test {

namespace {

// Two bytes a cell: the man first, then the boxes in order.
using State = std::u16string;
using Cost = std::pair<int, int>;  // what is to be few first, then the other

struct Rules {
    explicit Rules(const Board& level) : board(level) {}
    const Board& board;

    [[nodiscard]] int Code(int cell) const { return board.Cell[static_cast<std::size_t>(cell)]; }
    // The neighbour in a direction, -1 at the edge of the board and at walls.
    [[nodiscard]] int Neighbour(int cell, int dir) const {
        const int col = cell % Maxcol;
        if ((dir == -1 && col == 0) || (dir == 1 && col == Maxcol - 1)) return -1;
        const int next = cell + dir;
        return next < 0 || next >= kCells || Code(next) == kWall ? -1 : next;
    }
    [[nodiscard]] State Start() const {
        State state(1, u'\0');
        for (int c = 0; c < kCells; ++c) {
            if (Code(c) == kMan || Code(c) == kManOnGoal) state[0] = static_cast<char16_t>(c);
            if (Code(c) == kBox || Code(c) == kBoxOnGoal) state += static_cast<char16_t>(c);
        }
        return state;
    }
    [[nodiscard]] bool Solved(const State& state) const {
        return std::all_of(state.begin() + 1, state.end(), [this](char16_t cell) {
            const int code = Code(cell);
            return code == kGoal || code == kBoxOnGoal || code == kManOnGoal;
        });
    }
    // The state after one step; false when the step is not allowed. `pushed` says that a box moved.
    [[nodiscard]] bool Step(const State& state, int dir, State& next, bool& pushed) const {
        const int to = Neighbour(state[0], dir);
        if (to < 0) return false;
        next = state;
        next[0] = static_cast<char16_t>(to);
        const auto box = std::find(next.begin() + 1, next.end(), static_cast<char16_t>(to));
        pushed = box != next.end();
        if (!pushed) return true;
        const int beyond = Neighbour(to, dir);
        if (beyond < 0) return false;
        if (std::find(next.begin() + 1, next.end(), static_cast<char16_t>(beyond)) != next.end()) {
            return false;
        }
        *box = static_cast<char16_t>(beyond);
        std::sort(next.begin() + 1, next.end());
        return true;
    }
};

}  // namespace

OracleAnswer AskOracle(const Board& board, std::size_t maxStates, OracleAim aim) {
    const bool pushesFirst = aim == OracleAim::FewestPushes;
    const Rules rules(board);
    using Entry = std::tuple<Cost, State>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    std::unordered_map<State, Cost> best;
    const State start = rules.Start();
    best[start] = {0, 0};
    open.push({{0, 0}, start});
    while (!open.empty()) {
        const auto [cost, state] = open.top();
        open.pop();
        if (cost > best[state]) continue;
        if (rules.Solved(state)) {
            return {OracleVerdict::Solvable, pushesFirst ? cost.first : cost.second,
                    pushesFirst ? cost.second : cost.first};
        }
        if (best.size() > maxStates) return {OracleVerdict::TooBig, 0, 0};
        State next;
        bool pushed = false;
        for (const int dir : Dir) {
            if (!rules.Step(state, dir, next, pushed)) continue;
            const int push = pushed ? 1 : 0;
            const Cost reached = pushesFirst ? Cost{cost.first + push, cost.second + 1}
                                             : Cost{cost.first + 1, cost.second + push};
            const auto [entry, isNew] = best.try_emplace(next, reached);
            if (!isNew && reached >= entry->second) continue;
            entry->second = reached;
            open.push({reached, next});
        }
    }
    return {OracleVerdict::Unsolvable, 0, 0};
}

}  // namespace kavit::test
