#pragma once

#include <array>
#include <cstdint>

#include "solver/bits.h"
#include "solver/grid.h"

namespace kavit {

// Where the man can go, on the bit board of one level.
//
// A search asks for the normalised man square of every successor: the smallest cell of the region
// that he can reach after the move. The plain answer is a fill for each successor. But a move frees
// one cell (the box's old one) and blocks one (its new one), so the region is nearly always the
// parent's, less the one cell and plus the other, and its smallest cell is one of three. Whether it
// is so is read off the cells around the two: the blocked cell divides nothing when its free
// neighbours hang together around it, and the freed cell joins nothing new when all of its
// free neighbours were in the region before. Only what is left over, about one successor in ten, is
// filled.
template <int N>
struct ManRegion {
    using Set = Bits<N>;

    // The parent's region.
    struct Reach {
        Set Cells;
        int First = -1;   // its two smallest cells
        int Second = -1;  // -1 when it has only one
    };

    explicit ManRegion(const Grid& grid) : Width(grid.Width), Step(grid.Step) {
        for (const int bit : grid.InsideBits) Inside.Set(bit);
    }

    int Width;
    std::array<int, 4> Step;
    Set Inside;

    [[nodiscard]] Set Shift(const Set& set, int direction) const {
        switch (direction) {
            case 0:
                return set.Down(1);
            case 1:
                return set.Up(Width);
            case 2:
                return set.Up(1);
            default:
                return set.Down(Width);
        }
    }
    [[nodiscard]] Set Around(const Set& set) const {
        return set.Up(1) | set.Down(1) | set.Up(Width) | set.Down(Width);
    }
    [[nodiscard]] static Reach MakeReach(const Set& cells) {
        Reach reach{cells, cells.Lowest(), -1};
        Set rest = cells;
        if (reach.First >= 0) rest.Reset(reach.First);
        reach.Second = rest.Lowest();
        return reach;
    }
    // The cells reached from the seed through free cells.
    [[nodiscard]] Set Fill(Set seed, const Set& free) const {
        for (;;) {
            const Set next = seed | (Around(seed) & free);
            if (next == seed) return seed;
            seed = next;
        }
    }
    // Its smallest cell. `hoped`, where it is not -1, is known to be the smallest that can come:
    // the fill ends when it is reached.
    [[nodiscard]] int FillLowest(Set seed, const Set& free, int hoped) const {
        for (;;) {
            if (hoped >= 0 && seed.Has(hoped)) return hoped;
            const Set next = seed | (Around(seed) & free);
            if (next == seed) return seed.Lowest();
            seed = next;
        }
    }
    // The free cells around a cell, as an index of RingConnected.
    [[nodiscard]] unsigned Ring(const Set& free, int bit) const {
        const std::uint64_t window = free.Window(bit - Width - 1);
        const std::uint64_t middle = window >> Width;
        const std::uint64_t below = middle >> Width;
        return static_cast<unsigned>((window & 7U) | (middle & 1U) << 3 | (middle & 4U) << 2 |
                                     (below & 7U) << 5);
    }

    // The smallest cell of the man's region after he has pushed the box from `from` one step in
    // the direction; he stands on `from`. `free` and `reach` are the parent's.
    [[nodiscard]] int AfterPush(const Reach& reach, const Set& free, int from,
                                int direction) const {
        const int to = from + Step[Index(direction)];
        const int side = Step[Index(direction ^ 1)];
        bool joins = false;
        for (const int n : {from + side, from - side})
            joins = joins || (free.Has(n) && !reach.Cells.Has(n));
        Set after = free;
        after.Set(from);
        after.Reset(to);
        const auto& connected = RingConnected();
        const bool divides =
            reach.Cells.Has(to) && !connected[Ring(free, to)] && !connected[Ring(after, to)];
        const int hoped = Smaller(reach, to, from);
        if (!joins && !divides) return hoped;
        Set seed = Set::Of(from);
        if (!divides) {
            seed = seed | reach.Cells;
            seed.Reset(to);
        }
        return FillLowest(seed, after, joins ? -1 : hoped);
    }

    // The same after he has pulled the box from `from` one step in the direction; he stands one
    // cell further on.
    [[nodiscard]] int AfterPull(const Reach& reach, const Set& free, int from,
                                int direction) const {
        const int step = Step[Index(direction)];
        const int to = from + step;
        const int side = Step[Index(direction ^ 1)];
        bool touches = false;  // the freed cell touches the region, the blocked cell left aside
        bool joins = false;    // and something that was not in it
        for (const int n : {from - step, from + side, from - side}) {
            if (!free.Has(n)) continue;
            (reach.Cells.Has(n) ? touches : joins) = true;
        }
        Set after = free;
        after.Set(from);
        after.Reset(to);
        const auto& connected = RingConnected();
        const bool around = connected[Ring(after, to)];
        if (around || connected[Ring(free, to)]) {
            // The region stays whole; the freed cell belongs to it when it touches it.
            if (!around && !touches) return reach.First == to ? reach.Second : reach.First;
            if (!joins) return Smaller(reach, to, from);
            Set seed = reach.Cells;
            seed.Reset(to);
            seed.Set(from);
            return FillLowest(seed, after, -1);
        }
        return FillLowest(Set::Of(to + step), after, joins ? -1 : Smaller(reach, to, from));
    }

  private:
    static std::size_t Index(int direction) { return static_cast<std::size_t>(direction); }
    // The smallest cell of the region without `lost` and with `won`.
    static int Smaller(const Reach& reach, int lost, int won) {
        const int first = reach.First == lost ? reach.Second : reach.First;
        return first >= 0 && first < won ? first : won;
    }
};

}  // namespace kavit
