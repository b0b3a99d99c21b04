#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "solver/bits.h"
#include "solver/expander.h"
#include "solver/freeze.h"
#include "solver/man_region.h"
#include "solver/store_pos.h"

namespace kavit {

// Expander for levels of N words. Successors of several positions are made ahead and stored in
// order (offers.h); whatever a caller can see, the hooks included, happens at the storing end.
template <int N>
class ExpanderOf final : public Expander {
  public:
    using Set = Bits<N>;

    explicit ExpanderOf(SearchState& state)
        : state_(state), grid_(state.Arrays), region_(grid_), freeze_(grid_) {
        for (const int bit : grid_.LiveBits) live_.Set(bit);
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
        std::uint32_t mix = 0;
        for (int c = 0, n = 0; c < kCells; ++c) {
            if (start.Boxes[At(c)] == 0) continue;
            key[n++] = state_.Arrays.KeyByte(c);
            const int bit = grid_.CellToBit[At(c)];
            if (bit < 0) continue;
            boxes.Set(bit);
            mix ^= grid_.BoxMix[At(bit)];
        }
        const int man = grid_.CellToBit[At(start.ManCell)];
        const int norm = region_.Fill(Set::Of(man), region_.Inside - boxes).Lowest();
        key[state_.Store.KeyLength() - 1] = grid_.ManByte(norm);
        Offer& offer = state_.Batch.At(i);
        offer.Mix = mix ^ grid_.ManMix[At(norm)];
        offer.Moves = 0;
        offer.Man = grid_.ManByte(start.NormalisedMan ? norm : man);
        state_.Batch.Hash(state_.Store);
        return StorePos(state_, offer, key, -1, start.Tag, *this);
    }

    [[nodiscard]] int Walk(const std::uint8_t* key, std::uint8_t from, std::uint8_t to) override {
        const Set free = FreeCells(key);
        const int target = grid_.KeyToBit[to];
        Set seen = Set::Of(grid_.KeyToBit[from]);
        Set front = seen;
        for (int steps = 0;; ++steps) {
            if (front.Has(target)) return steps;
            front = (region_.Around(front) & free) - seen;
            if (!front.Any()) throw SolverFault("Internal error: the man cannot walk to a meeting");
            seen = seen | front;
        }
    }

    [[nodiscard]] bool FindLinks(const std::vector<std::int32_t>& positions, std::uint8_t side,
                                 LevelRun run, std::vector<Link>& links) override {
        OfferBatch& batch = state_.Batch;
        batch.Empty();
        std::size_t stored = 0;  // positions whose moves have been looked up
        for (std::size_t i = 0; i < positions.size(); ++i) {
            state_.Hooks->Yield();
            if (state_.Hooks->StopSea.load(std::memory_order_relaxed)) return false;
            batch.AddParent(positions[i]);
            MakeMoves(positions[i], state_.Store.Record(positions[i]), side);
            if (!batch.Full() && i + 1 < positions.size()) continue;
            LookUpBatch(stored, side, run, links);
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
        for (const ManCost& target : targets) asked.Set(grid_.KeyToBit[target.Man]);
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
                front.Set(grid_.KeyToBit[waiting[next].Man]);
            front = front - seen;
            seen = seen | front;
            for (Set reached = front & asked; reached.Any();) cost_[At(reached.PopLowest())] = cost;
            asked = asked - front;
            front = (region_.Around(front) & free) - seen;
        }
        for (ManCost& target : targets) target.Cost = cost_[At(grid_.KeyToBit[target.Man])];
    }

    [[nodiscard]] const Grid& Map() const override { return grid_; }

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
        boxSet_ = Set{};
        mix_ = 0;
        std::size_t statics = 0;
        for (int i = 0; i < boxCount_; ++i) {
            const std::int16_t bit = grid_.KeyToBit[key_[i]];
            if (bit < 0) {
                boxes_[At(i)] = {-1, grid_.StaticCells[statics++]};
                continue;
            }
            boxes_[At(i)] = {bit, grid_.BitToCell[At(bit)]};
            boxSet_.Set(bit);
            freeze_.PutBox(bit);
            mix_ ^= grid_.BoxMix[At(bit)];
        }
        free_ = region_.Inside - boxSet_;
        FillManDist(grid_.KeyToBit[record.Man]);
    }

    // Distances (1 for the man's own square) of the cells beside boxes; no others are asked for.
    void FillManDist(int man) {
        const Set beside = region_.Around(boxSet_) & free_;
        Set front = Set::Of(man);
        Set seen = front;
        for (std::uint8_t depth = 1; front.Any(); ++depth) {
            for (Set asked = front & beside; asked.Any();) manDist_[At(asked.PopLowest())] = depth;
            front = (region_.Around(front) & free_) - seen;
            seen = seen | front;
        }
        reach_ = ManRegion<N>::MakeReach(seen);
    }

    // The directions in which each box may go, as one set of boxes per direction.
    void MakePushes(const PosRecord& record) {
        std::array<Set, 4> pushable;
        const Set open = free_ & live_;
        for (int d = 0; d < 4; ++d)
            pushable[At(d)] = boxSet_ & region_.Shift(reach_.Cells, d) & region_.Shift(open, d ^ 2);
        const Set any = pushable[0] | pushable[1] | pushable[2] | pushable[3];
        for (int i = 0; i < boxCount_; ++i) {
            const int from = boxes_[At(i)].Bit;
            if (from < 0 || !any.Has(from)) continue;
            for (int d = 0; d < 4; ++d) {
                if (!pushable[At(d)].Has(from)) continue;
                const int to = from + grid_.Step[At(d)];
                freeze_.TakeBox(from);
                freeze_.PutBox(to);
                const bool frozen = freeze_.Frozen(to);
                freeze_.TakeBox(to);
                freeze_.PutBox(from);
                if (frozen) continue;
                const int norm = region_.AfterPush(reach_, free_, from, d);
                const int moves = manDist_[At(from - grid_.Step[At(d)])] + record.Moves;
                AddOffer(i, d, to, norm, from, from - grid_.Step[At(d)], moves);
            }
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
        const Set any = pullable[0] | pullable[1] | pullable[2] | pullable[3];
        for (int i = 0; i < boxCount_; ++i) {
            const int from = boxes_[At(i)].Bit;
            if (from < 0 || !any.Has(from)) continue;
            for (int d = 0; d < 4; ++d) {
                if (!pullable[At(d)].Has(from)) continue;
                const int to = from + grid_.Step[At(d)];
                const int norm = region_.AfterPull(reach_, free_, from, d);
                const int moves = firstPull ? 1 : manDist_[At(to)] + record.Moves;
                AddOffer(i, d, to, norm, to + grid_.Step[At(d)], to, moves);
            }
        }
    }

    // The parent's key with box i on its new cell. Sideways no other box is passed; up or down
    // the boxes that lie between move over by one.
    void AddOffer(int i, int direction, int to, int norm, int man, int beside, int moves) {
        const int index = state_.Batch.Add();
        std::uint8_t* key = state_.Batch.KeyOf(index);
        std::memcpy(key, key_, At(boxCount_));
        const std::int16_t cell = grid_.BitToCell[At(to)];
        int at = i;
        if (direction == 1)
            for (; at + 1 < boxCount_ && boxes_[At(at + 1)].Cell < cell; ++at)
                key[at] = key[at + 1];
        if (direction == 3)
            for (; at > 0 && boxes_[At(at - 1)].Cell > cell; --at) key[at] = key[at - 1];
        key[at] = grid_.BitToKey[At(to)];
        key[boxCount_] = grid_.ManByte(norm);
        Offer& offer = state_.Batch.At(index);
        offer.Mix = mix_ ^ grid_.BoxMix[At(boxes_[At(i)].Bit)] ^ grid_.BoxMix[At(to)] ^
                    grid_.ManMix[At(norm)];
        offer.Moves = moves;
        offer.Man = grid_.ManByte(man);
        offer.Beside = grid_.ManByte(beside);
    }

    [[nodiscard]] Set FreeCells(const std::uint8_t* key) const {
        Set free = region_.Inside;
        for (int i = 0; i + 1 < state_.Store.KeyLength(); ++i)
            if (grid_.KeyToBit[key[i]] >= 0) free.Reset(grid_.KeyToBit[key[i]]);
        return free;
    }

    // Finds the batch's offers in the run; its first parent is number `near`.
    void LookUpBatch(std::size_t near, std::uint8_t side, LevelRun run, std::vector<Link>& links) {
        OfferBatch& batch = state_.Batch;
        batch.Hash(state_.Store);
        for (int i = 0; i < kAhead; ++i) batch.PeekRun(state_.Store, i, run);
        for (const ParentRun& parent : batch.Parents()) {
            for (int i = parent.First; i < parent.End; ++i) {
                batch.PeekRun(state_.Store, i + kAhead, run);
                Offer& offer = batch.At(i);
                const std::int32_t far = batch.Find(state_.Store, i, run);
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
        OfferBatch& batch = state_.Batch;
        batch.Hash(state_.Store);
        for (int i = 0; i < kAhead; ++i) batch.Peek(state_.Store, i);
        for (const ParentRun& run : batch.Parents()) {
            state_.Hooks->Yield();
            if (state_.Hooks->StopSea.load(std::memory_order_relaxed)) return Result::Stopped;
            for (int i = run.First; i < run.End; ++i) {
                batch.Peek(state_.Store, i + kAhead);
                const Result result =
                    StorePos(state_, batch.At(i), batch.KeyOf(i), run.Pos, side, *this);
                if (result != Result::GoOn) return result;
            }
            CheckCounters(state_.Counters);
        }
        batch.Empty();
        return Result::GoOn;
    }

    SearchState& state_;
    Grid grid_;
    ManRegion<N> region_;
    FreezeBoard freeze_;
    Set live_;

    // The position in hand.
    const std::uint8_t* key_ = nullptr;
    int boxCount_ = 0;
    std::array<Box, kCells> boxes_{};
    Set boxSet_;
    Set free_;
    std::uint32_t mix_ = 0;
    typename ManRegion<N>::Reach reach_;
    std::array<std::uint8_t, Grid::kMaxBits> manDist_{};

    // Scratch of SpreadCosts.
    std::array<int, Grid::kMaxBits> cost_{};
    std::vector<ManCost> waiting_;
};

}  // namespace kavit
