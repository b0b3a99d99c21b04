#include "fuzz/shrink.h"

#include <algorithm>

#include "support/levels.h"

namespace kavit::test {

namespace {

// In the order of NumbersOf.
constexpr std::array<int, 8> kPlain = {50000, 8, 0, 0, 0, 0, 0, 0};

// What there is to understand in a case: the solves, the settings, what is no wall.
std::int64_t Cost(FuzzCase& fuzzCase) {
    std::int64_t cost = 0;
    for (FuzzSolve& solve : fuzzCase.Solves) {
        cost += 1000000 + solve.Ask.OptLevel;
        const auto numbers = NumbersOf(solve);
        for (std::size_t n = 0; n < numbers.size(); ++n) cost += *numbers[n] != kPlain[n] ? 10 : 0;
        for (const std::uint8_t code : solve.Ask.Level.Cell)
            cost += code == kWall ? 0 : code == kFloor ? 20 : code == kMan ? 25 : 30 + code;
    }
    return cost;
}

class Shrinker {
  public:
    Shrinker(const FuzzCase& fuzzCase, const std::function<bool(const FuzzCase&)>& fails, int most)
        : best_(fuzzCase), fails_(fails), left_(most) {}

    FuzzCase Run() {
        for (std::int64_t before = 0; before != Cost(best_) && left_ > 0;) {
            before = Cost(best_);
            for (std::size_t i = best_.Solves.size(); best_.Solves.size() > 1 && i-- > 0;)
                Try([=](auto& solves) { solves.erase(solves.begin() + std::ptrdiff_t(i)); });
            for (std::size_t i = 0; i < best_.Solves.size(); ++i) {
                for (std::size_t n = 0; n < kPlain.size(); ++n)
                    Try([=](auto& solves) { *NumbersOf(solves[i])[n] = kPlain[n]; });
                for (const int level : {1, 2})
                    Try([=](auto& solves) { solves[i].Ask.OptLevel = level; });
                SmallerLevel(i);
            }
        }
        return best_;
    }

  private:
    // Only cheaper cases are taken, so the shrinking ends.
    template <typename Change>
    void Try(Change change) {
        FuzzCase candidate = best_;
        change(candidate.Solves);
        if (Cost(candidate) >= Cost(best_) || left_-- <= 0) return;
        for (FuzzSolve& solve : candidate.Solves) SetExtent(solve.Ask.Level);
        if (fails_(candidate)) best_ = candidate;
    }

    // A box and a goal go together, or the counts would not fit; then everything that can be wall
    // becomes wall, and what can be floor, floor.
    void SmallerLevel(std::size_t i) {
        const auto at = [this, i](std::size_t cell) {
            return best_.Solves[i].Ask.Level.Cell[cell];
        };
        for (std::size_t b = 0; b < kCells; ++b)
            for (std::size_t g = 0; g < kCells; ++g)
                if (at(b) == kBox && (at(g) == kGoal || at(g) == kManOnGoal))
                    Try([=](auto& solves) {
                        auto& cells = solves[i].Ask.Level.Cell;
                        cells[b] = kFloor;
                        cells[g] = cells[g] == kGoal ? kFloor : kMan;
                    });
        for (const int code : {kWall, kFloor})
            for (std::size_t c = 0; c < kCells; ++c)
                if (at(c) != kMan)
                    Try([=](auto& solves) {
                        solves[i].Ask.Level.Cell[c] = static_cast<std::uint8_t>(code);
                    });
    }

    FuzzCase best_;
    const std::function<bool(const FuzzCase&)>& fails_;
    int left_;
};

}  // namespace

FuzzCase Shrink(const FuzzCase& fuzzCase, const std::function<bool(const FuzzCase&)>& fails,
                int most) {
    return Shrinker(fuzzCase, fails, most).Run();
}

}  // namespace kavit::test
