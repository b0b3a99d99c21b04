#include "solver/moves/fewest_moves_bound.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "solver/moves/assignment.h"

namespace kavit {

namespace {

constexpr int kScale = 256;  // of phi while it is looked for: parts of a move
constexpr int kRounds = 60;
constexpr int kFar = 1 << 24;  // no path

using Numbers = std::vector<int>;

std::size_t At(int i) {
    assert(i >= 0);
    return static_cast<std::size_t>(i);
}

class BoundMaker {
  public:
    BoundMaker(const Grid& grid, const BoardArrays& arrays) : grid_(grid) {
        for (const int bit : grid.InsideBits) {
            const auto cell = At(grid.BitToCell[At(bit)]);
            inside_[At(bit)] = true;
            live_[At(bit)] = arrays.DeadSq[cell] == 0;
            goal_[At(bit)] = arrays.GoalSq[cell] != 0;
            if (arrays.BoxStart[cell] != 0) starts_.push_back(bit);
        }
        assert(starts_.size() == grid.GoalBits.size());
        man_ = grid.CellToBit[At(arrays.ManStart)];
        assert(Is(inside_, man_));
        for (const int bit : grid.InsideBits) {
            for (const int step : grid.Step) {
                if (Is(inside_, bit + step)) steps_.push_back({bit, bit + step});
                if (Is(live_, bit) && Is(live_, bit + step) && Is(inside_, bit - step))
                    pushes_.push_back({bit - step, bit, bit + step});
            }
        }
    }

    MovesBound Make() {
        MovesBound bound;
        FindEnds(bound.ManEnds);
        FindPhi(bound.ManEnds);
        const Numbers toGoals = Worth(grid_.GoalBits, starts_, &BoundMaker::CostsTo);
        const Numbers fromStarts = Worth(starts_, grid_.GoalBits, &BoundMaker::CostsFrom);
        for (const int bit : grid_.InsideBits) {
            bound.Man[At(bit)] = 2 * phi_[At(bit)];
            if (fromStarts[At(bit)] >= kFar) continue;
            bound.FromStarts.push_back(bit);
            assert(Is(inside_, bit) && toGoals[At(bit)] <= kFar);
            if (toGoals[At(bit)] < kFar)
                bound.Box[At(bit)] = toGoals[At(bit)] - fromStarts[At(bit)];
        }
        assert(bound.FromStarts.size() >= starts_.size());
        return bound;
    }

  private:
    struct Step {
        int From;
        int To;
    };
    struct Push {
        int Behind;
        int From;
        int To;
    };
    using Flags = std::array<bool, Grid::kMaxBits>;
    [[nodiscard]] static bool Is(const Flags& flags, int bit) {
        return bit >= 0 && bit < Grid::kMaxBits && flags[At(bit)];
    }

    // What a push costs: the move itself, and what phi grows by.
    [[nodiscard]] int Cost(const Push& push) const {
        // No push is cheaper than nothing, or ways would shorten for ever.
        assert(phi_[At(push.Behind)] - phi_[At(push.From)] <= scale_);
        return scale_ + phi_[At(push.From)] - phi_[At(push.Behind)];
    }
    // The cheapest way of a box from every cell to the goal; `next` is the first push of it.
    Numbers CostsTo(int goal, std::vector<const Push*>* next) const {
        Numbers costs(Grid::kMaxBits, kFar);
        assert(Is(goal_, goal));
        costs[At(goal)] = 0;
        for (bool changed = true; changed;) {
            changed = false;
            for (const Push& push : pushes_) {
                const int cost = costs[At(push.To)] + Cost(push);
                if (cost >= costs[At(push.From)]) continue;
                costs[At(push.From)] = cost;
                if (next != nullptr) (*next)[At(push.From)] = &push;
                changed = true;
            }
        }
        return costs;
    }
    // The cheapest way of a box from the start to every cell.
    Numbers CostsFrom(int start, std::vector<const Push*>* /*next*/) const {
        Numbers costs(Grid::kMaxBits, kFar);
        assert(Is(inside_, start));
        costs[At(start)] = 0;
        for (bool changed = true; changed;) {
            changed = false;
            for (const Push& push : pushes_) {
                const int cost = costs[At(push.From)] + Cost(push);
                if (cost >= costs[At(push.To)]) continue;
                costs[At(push.To)] = cost;
                changed = true;
            }
        }
        return costs;
    }

    // The last push brings a box onto a goal, and all other boxes are on goals already.
    void FindEnds(std::vector<int>& ends) const {
        for (const Push& push : pushes_) {
            if (!goal_[At(push.To)] || goal_[At(push.From)] || goal_[At(push.Behind)]) continue;
            if (std::find(ends.begin(), ends.end(), push.From) == ends.end())
                ends.push_back(push.From);
        }
    }

    // The ascent. One round: the best assignment under phi, and a step of phi along its balance.
    void FindPhi(const std::vector<int>& ends) {
        assert(!ends.empty());  // some push is the last
        phi_.assign(Grid::kMaxBits, 0);
        scale_ = kScale;
        Numbers best = phi_;
        int bestValue = -kFar;
        for (int round = 0; round < kRounds; ++round) {
            Numbers balance(Grid::kMaxBits, 0);
            const int end = *std::max_element(ends.begin(), ends.end(), [this](int a, int b) {
                return phi_[At(a)] < phi_[At(b)];
            });
            balance[At(man_)] += 1;
            balance[At(end)] -= 1;
            const int value = AssignStarts(balance) + phi_[At(man_)] - phi_[At(end)];
            if (value > bestValue) {
                bestValue = value;
                best = phi_;
            }
            StepAlong(balance, round);
        }
        // In whole moves; rounding down keeps a function that is nowhere steeper than 1.
        for (std::size_t i = 0; i < best.size(); ++i)
            phi_[i] = (best[i] - (best[i] % kScale + kScale) % kScale) / kScale;
        assert(bestValue > -kFar);
        scale_ = 1;
    }
    // The cost of the best assignment of the starts; its pushes are added to the balance.
    int AssignStarts(Numbers& balance) const {
        const std::vector<int>& goals = grid_.GoalBits;
        std::vector<std::vector<const Push*>> next(
            goals.size(), std::vector<const Push*>(Grid::kMaxBits, nullptr));
        Assignment assignment(static_cast<int>(goals.size()));
        for (std::size_t g = 0; g < goals.size(); ++g) {
            const Numbers costs = CostsTo(goals[g], &next[g]);
            for (std::size_t s = 0; s < starts_.size(); ++s)
                assignment.Cost(static_cast<int>(s), static_cast<int>(g)) = costs[At(starts_[s])];
        }
        const int cost = assignment.Solve();
        for (std::size_t s = 0; s < starts_.size(); ++s) {
            const auto g = At(assignment.ColumnOf(static_cast<int>(s)));
            for (int bit = starts_[s]; bit != goals[g] && next[g][At(bit)] != nullptr;) {
                const Push& push = *next[g][At(bit)];
                assert(push.From == bit);
                balance[At(push.From)] += 1;
                balance[At(push.Behind)] -= 1;
                bit = push.To;
            }
        }
        return cost;
    }
    void StepAlong(const Numbers& balance, int round) {
        assert(balance.size() == phi_.size());
        std::int64_t norm = 0;
        for (const int value : balance) norm += std::int64_t{value} * value;
        if (norm == 0) return;
        // Steps that shrink with the root of the round, the first one 2 moves long.
        const double length = std::sqrt(static_cast<double>(norm * (10 + 3 * round)));
        for (std::size_t i = 0; i < balance.size(); ++i)
            phi_[i] += static_cast<int>(6.32 * kScale * balance[i] / length);
        for (bool changed = true; changed;) {
            changed = false;
            for (const Step& step : steps_) {
                if (phi_[At(step.To)] <= phi_[At(step.From)] + kScale) continue;
                phi_[At(step.To)] = phi_[At(step.From)] + kScale;
                changed = true;
            }
        }
    }

    // By cell: the least that a box there has to pay at the prices of the ends, which are those of
    // the assignment between the ends and the others.
    template <typename CostsOf>
    Numbers Worth(const std::vector<int>& ends, const std::vector<int>& others,
                  CostsOf costsOf) const {
        assert(ends.size() == others.size());
        Assignment assignment(static_cast<int>(ends.size()));
        std::vector<Numbers> costs;
        for (std::size_t e = 0; e < ends.size(); ++e) {
            costs.push_back((this->*costsOf)(ends[e], nullptr));
            for (std::size_t o = 0; o < others.size(); ++o)
                assignment.Cost(static_cast<int>(o), static_cast<int>(e)) = costs[e][At(others[o])];
        }
        (void)assignment.Solve();
        Numbers worth(Grid::kMaxBits, kFar);
        for (std::size_t e = 0; e < ends.size(); ++e)
            for (const int bit : grid_.InsideBits)
                if (costs[e][At(bit)] < kFar)
                    worth[At(bit)] =
                        std::min(worth[At(bit)],
                                 costs[e][At(bit)] - assignment.PriceOf(static_cast<int>(e)));
        return worth;
    }

    const Grid& grid_;
    Flags inside_{};
    Flags live_{};
    Flags goal_{};
    std::vector<int> starts_;
    int man_ = 0;
    std::vector<Step> steps_;
    std::vector<Push> pushes_;
    Numbers phi_;
    int scale_ = kScale;
};

}  // namespace

MovesBound MakeMovesBound(const Grid& grid, const BoardArrays& arrays) {
    return BoundMaker(grid, arrays).Make();
}

}  // namespace kavit
