#include "solver/search/man_walks.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "solver/board/board_shape.h"
#include "solver/types.h"

namespace kavit {

namespace {

template <typename Set>
class ManWalksOf final : public ManWalks {
  public:
    ManWalksOf(const Grid& grid, int boxes) : grid_(grid), boxes_(boxes) {
        assert(boxes >= 1);
        for (const int bit : grid.InsideBits) inside_ = inside_ | Set::Of(bit);
    }

    [[nodiscard]] int Walk(const std::uint8_t* key, std::uint8_t from, std::uint8_t to) override {
        const Set free = FreeCells(key);
        const int target = BitOf(to);
        assert(free.Has(target) && free.Has(BitOf(from)));
        Set seen = Set::Of(BitOf(from));
        Set front = seen;
        for (int steps = 0;; ++steps) {
            if (front.Has(target)) return steps;
            assert(steps < Set::kBits);  // each one takes in a cell at least
            front = (front.Around() & free) - seen;
            if (!front.Any()) throw SolverFault("Internal error: the man cannot walk to a meeting");
            seen = seen | front;
        }
    }

    // One fill for all: the front takes in each source when its depth comes.
    void SpreadCosts(const std::uint8_t* key, const std::vector<ManCost>& sources,
                     std::vector<ManCost>& targets) override {
        assert(!sources.empty());
        const Set free = FreeCells(key);
        std::vector<ManCost>& waiting = waiting_;
        waiting = sources;
        std::sort(waiting.begin(), waiting.end(),
                  [](const ManCost& a, const ManCost& b) { return a.Cost < b.Cost; });
        assert(waiting.front().Cost >= 0);
        Set asked;
        for (const ManCost& target : targets) asked = asked | Set::Of(BitOf(target.Man));
        std::size_t next = 0;
        Set front;
        Set seen;
        for (int cost = waiting.front().Cost; asked.Any(); ++cost) {
            if (!front.Any()) {
                if (next == waiting.size())
                    throw SolverFault("Internal error: the man cannot walk between two pushes");
                cost = std::max(cost, waiting[next].Cost);
            }
            for (; next < waiting.size() && waiting[next].Cost == cost; ++next)
                front = front | Set::Of(BitOf(waiting[next].Man));
            front = front - seen;
            seen = seen | front;
            const Set reached = front & asked;
            for (int bit = reached.Lowest(); bit >= 0; bit = reached.LowestAbove(bit))
                cost_[static_cast<std::size_t>(bit)] = cost;
            asked = asked - front;
            front = (front.Around() & free) - seen;
        }
        for (ManCost& target : targets)
            target.Cost = cost_[static_cast<std::size_t>(BitOf(target.Man))];
        assert(targets.empty() || targets.front().Cost >= waiting.front().Cost);
    }

  private:
    [[nodiscard]] int BitOf(std::uint8_t byte) const {
        assert(grid_.KeyToBit[byte] >= 0);
        return grid_.KeyToBit[byte];
    }
    [[nodiscard]] Set FreeCells(const std::uint8_t* key) const {
        Set free = inside_;
        for (int i = 0; i < boxes_; ++i)
            if (grid_.KeyToBit[key[i]] >= 0) free = free - Set::Of(grid_.KeyToBit[key[i]]);
        return free;
    }

    const Grid& grid_;
    int boxes_;
    Set inside_;
    std::array<int, static_cast<std::size_t>(Set::kBits)> cost_{};
    std::vector<ManCost> waiting_;
};

}  // namespace

std::unique_ptr<ManWalks> MakeManWalks(const Grid& grid, int boxes) {
    return WithSetOf(grid.BoardShape, [&](auto set) -> std::unique_ptr<ManWalks> {
        return std::make_unique<ManWalksOf<decltype(set)>>(grid, boxes);
    });
}

}  // namespace kavit
