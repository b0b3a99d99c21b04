#pragma once

#include <array>
#include <cassert>
#include <cstdint>

#include "solver/board/grid.h"
#include "solver/board/row_bits.h"

namespace kavit {

// Where the man can go, on the bit board of one level.
//
// A search asks for the normalised man square of every successor: the smallest cell of the region
// that he can reach after the move. The plain answer is a fill for each successor. But a move frees
// one cell (the box's old one) and blocks one (its new one), so the region is mostly the parent's,
// less the one cell and plus the other, and its smallest cell is one of three. Whether it
// is so is read off the cells around the two: the blocked cell divides nothing when its free
// neighbours hang together around it, and the freed cell joins nothing new when all of its free
// neighbours were in the region before; nor does it matter what it joins when all cells out of his
// reach are larger. Only what is left over, a quarter of the successors in levels made of
// corridors, is filled, and only as far as the answer needs.
template <typename Set>
class ManRegion {
  public:
    // The parent: the free cells, those that the man can reach, and the two smallest of them.
    struct Reach {
        Set Free;
        typename Set::Rows FreeRows;
        Set Cells;
        Set Other;  // free, but out of his reach
        int First = -1;
        int Second = -1;      // -1 when there is only one
        int OtherFirst = -1;  // the smallest of Other, -1 when that is empty
    };

    explicit ManRegion(const Grid& grid) : step_(grid.Step) {
        for (const int bit : grid.InsideBits) {
            single_[Index(bit + kPad)] = Set::Of(bit);
            inside_ = inside_ | Single(bit);
        }
    }

    // The set of one inside cell, ready made: a register load where a set put together bit by bit
    // would have to wait for its own store. Empty for other cells, those one
    // step off the board included.
    [[nodiscard]] const Set& Single(int bit) const {
        assert(bit >= -kPad && bit < Set::kBits + kPad);
        return single_[Index(bit + kPad)];
    }

    [[nodiscard]] const Set& Inside() const { return inside_; }
    [[gnu::always_inline]] static inline Set Shift(const Set& set, int direction) {
        switch (direction) {
            case 0:
                return set.Left();
            case 1:
                return set.Down();
            case 2:
                return set.Right();
            default:
                return set.Up();
        }
    }
    static Reach MakeReach(const Set& free, const Set& cells) {
        assert(cells.Any() && !(cells - free).Any());
        const int first = cells.Lowest();
        const Set other = free - cells;
        return {free,  typename Set::Rows(free), cells,         other,
                first, cells.LowestAbove(first), other.Lowest()};
    }
    // The smallest cell reached from the seed, itself free, through free cells. `hoped`, where it
    // is not -1, is known to be the smallest that can come: the fill ends when it is reached.
    [[nodiscard]] int FillLowest(const Set& seed, const Set& free, int hoped) const {
        const Set goal = hoped >= 0 ? Single(hoped) : Set{};
        assert(seed.Any() && !(seed - free).Any());
        Set front = seed;
        Set open = free - seed;
        for (;;) {
            front = front.Around() & open;
            if (!front.Any()) return (free - open).Lowest();
            if ((front & goal).Any()) return hoped;
            open = open - front;
        }
    }

    // The smallest cell of the man's region after he has pushed the box from `from` one step in
    // the direction; he stands on `from`.
    [[nodiscard]] int AfterPush(const Reach& reach, int from, int direction) const {
        const int to = from + step_[Index(direction)];
        const int side = step_[Index(direction ^ 1)];
        assert(!reach.Free.Has(from) && reach.Free.Has(to));
        const bool joins = (reach.Other & (Single(from + side) | Single(from - side))).Any();
        bool divides = false;
        if (reach.Cells.Has(to)) {
            const unsigned ring = reach.FreeRows.Ring(to);
            divides = !kRingConnected[ring] && !kRingConnected[ring | RingBehind(direction)];
        }
        const int hoped = Smaller(reach, to, from);
        const bool lowers = joins && reach.OtherFirst < hoped;
        if (!lowers && (!divides || from == hoped)) return hoped;
        const Set free = (reach.Free | Single(from)) - Single(to);
        const Set seed = divides ? Single(from) : (reach.Cells | Single(from)) - Single(to);
        return FillLowest(seed, free, lowers ? -1 : hoped);
    }

    // The same after he has pulled the box from `from` one step in the direction; he stands one
    // cell further on.
    [[nodiscard]] int AfterPull(const Reach& reach, int from, int direction) const {
        const int step = step_[Index(direction)];
        const int to = from + step;
        const int man = to + step;
        const int side = step_[Index(direction ^ 1)];
        assert(!reach.Free.Has(from) && reach.Cells.Has(to) && reach.Cells.Has(man));
        // The freed cell touches the region, the blocked cell left aside; and something else.
        const Set beside = Single(from - step) | Single(from + side) | Single(from - side);
        const bool touches = (reach.Cells & beside).Any();
        const bool joins = (reach.Other & beside).Any();
        const unsigned ring = reach.FreeRows.Ring(to);
        const bool around = kRingConnected[ring | RingBehind(direction)];
        const bool whole = around || kRingConnected[ring];
        const int least = reach.First == to ? reach.Second : reach.First;
        // The region stays whole; the freed cell belongs to it when it touches it.
        if (whole && !around && !touches) return least;
        const int hoped = Smaller(reach, to, from);
        const bool lowers = joins && reach.OtherFirst < hoped;
        if (!lowers && (whole || man == hoped)) return hoped;
        const Set free = (reach.Free | Single(from)) - Single(to);
        const Set seed = whole ? (reach.Cells | Single(from)) - Single(to) : Single(man);
        return FillLowest(seed, free, lowers ? -1 : hoped);
    }

  private:
    static std::size_t Index(int i) {
        assert(i >= 0);
        return static_cast<std::size_t>(i);
    }
    // The smallest cell of the region without `lost` and with `won`.
    static int Smaller(const Reach& reach, int lost, int won) {
        const int first = reach.First == lost ? reach.Second : reach.First;
        return first >= 0 && first < won ? first : won;
    }
    // The ring's cell that lies against the direction.
    static unsigned RingBehind(int direction) {
        constexpr std::array<unsigned, 4> behind = {1U << 4, 1U << 1, 1U << 3, 1U << 6};
        return behind[Index(direction)];
    }

    std::array<int, 4> step_;
    Set inside_;
    static constexpr int kPad = Set::kLaneBits;
    std::array<Set, static_cast<std::size_t>(Set::kBits + 2 * kPad)> single_{};
};

}  // namespace kavit
