#include "solver/moves/build_solution.h"

#include <array>
#include <cassert>

namespace kavit {

namespace {

using Cells = BoardArrays::Cells;

constexpr int kUnreached = 1000;  // no distance on 323 cells comes near

// Walls, and the movable boxes of a position.
Cells BoardOf(const BoardArrays& arrays, const PositionStore& store, std::int32_t pos) {
    Cells board = arrays.EmptyBoard;
    const auto key = store.Key(pos);
    for (std::size_t i = 0; i + 1 < key.size(); ++i) {
        const int cell = arrays.KeyCell(key[i]);
        if (arrays.Inside(cell)) board[static_cast<std::size_t>(cell)] = 2;
    }
    return board;
}

// Distances from the target over free cells; the target holds 1.
std::array<int, kCells> ManDistances(const Cells& board, int target) {
    assert(BoardArrays::At(board, target) == 0);
    std::array<int, kCells> distance;
    distance.fill(kUnreached);
    std::vector<int> queue = {target};
    distance[static_cast<std::size_t>(target)] = 1;
    for (std::size_t i = 0; i < queue.size(); ++i) {
        for (const int step : Dir) {
            const int n = queue[i] + step;
            if (BoardArrays::At(board, n) != 0 ||
                distance[static_cast<std::size_t>(n)] != kUnreached)
                continue;
            distance[static_cast<std::size_t>(n)] =
                distance[static_cast<std::size_t>(queue[i])] + 1;
            queue.push_back(n);
        }
    }
    return distance;
}

struct MovedBox {
    int From = -1;
    int To = -1;
};

MovedBox FindMovedBox(const Cells& before, const Cells& after) {
    MovedBox moved;
    for (int c = Maxcol + 1; c < kCells; ++c) {
        const auto at = static_cast<std::size_t>(c);
        if (before[at] == after[at]) continue;
        (before[at] == 2 ? moved.From : moved.To) = c;
    }
    return moved;
}

[[noreturn]] void BrokenChain() {
    throw SolverFault("Internal error: the steps of the solution do not follow one another");
}

int DirectionOf(const MovedBox& moved) {
    for (int d = 0; d < 4; ++d)
        if (moved.To - moved.From == Dir[static_cast<std::size_t>(d)]) return d;
    BrokenChain();
}

}  // namespace

BuiltSolution BuildSolution(const BoardArrays& arrays, const std::vector<BoxPush>& pushes) {
    BuiltSolution built;
    Cells board = arrays.EmptyBoard;
    for (int c = arrays.FirstIn; c <= arrays.LastIn; ++c)
        if (arrays.Inside(c) && BoardArrays::At(arrays.BoxStart, c) != 0)
            board[static_cast<std::size_t>(c)] = 2;
    int man = arrays.ManStart;
    for (const BoxPush& push : pushes) {
        assert(push.Direction >= 0 && push.Direction < 4 && arrays.Inside(push.From));
        const int step = Dir[static_cast<std::size_t>(push.Direction)];
        const int stand = push.From - step;
        if (BoardArrays::At(board, push.From) != 2 || BoardArrays::At(board, stand) != 0 ||
            BoardArrays::At(board, push.From + step) != 0)
            BrokenChain();
        std::array<int, kCells> distance = ManDistances(board, stand);
        distance[static_cast<std::size_t>(push.From)] = 0;
        if (distance[static_cast<std::size_t>(man)] == kUnreached) BrokenChain();
        for (int d = distance[static_cast<std::size_t>(man)] - 1; d >= 0; --d) {
            std::size_t direction = 0;
            while (distance[static_cast<std::size_t>(man + Dir[direction])] != d) {
                ++direction;
                assert(direction < 4);
            }
            man += Dir[direction];
            built.SolBuild += (d > 0 ? kWalkLetters : kPushLetters)[direction];
            built.SolBuildMoves += 1;
        }
        assert(man == push.From);
        built.SolBuildPushes += 1;
        board[static_cast<std::size_t>(push.From)] = 0;
        board[static_cast<std::size_t>(push.From + step)] = 2;
    }
    assert(built.SolBuild.size() == static_cast<std::size_t>(built.SolBuildMoves));
    return built;
}

BuiltSolution BuildSolution(const BoardArrays& arrays, const PositionStore& store,
                            const std::vector<std::int32_t>& solSteps) {
    assert(solSteps.size() >= 2 && solSteps.back() == -1);
    std::vector<BoxPush> pushes;
    Cells before = BoardOf(arrays, store, 1);
    for (std::size_t k = 1; solSteps[k] != -1; ++k) {
        const Cells after = BoardOf(arrays, store, solSteps[k]);
        const MovedBox moved = FindMovedBox(before, after);
        pushes.push_back({moved.From, DirectionOf(moved)});
        before = after;
    }
    return BuildSolution(arrays, pushes);
}

}  // namespace kavit
