#include "level/paths.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <tuple>
#include <utility>

#include "level/steps.h"

namespace kavit {

namespace {

constexpr int Opposite(int direction) {
    return (direction + 2) % 4;
}

// A walk over the free cells from one of them: the steps to each, and the direction of the last.
struct Walk {
    Walk(const Board& board, int from) {
        Steps.fill(-1);
        Steps[static_cast<std::size_t>(from)] = 0;
        std::vector<int> open = {from};
        for (std::size_t i = 0; i < open.size(); ++i) {
            for (int direction = 0; direction < 4; ++direction) {
                const int next = NextCell(open[i], direction);
                if (!FreeCell(board, next) || StepsTo(next) >= 0) continue;
                Steps[static_cast<std::size_t>(next)] = StepsTo(open[i]) + 1;
                Last[static_cast<std::size_t>(next)] = direction;
                open.push_back(next);
            }
        }
    }
    [[nodiscard]] int StepsTo(int cell) const { return Steps[static_cast<std::size_t>(cell)]; }
    [[nodiscard]] std::string Letters(int to) const {
        std::string letters;
        while (StepsTo(to) > 0) {
            const int direction = Last[static_cast<std::size_t>(to)];
            letters += kWalkLetters[static_cast<std::size_t>(direction)];
            to = NextCell(to, Opposite(direction));
        }
        std::reverse(letters.begin(), letters.end());
        return letters;
    }

    std::array<int, kCells> Steps{};
    std::array<int, kCells> Last{};
};

}  // namespace

std::optional<std::string> WalkPath(const Board& board, int to) {
    const int man = TheMan(board);
    if (man < 0 || !FreeCell(board, to)) return std::nullopt;
    const Walk walk(board, man);
    if (walk.StepsTo(to) < 0) return std::nullopt;
    return walk.Letters(to);
}

BoxPaths::BoxPaths(const Board& board, int box) : board_(board), box_(box), man_(TheMan(board)) {
    if (man_ < 0 || box < 0 || box >= kCells || !HoldsBox(CodeAt(board, box))) return;
    board_.ManPos = static_cast<std::int16_t>(man_);
    auto& boxCode = board_.Cell[static_cast<std::size_t>(box)];

    using Entry = std::tuple<int, int, int>;  // pushes, steps, state; -1: where the man stands now
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    open.emplace(0, 0, -1);
    const std::uint8_t withBox = boxCode;
    boxCode = OnGoal(withBox) ? kGoal : kFloor;
    while (!open.empty()) {
        const auto [pushes, steps, state] = open.top();
        open.pop();
        if (state >= 0) {
            const Cost& best = cost_[static_cast<std::size_t>(state)];
            if (best.Pushes != pushes || best.Steps != steps) continue;
        }
        const int cell = state < 0 ? box : state / 4;
        const int man = state < 0 ? man_ : NextCell(cell, state % 4);
        std::uint8_t& code = board_.Cell[static_cast<std::size_t>(cell)];
        const std::uint8_t empty = std::exchange(code, kWall);
        const Walk walk(board_, man);
        code = empty;
        for (int direction = 0; direction < 4; ++direction) {
            const int from = NextCell(cell, Opposite(direction));
            const int to = NextCell(cell, direction);
            if (from < 0 || walk.StepsTo(from) < 0 || !FreeCell(board_, to)) continue;
            const int next = to * 4 + Opposite(direction);
            const Cost cost{pushes + 1, steps + walk.StepsTo(from)};
            Cost& best = cost_[static_cast<std::size_t>(next)];
            if (best.Pushes >= 0 &&
                std::tie(best.Pushes, best.Steps) <= std::tie(cost.Pushes, cost.Steps))
                continue;
            best = cost;
            before_[static_cast<std::size_t>(next)] = state;
            open.emplace(cost.Pushes, cost.Steps, next);
        }
    }
    boxCode = withBox;
}

int BoxPaths::BestState(int cell) const {
    int best = -1;
    for (int state = cell * 4; state < cell * 4 + 4; ++state) {
        const Cost& cost = cost_[static_cast<std::size_t>(state)];
        if (cost.Pushes < 0) continue;
        const Cost& least = cost_[static_cast<std::size_t>(best < 0 ? state : best)];
        if (best < 0 || std::tie(cost.Pushes, cost.Steps) < std::tie(least.Pushes, least.Steps))
            best = state;
    }
    return best;
}

std::vector<int> BoxPaths::Cells() const {
    std::vector<int> cells;
    for (int cell = 0; cell < kCells; ++cell)
        if (cell != box_ && BestState(cell) >= 0) cells.push_back(cell);
    return cells;
}

std::optional<std::string> BoxPaths::To(int cell) const {
    if (cell == box_) return "";
    if (cell < 0 || cell >= kCells || BestState(cell) < 0) return std::nullopt;
    std::vector<int> directions;
    for (int state = BestState(cell); state >= 0; state = before_[static_cast<std::size_t>(state)])
        directions.push_back(Opposite(state % 4));
    Board board = board_;
    std::string letters;
    int box = box_;
    for (auto direction = directions.rbegin(); direction != directions.rend(); ++direction) {
        const Walk walk(board, board.ManPos);
        const std::string way = walk.Letters(NextCell(box, Opposite(*direction)));
        for (const char letter : way) StepMan(board, DirectionOf(letter));
        letters += way;
        letters += StepMan(board, *direction);
        box = NextCell(box, *direction);
    }
    return letters;
}

}  // namespace kavit
