#include "solver/search/move_generator.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

#include "solver/board/board_shape.h"
#include "solver/board/freeze.h"
#include "solver/board/key_mix.h"
#include "solver/board/man_region.h"

namespace kavit {

namespace {

// For one shape of the bit board. In cache lines of its own, since another thread's may lie next to
// it.
template <typename Set>
class alignas(64) MoveGeneratorOf final : public MoveGenerator {
  public:
    explicit MoveGeneratorOf(const Grid& grid) : grid_(grid), region_(grid), freeze_(grid) {
        for (const int bit : grid_.LiveBits) live_ = live_ | region_.Single(bit);
    }

    void MakeMoves(const ParentPosition& parent, std::uint8_t side, OfferChunk& offers) override {
        offers_ = &offers;
        Unpack(parent);
        if (side == kForwTag)
            MakePushes(parent.Record);
        else
            MakePulls(parent.Record);
        for (int i = 0; i < boxCount_; ++i)
            if (boxes_[At(i)].Bit >= 0) freeze_.TakeBox(boxes_[At(i)].Bit);
    }

    void MakeStart(const BoardArrays& arrays, const StartOffer& start,
                   OfferChunk& offers) override {
        const int i = offers.Add();
        std::uint8_t* key = offers.KeyOf(i);
        Set boxes;
        int count = 0;
        for (int c = 0; c < kCells; ++c) {
            if (start.Boxes[At(c)] == 0) continue;
            key[count++] = arrays.KeyByte(c);
            const int bit = grid_.CellToBit[At(c)];
            if (bit >= 0) boxes = boxes | region_.Single(bit);
        }
        const int man = grid_.CellToBit[At(start.ManCell)];
        assert(count > 0 && man >= 0 && !boxes.Has(man));
        const int norm = region_.FillLowest(region_.Single(man), region_.Inside() - boxes, -1);
        key[count] = grid_.ManByte(norm);
        Offer& offer = offers.At(i);
        offer.Mix = MixOf(key, count + 1);
        offer.Moves = 0;
        offer.Man = grid_.ManByte(start.NormalisedMan ? norm : man);
    }

  private:
    struct Box {
        std::int16_t Bit = -1;  // -1 outside the man's region, where it never moves
        std::int16_t Cell = 0;
    };

    static std::size_t At(int i) {
        assert(i >= 0);
        return static_cast<std::size_t>(i);
    }

    // Puts the boxes of a position on the boards, and fills the man's distances.
    void Unpack(const ParentPosition& parent) {
        boxCount_ = parent.Boxes;
        assert(boxCount_ > 0 && boxCount_ < kCells);
        Set boxSet;
        mix_ = 0;
        std::size_t statics = 0;
        for (int i = 0; i < boxCount_; ++i) {
            const std::uint8_t byte = parent.Key[i];
            key_[At(i)] = byte;
            mix_ ^= kKeyWords.Box[byte];
            const std::int16_t bit = grid_.KeyToBit[byte];
            if (bit < 0) {
                assert(statics < grid_.StaticCells.size());
                boxes_[At(i)] = {-1, grid_.StaticCells[statics++]};
                continue;
            }
            boxes_[At(i)] = {bit, grid_.BitToCell[At(bit)]};
            assert(i == 0 || boxes_[At(i)].Cell > boxes_[At(i - 1)].Cell);
            boxSet = boxSet | region_.Single(bit);
            freeze_.PutBox(bit);
        }
        assert(statics == grid_.StaticCells.size());
        boxSet_ = boxSet;
        const int man = grid_.KeyToBit[parent.Record.Man];
        assert(man >= 0 && !boxSet.Has(man));
        FillManDist(man, region_.Inside() - boxSet);
    }

    // One front per walk length. The distances (0 for the man's own square) are kept as binary
    // numbers with their digits in one set each: few of them are ever asked for, and then without a
    // branch that nobody could foresee. Four fronts are made between two looks whether there is
    // another: an empty one changes nothing, and costs less than a wrong guess at where they end.
    void FillManDist(int man, const Set& free) {
        Set front = region_.Single(man);
        Set open = free - front;
        digits_ = {};
        unsigned fours = 0;
        do {
            const Set before = open | front;
            const Set one = NextFront(front, open);
            const Set two = NextFront(one, open);
            const Set three = NextFront(two, open);
            front = NextFront(three, open);
            digits_[0] = digits_[0] | one | three;
            digits_[1] = digits_[1] | two | three;
            const Set made = before - open - front;
            for (unsigned rest = fours; rest != 0; rest &= rest - 1) {
                Set& digit = digits_[2 + static_cast<std::size_t>(std::countr_zero(rest))];
                digit = digit | made;
            }
            ++fours;
        } while (front.Any());
        digitCount_ = 2 + static_cast<unsigned>(std::bit_width(fours - 1));
        assert(digitCount_ <= digits_.size());
        reach_ = ManRegion<Set>::MakeReach(free, free - open);
    }
    [[gnu::always_inline]] static inline Set NextFront(const Set& front, Set& open) {
        const Set next = front.Around() & open;
        open = open - next;
        return next;
    }
    // Steps of the man plus the push. The cell must be in his reach.
    [[nodiscard]] int DistanceTo(int bit) const {
        assert(reach_.Cells.Has(bit));
        unsigned steps = 0;
        for (unsigned i = 0; i < digitCount_; ++i) steps |= digits_[i].Bit(bit) << i;
        return static_cast<int>(steps) + 1;
    }

    // Which box may go in which direction, out of one set of boxes per direction: by box, then by
    // direction. Written without a branch for each pair, whose outcomes follow no pattern.
    void ListMoves(const std::array<Set, 4>& movable) {
        moveCount_ = 0;
        for (int i = 0; i < boxCount_; ++i) {
            const int bit = std::max<int>(boxes_[At(i)].Bit, 0);  // no box outside ever moves
            const unsigned known = boxes_[At(i)].Bit >= 0 ? 1U : 0U;
            for (unsigned d = 0; d < 4; ++d) {
                moves_[moveCount_] = {static_cast<std::int16_t>(i), static_cast<std::int16_t>(d)};
                moveCount_ += movable[d].Bit(bit) & known;
            }
        }
    }

    void MakePushes(const PosRecord& record) {
        std::array<Set, 4> pushable;
        const Set open = reach_.Free & live_;
        for (int d = 0; d < 4; ++d)
            pushable[At(d)] = boxSet_ & region_.Shift(reach_.Cells, d) & region_.Shift(open, d ^ 2);
        ListMoves(pushable);
        for (std::size_t k = 0; k < moveCount_; ++k) {
            const auto [box, d] = moves_[k];
            const int from = boxes_[At(box)].Bit;
            const int to = from + grid_.Step[At(d)];
            if (freeze_.FrozenAfter(from, to)) continue;
            const int norm = region_.AfterPush(reach_, from, d);
            const int stand = from - grid_.Step[At(d)];
            assert(norm >= 0 && norm <= from);  // he stands on from
            AddOffer(box, d, to, norm, from, stand, DistanceTo(stand) + record.Moves);
        }
    }

    // At a solved position the man is placed freely, so that a first pull counts one move.
    void MakePulls(const PosRecord& record) {
        const bool firstPull = record.Parent < 1;
        std::array<Set, 4> pullable;
        for (int d = 0; d < 4; ++d) {
            const Set beside = region_.Shift(reach_.Cells, d ^ 2);
            pullable[At(d)] = boxSet_ & beside & region_.Shift(beside, d ^ 2);
        }
        ListMoves(pullable);
        for (std::size_t k = 0; k < moveCount_; ++k) {
            const auto [box, d] = moves_[k];
            const int from = boxes_[At(box)].Bit;
            const int to = from + grid_.Step[At(d)];
            const int norm = region_.AfterPull(reach_, from, d);
            assert(norm >= 0 && norm <= to + grid_.Step[At(d)]);
            const int moves = firstPull ? 1 : DistanceTo(to) + record.Moves;
            AddOffer(box, d, to, norm, to + grid_.Step[At(d)], to, moves);
        }
    }

    // The parent's key with box i on its new cell. Sideways no other box is passed; up or down
    // the boxes that lie between move over by one. Everything is read before the first byte of the
    // key is written, because a byte may change anything for all the compiler knows.
    void AddOffer(int i, int direction, int to, int norm, int man, int beside, int moves) {
        const int index = offers_->Add();
        std::uint8_t* key = offers_->KeyOf(index);
        Offer& offer = offers_->At(index);
        offer.Mix = mix_ ^ grid_.BoxMix[At(boxes_[At(i)].Bit)] ^ grid_.BoxMix[At(to)] ^
                    grid_.ManMix[At(norm)];
        offer.Moves = moves;
        offer.Man = grid_.ManByte(man);
        offer.Beside = grid_.ManByte(beside);
        const std::uint8_t* parent = key_.data();
        const int boxes = boxCount_;
        const std::uint8_t boxByte = grid_.BitToKey[At(to)];
        const std::uint8_t manByte = grid_.ManByte(norm);
        int at = i;
        if ((direction & 1) != 0) {
            const std::int16_t cell = grid_.BitToCell[At(to)];
            while (at + 1 < boxes && boxes_[At(at + 1)].Cell < cell) ++at;
            while (at > 0 && boxes_[At(at - 1)].Cell > cell) --at;
        }
        // The bytes stay in the order of the cells.
        assert(at > i || at == 0 || boxes_[At(at - 1)].Cell < grid_.BitToCell[At(to)]);
        assert(at < i || at + 1 == boxes || boxes_[At(at + 1)].Cell > grid_.BitToCell[At(to)]);
        // In whole words; both keys have 8 bytes to spare.
        for (int byte = 0; byte < boxes; byte += 8) std::memcpy(key + byte, parent + byte, 8);
        for (int k = i; k < at; ++k) key[k] = parent[k + 1];
        for (int k = i; k > at; --k) key[k] = parent[k - 1];
        key[at] = boxByte;
        key[boxes] = manByte;
    }

    const Grid& grid_;
    ManRegion<Set> region_;
    FreezeBoard freeze_;
    Set live_;

    // The position in hand.
    OfferChunk* offers_ = nullptr;
    std::array<std::uint8_t, kCells + 16> key_{};  // a copy: what lies behind the row is not read
    int boxCount_ = 0;
    std::array<Box, kCells> boxes_{};
    Set boxSet_;
    std::uint64_t mix_ = 0;
    typename ManRegion<Set>::Reach reach_;
    std::array<Set, 8> digits_{};  // the longest walk has 253 steps
    unsigned digitCount_ = 0;
    struct Move {
        std::int16_t Box;
        std::int16_t Direction;
    };
    std::array<Move, static_cast<std::size_t>(4 * kCells)> moves_;  // of which moveCount_ count
    std::size_t moveCount_ = 0;
};

}  // namespace

std::unique_ptr<MoveGenerator> MakeMoveGenerator(const Grid& grid) {
    return WithSetOf(grid.BoardShape, [&](auto set) -> std::unique_ptr<MoveGenerator> {
        return std::make_unique<MoveGeneratorOf<decltype(set)>>(grid);
    });
}

}  // namespace kavit
