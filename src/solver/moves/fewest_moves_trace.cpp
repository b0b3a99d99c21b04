#include "solver/moves/fewest_moves_trace.h"

#include <algorithm>
#include <cassert>

#include "solver/types.h"

namespace kavit {

namespace {

std::size_t At(int i) {
    assert(i >= 0);
    return static_cast<std::size_t>(i);
}

class Tracer {
  public:
    Tracer(const Grid& grid, const MovesTable& table) : grid_(grid), table_(table) {}

    // From the meeting back to the start; the pushes come last one first.
    void TraceBack(MovesPosition at, int moves, std::vector<BoxPush>& pushes) {
        while (moves > 0) {
            const int direction = StepBack(at, moves);
            pushes.push_back({grid_.BitToCell[At(pushed_)], direction});
        }
        assert(moves == 0);  // at the start
    }
    // From the meeting on to the end.
    void TraceOn(MovesPosition at, int moves, std::vector<BoxPush>& pushes) {
        while (moves > 0) {
            const int direction = StepOn(at, moves);
            pushes.push_back({grid_.BitToCell[At(pushed_)], direction});
        }
        assert(moves == 0);  // at the end
    }

  private:
    // The push that left the man where he stands, and a position before it from which it was
    // offered. Answers the direction; pushed_ is where the box stood.
    int StepBack(MovesPosition& at, int& moves) {
        for (int d = 0; d < 4; ++d) {
            const int step = grid_.Step[At(d)];
            if (!Has(at, at.Man + step) || !Free(at, at.Man - step)) continue;
            MovesPosition before = Moved(at, at.Man + step, at.Man);
            const std::vector<int> walk = Walks(before, at.Man - step);
            for (const int man : grid_.InsideBits) {
                if (walk[At(man)] < 0) continue;
                before.Man = man;
                if (!IsStep(before, 0, moves - walk[At(man)] - 1)) continue;
                pushed_ = at.Man;
                moves -= walk[At(man)] + 1;
                at = before;
                return d;
            }
        }
        Broken();
    }
    int StepOn(MovesPosition& at, int& moves) {
        const std::vector<int> walk = Walks(at, at.Man);
        for (const int box : at.Boxes) {
            for (int d = 0; d < 4; ++d) {
                const int step = grid_.Step[At(d)];
                if (!Free(at, box - step) || walk[At(box - step)] < 0 || !Free(at, box + step))
                    continue;
                MovesPosition after = Moved(at, box, box + step);
                after.Man = box;
                if (!IsStep(after, 1, moves - walk[At(box - step)] - 1)) continue;
                pushed_ = box;
                moves -= walk[At(box - step)] + 1;
                at = after;
                return d;
            }
        }
        Broken();
    }
    // The position is in the table, and was taken on by the side with so many moves.
    bool IsStep(const MovesPosition& position, int side, int moves) {
        const std::uint64_t mix = position.Write(grid_, key_);
        const std::int32_t pos = table_.Find(key_.data(), mix);
        return pos != 0 && table_.Expanded(pos, side) && table_.Moves(pos, side) == moves;
    }

    [[nodiscard]] bool Inside(int bit) const {
        return bit >= 0 && bit < Grid::kMaxBits &&
               grid_.CellToBit[At(grid_.BitToCell[At(bit)])] == bit;
    }
    static bool Has(const MovesPosition& position, int bit) {
        return std::binary_search(position.Boxes.begin(), position.Boxes.end(), bit);
    }
    [[nodiscard]] bool Free(const MovesPosition& position, int bit) const {
        return Inside(bit) && !Has(position, bit);
    }
    static MovesPosition Moved(const MovesPosition& position, int from, int to) {
        MovesPosition moved = position;
        assert(Has(position, from) && !Has(position, to));
        *std::find(moved.Boxes.begin(), moved.Boxes.end(), from) = to;
        std::sort(moved.Boxes.begin(), moved.Boxes.end());
        return moved;
    }
    // The man's steps from a cell to every other, -1 where he cannot go.
    [[nodiscard]] std::vector<int> Walks(const MovesPosition& position, int from) const {
        assert(Free(position, from));
        std::vector<int> steps(Grid::kMaxBits, -1);
        std::vector<int> queue = {from};
        steps[At(from)] = 0;
        for (std::size_t i = 0; i < queue.size(); ++i) {
            for (const int step : grid_.Step) {
                const int next = queue[i] + step;
                if (!Free(position, next) || steps[At(next)] >= 0) continue;
                steps[At(next)] = steps[At(queue[i])] + 1;
                queue.push_back(next);
            }
        }
        return steps;
    }
    [[noreturn]] static void Broken() {
        throw SolverFault("Internal error: the way to a meeting cannot be followed");
    }

    const Grid& grid_;
    const MovesTable& table_;
    std::vector<std::uint8_t> key_;
    int pushed_ = 0;
};

}  // namespace

std::uint64_t MovesPosition::Write(const Grid& grid, std::vector<std::uint8_t>& key) const {
    key.clear();
    assert(std::is_sorted(Boxes.begin(), Boxes.end()));
    std::uint64_t mix = grid.ManMix[At(Man)];
    for (const int bit : Boxes) {
        key.push_back(grid.BitToKey[At(bit)]);
        mix ^= grid.BoxMix[At(bit)];
    }
    key.push_back(grid.ManByte(Man));
    return mix;
}

MovesPosition MovesPosition::Read(const Grid& grid, const std::uint8_t* key, std::size_t boxes) {
    MovesPosition position;
    for (std::size_t i = 0; i < boxes; ++i) position.Boxes.push_back(grid.KeyToBit[key[i]]);
    position.Man = grid.KeyToBit[key[boxes]];
    assert(position.Man >= 0 && position.Boxes.size() == boxes);
    return position;
}

std::vector<BoxPush> TracePushes(const Grid& grid, const MovesTable& table, std::int32_t meeting) {
    assert(meeting >= 1 && meeting <= table.Count());
    assert(table.Moves(meeting, 0) < MovesTable::kUnknown);
    assert(table.Moves(meeting, 1) < MovesTable::kUnknown);
    const auto at = MovesPosition::Read(grid, table.Key(meeting), grid.GoalBits.size());
    std::vector<BoxPush> pushes;
    Tracer tracer(grid, table);
    tracer.TraceBack(at, table.Moves(meeting, 0), pushes);
    std::reverse(pushes.begin(), pushes.end());
    tracer.TraceOn(at, table.Moves(meeting, 1), pushes);
    return pushes;
}

}  // namespace kavit
