#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <vector>

#include "solver/board/freeze.h"
#include "solver/board/grid.h"
#include "solver/board/key_mix.h"
#include "solver/board/man_region.h"
#include "solver/search/expander.h"
#include "solver/search/store_pos.h"

namespace kavit {

// Expander for the levels of one shape of the bit board. Successors of several positions are made
// ahead and stored in order (offers.h); whatever a caller can see, the hooks included, happens at
// the storing end.
template <typename Set>
class ExpanderOf final : public Expander {
  public:
    explicit ExpanderOf(SearchState& state)
        : state_(state), grid_(state.Arrays), region_(grid_), freeze_(grid_) {
        for (const int bit : grid_.LiveBits) live_ = live_ | region_.Single(bit);
        state_.Batch.StartSearch(state_.Store);
    }

    [[nodiscard]] Result Expand(const ExpandJob& job) override {
        state_.Batch.Empty();
        for (std::int32_t p = job.Top; p <= job.End; ++p) {
            state_.Batch.AddParent(p);
            // Position 0 is a run that was stopped before its start was stored: only the stop is
            // due, and what lies in the row is of an earlier level.
            const PosRecord record = state_.Store.Record(p);
            if (p > 0 && (!job.TaggedOnly || record.Tag >= 10)) MakeMoves(p, record, job.Side);
            if (job.TaggedOnly || state_.Batch.Full()) {
                const Result result = StoreBatch(job.Side);
                if (result != Result::GoOn) return result;
            }
        }
        return StoreBatch(job.Side);
    }

    [[nodiscard]] Result OfferStart(const StartOffer& start) override {
        state_.Batch.Empty();
        state_.Batch.AddParent(-1);
        const int i = state_.Batch.Add();
        std::uint8_t* key = state_.Batch.KeyOf(i);
        Set boxes;
        for (int c = 0, n = 0; c < kCells; ++c) {
            if (start.Boxes[At(c)] == 0) continue;
            key[n++] = state_.Arrays.KeyByte(c);
            const int bit = grid_.CellToBit[At(c)];
            if (bit < 0) continue;
            boxes = boxes | region_.Single(bit);
        }
        const int man = grid_.CellToBit[At(start.ManCell)];
        const int norm = region_.FillLowest(region_.Single(man), region_.Inside() - boxes, -1);
        key[state_.Store.KeyLength() - 1] = grid_.ManByte(norm);
        Offer& offer = state_.Batch.At(i);
        offer.Mix = MixOf(key, state_.Store.KeyLength());
        offer.Moves = 0;
        offer.Man = grid_.ManByte(start.NormalisedMan ? norm : man);
        state_.Batch.Hash(state_.Store);
        return state_.Store.WithTable([&](const auto& table) {
            return StorePos(state_, table, offer, key, -1, start.Tag, *this);
        });
    }

    [[nodiscard]] int Walk(const std::uint8_t* key, std::uint8_t from, std::uint8_t to) override {
        const Set free = FreeCells(key);
        const int target = grid_.KeyToBit[to];
        Set seen = region_.Single(grid_.KeyToBit[from]);
        Set front = seen;
        for (int steps = 0;; ++steps) {
            if (front.Has(target)) return steps;
            front = (front.Around() & free) - seen;
            if (!front.Any()) throw SolverFault("Internal error: the man cannot walk to a meeting");
            seen = seen | front;
        }
    }

    [[nodiscard]] bool FindLinks(const std::vector<std::int32_t>& positions, std::uint8_t side,
                                 LayerRun run, std::vector<Link>& links) override {
        OfferBatch& batch = state_.Batch;
        batch.Empty();
        std::size_t stored = 0;  // positions whose moves have been looked up
        for (std::size_t i = 0; i < positions.size(); ++i) {
            state_.Hooks->Yield();
            if (state_.Hooks->Stopping()) return false;
            batch.AddParent(positions[i]);
            MakeMoves(positions[i], state_.Store.Record(positions[i]), side);
            if (!batch.Full() && i + 1 < positions.size()) continue;
            state_.Store.WithTable(
                [&](const auto& table) { LookUpBatch(table, stored, side, run, links); });
            stored = i + 1;
        }
        return true;
    }

    // One fill for all: the front takes in each source when its depth comes.
    void SpreadCosts(std::int32_t pos, const std::vector<ManCost>& sources,
                     std::vector<ManCost>& targets) override {
        const Set free = FreeCells(state_.Store.KeyAt(pos));
        std::vector<ManCost>& waiting = waiting_;
        waiting = sources;
        std::sort(waiting.begin(), waiting.end(),
                  [](const ManCost& a, const ManCost& b) { return a.Cost < b.Cost; });
        Set asked;
        for (const ManCost& target : targets)
            asked = asked | region_.Single(grid_.KeyToBit[target.Man]);
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
                front = front | region_.Single(grid_.KeyToBit[waiting[next].Man]);
            front = front - seen;
            seen = seen | front;
            const Set reached = front & asked;
            for (int bit = reached.Lowest(); bit >= 0; bit = reached.LowestAbove(bit))
                cost_[At(bit)] = cost;
            asked = asked - front;
            front = (front.Around() & free) - seen;
        }
        for (ManCost& target : targets) target.Cost = cost_[At(grid_.KeyToBit[target.Man])];
    }

  private:
    struct Box {
        std::int16_t Bit = -1;  // -1 outside the man's region, where it never moves
        std::int16_t Cell = 0;
    };
    static constexpr int kAhead = 24;  // offers whose rows are on their way

    static std::size_t At(int i) { return static_cast<std::size_t>(i); }

    void MakeMoves(std::int32_t p, const PosRecord& record, std::uint8_t side) {
        Unpack(p, record);
        if (side == kForwTag)
            MakePushes(record);
        else
            MakePulls(record);
        for (int i = 0; i < boxCount_; ++i)
            if (boxes_[At(i)].Bit >= 0) freeze_.TakeBox(boxes_[At(i)].Bit);
    }

    // Puts the boxes of a position on the boards, and fills the man's distances.
    void Unpack(std::int32_t p, const PosRecord& record) {
        key_ = state_.Store.KeyAt(p);
        boxCount_ = state_.Store.KeyLength() - 1;
        Set boxSet;
        mix_ = 0;
        std::size_t statics = 0;
        for (int i = 0; i < boxCount_; ++i) {
            mix_ ^= kKeyWords.Box[key_[i]];
            const std::int16_t bit = grid_.KeyToBit[key_[i]];
            if (bit < 0) {
                boxes_[At(i)] = {-1, grid_.StaticCells[statics++]};
                continue;
            }
            boxes_[At(i)] = {bit, grid_.BitToCell[At(bit)]};
            boxSet = boxSet | region_.Single(bit);
            freeze_.PutBox(bit);
        }
        boxSet_ = boxSet;
        FillManDist(grid_.KeyToBit[record.Man], region_.Inside() - boxSet);
    }

    // One front per walk length. The distances (1 for the man's own square) are kept as binary
    // numbers with their digits in one set each: few of them are ever asked for, and then without a
    // branch that nobody could foresee.
    void FillManDist(int man, const Set& free) {
        Set front = region_.Single(man);
        Set open = free - front;
        digits_ = {};
        unsigned distance = 0;
        do {
            ++distance;
            for (unsigned rest = distance; rest != 0; rest &= rest - 1) {
                Set& digit = digits_[static_cast<std::size_t>(std::countr_zero(rest))];
                digit = digit | front;
            }
            front = front.Around() & open;
            open = open - front;
        } while (front.Any());
        digitCount_ = static_cast<unsigned>(std::bit_width(distance));
        reach_ = ManRegion<Set>::MakeReach(free, free - open);
    }
    // The cell must be in the man's reach.
    [[nodiscard]] int DistanceTo(int bit) const {
        unsigned distance = 0;
        for (unsigned i = 0; i < digitCount_; ++i) distance |= digits_[i].Bit(bit) << i;
        return static_cast<int>(distance);
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
            const int moves = firstPull ? 1 : DistanceTo(to) + record.Moves;
            AddOffer(box, d, to, norm, to + grid_.Step[At(d)], to, moves);
        }
    }

    // The parent's key with box i on its new cell. Sideways no other box is passed; up or down
    // the boxes that lie between move over by one. Everything is read before the first byte of the
    // key is written, because a byte may change anything for all the compiler knows.
    void AddOffer(int i, int direction, int to, int norm, int man, int beside, int moves) {
        const int index = state_.Batch.Add();
        std::uint8_t* key = state_.Batch.KeyOf(index);
        Offer& offer = state_.Batch.At(index);
        offer.Mix = mix_ ^ grid_.BoxMix[At(boxes_[At(i)].Bit)] ^ grid_.BoxMix[At(to)] ^
                    grid_.ManMix[At(norm)];
        offer.Moves = moves;
        offer.Man = grid_.ManByte(man);
        offer.Beside = grid_.ManByte(beside);
        const std::uint8_t* parent = key_;
        const int boxes = boxCount_;
        const std::uint8_t boxByte = grid_.BitToKey[At(to)];
        const std::uint8_t manByte = grid_.ManByte(norm);
        int at = i;
        if ((direction & 1) != 0) {
            const std::int16_t cell = grid_.BitToCell[At(to)];
            while (at + 1 < boxes && boxes_[At(at + 1)].Cell < cell) ++at;
            while (at > 0 && boxes_[At(at - 1)].Cell > cell) --at;
        }
        // In whole words; both keys have 8 bytes to spare.
        for (int byte = 0; byte < boxes; byte += 8) std::memcpy(key + byte, parent + byte, 8);
        for (int k = i; k < at; ++k) key[k] = parent[k + 1];
        for (int k = i; k > at; --k) key[k] = parent[k - 1];
        key[at] = boxByte;
        key[boxes] = manByte;
    }

    [[nodiscard]] Set FreeCells(const std::uint8_t* key) const {
        Set free = region_.Inside();
        for (int i = 0; i + 1 < state_.Store.KeyLength(); ++i)
            if (grid_.KeyToBit[key[i]] >= 0) free = free - region_.Single(grid_.KeyToBit[key[i]]);
        return free;
    }

    // Finds the batch's offers in the run; its first parent is number `near`.
    template <typename Table>
    void LookUpBatch(const Table& table, std::size_t near, std::uint8_t side, LayerRun run,
                     std::vector<Link>& links) {
        OfferBatch& batch = state_.Batch;
        batch.Hash(state_.Store);
        for (int i = 0; i < kAhead; ++i) batch.PeekRun(state_.Store, table, i, run);
        for (const ParentRun& parent : batch.Parents()) {
            for (int i = parent.First; i < parent.End; ++i) {
                batch.PeekRun(state_.Store, table, i + kAhead, run);
                Offer& offer = batch.At(i);
                const std::int32_t far = batch.Find(state_.Store, table, i, run);
                if (far == 0) continue;
                const bool push = side == kForwTag;
                links.push_back({static_cast<std::int32_t>(near), far,
                                 push ? offer.Beside : offer.Man, push ? offer.Man : offer.Beside});
            }
            ++near;
        }
        batch.Empty();
    }

    [[nodiscard]] Result StoreBatch(std::uint8_t side) {
        state_.Batch.Hash(state_.Store);
        return state_.Store.WithTable([&](const auto& table) { return StoreBatchIn(table, side); });
    }
    template <typename Table>
    [[nodiscard]] Result StoreBatchIn(const Table& table, std::uint8_t side) {
        OfferBatch& batch = state_.Batch;
        for (int i = 0; i < kAhead; ++i) batch.Peek(state_.Store, table, i);
        for (const ParentRun& run : batch.Parents()) {
            state_.Hooks->Yield();
            if (state_.Hooks->Stopping()) return Result::Stopped;
            for (int i = run.First; i < run.End; ++i) {
                batch.Peek(state_.Store, table, i + kAhead);
                const Result result =
                    StorePos(state_, table, batch.At(i), batch.KeyOf(i), run.Pos, side, *this);
                if (result != Result::GoOn) return result;
            }
        }
        batch.Empty();
        return Result::GoOn;
    }

    SearchState& state_;
    Grid grid_;
    ManRegion<Set> region_;
    FreezeBoard freeze_;
    Set live_;

    // The position in hand.
    const std::uint8_t* key_ = nullptr;
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

    // Scratch of SpreadCosts.
    std::array<int, Grid::kMaxBits> cost_{};
    std::vector<ManCost> waiting_;
};

}  // namespace kavit
