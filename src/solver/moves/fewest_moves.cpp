#include "solver/moves/fewest_moves.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "solver/board/board_shape.h"
#include "solver/moves/fewest_moves_offers.h"

namespace kavit {

namespace {

constexpr int kForward = 0;
constexpr int kBackward = 1;
constexpr int kTakenAtOnce = 64;    // positions whose neighbours are made before any is looked up
constexpr std::size_t kAhead = 16;  // offers whose rows are on their way
constexpr std::int32_t kProgressStep = 5000;

template <typename Set>
class FewestSearch {
  public:
    FewestSearch(const Grid& grid, const BoardArrays& arrays, const LentMemory& memory, int known,
                 SearchCounters& counters, SolverHooks& hooks)
        : grid_(grid),
          bound_(MakeMovesBound(grid, arrays)),
          counters_(counters),
          hooks_(hooks),
          boxes_(static_cast<int>(grid.GoalBits.size())),
          block_(memory.Rows, memory.RowBytes),
          table_(memory, block_, boxes_ + 1),
          chunks_(block_),
          maker_(grid_, bound_),
          offers_(boxes_ + 1),
          best_(known) {
        start_.Man = grid.CellToBit[static_cast<std::size_t>(arrays.ManStart)];
        for (const int bit : grid.InsideBits)
            if (arrays.BoxStart[static_cast<std::size_t>(
                    grid.BitToCell[static_cast<std::size_t>(bit)])] != 0)
                start_.Boxes.push_back(bit);
        assert(start_.Man >= 0 && static_cast<int>(start_.Boxes.size()) == boxes_);
        assert(!bound_.ManEnds.empty());
        startWorth_ = Worth(start_);
        endWorth_ = Worth({grid.GoalBits, bound_.ManEnds.front()});
        for (const int man : bound_.ManEnds)
            endWorth_ = std::max(endWorth_, Worth({grid.GoalBits, man}));
        // Nothing is ever put into a bucket past this.
        for (int side = 0; side < 2; ++side) queues_.emplace_back(chunks_, Limit() + 1);
    }

    FewestAnswer Run() {
        FewestAnswer answer;
        answer.Code = Search();
        counters_.FewestPositions = table_.Count();
        answer.Moves = best_;
        RaiseBound();
        assert(counters_.MovesLowerBound <= best_);
        if (meeting_ != 0) answer.Pushes = TracePushes(grid_, table_, meeting_);
        return answer;
    }

  private:
    [[nodiscard]] int Worth(const MovesPosition& position) const {
        int worth = bound_.Man[static_cast<std::size_t>(position.Man)];
        for (const int bit : position.Boxes) worth += bound_.Box[static_cast<std::size_t>(bit)];
        return worth;
    }
    // What the values of both sides make up when nothing better can be left.
    [[nodiscard]] int Limit() const { return 2 * best_ - (startWorth_ - endWorth_); }
    [[nodiscard]] int Value(int side, int moves, int worth) const {
        return side == kForward ? 2 * moves + worth - startWorth_ : 2 * moves - worth + endWorth_;
    }

    Result Search() {
        if (!OfferEnds()) return Result::OutOfMemory;
        while (passed_[0] + passed_[1] < Limit()) {
            const int side = waiting_[kForward] <= waiting_[kBackward] ? kForward : kBackward;
            while (!Queue(side).Empty(Passed(side))) {
                if (!TakeSome(side)) return Result::Stopped;
                if (!StoreOffers(side)) return Result::OutOfMemory;
            }
            Passed(side) += 1;
            RaiseBound();
        }
        return Result::GoOn;
    }
    // A better solution than the best would have its values in what neither side has passed yet.
    void RaiseBound() {
        // The sum of the values may be odd; a number of moves is whole.
        const int least = (passed_[0] + passed_[1] + startWorth_ - endWorth_ + 1) / 2;
        counters_.MovesLowerBound =
            std::max<std::int64_t>(counters_.MovesLowerBound, std::min(best_, least));
    }
    // The start, and the solved positions.
    bool OfferEnds() {
        OfferEnd(start_);
        if (!StoreOffers(kForward)) return false;
        for (const int man : bound_.ManEnds) OfferEnd({grid_.GoalBits, man});
        return StoreOffers(kBackward);
    }
    void OfferEnd(const MovesPosition& position) {
        std::vector<std::uint8_t> key;
        const std::uint64_t mix = position.Write(grid_, key);
        std::copy(key.begin(), key.end(), offers_.Add({mix, Worth(position), 0}));
    }

    // Takes on positions of the side's bucket and makes their offers. False: the search is stopped.
    bool TakeSome(int side) {
        const int value = Passed(side);
        takenCount_ = 0;
        while (takenCount_ < taken_.size() && !Queue(side).Empty(value)) {
            const std::int32_t pos = Queue(side).Take(value);
            waiting_[static_cast<std::size_t>(side)] -= 1;
            assert(waiting_[static_cast<std::size_t>(side)] >= 0);
            table_.PrefetchRow(pos);
            taken_[takenCount_++] = pos;
        }
        for (std::size_t i = 0; i < takenCount_; ++i) {
            const std::int32_t pos = taken_[i];
            // Taken on before, with fewer moves than when it was put here.
            if (table_.Expanded(pos, side)) continue;
            hooks_.Yield();
            if (hooks_.Stopping()) return false;
            const int moves = table_.Moves(pos, side);
            assert(moves < MovesTable::kUnknown);
            table_.SetExpanded(pos, side);
            if (side == kForward)
                maker_.MakePushes(table_.Key(pos), boxes_, moves, offers_);
            else
                maker_.MakePulls(table_.Key(pos), boxes_, moves, offers_);
        }
        return true;
    }

    // False: the memory is full.
    bool StoreOffers(int side) {
        const std::size_t count = offers_.Count();
        counters_.FewestOffers += static_cast<std::int64_t>(count);
        for (std::size_t i = 0; i < count; ++i) table_.PrefetchHome(offers_[i].Mix);
        for (std::size_t i = 0; i < count; ++i) {
            if (i + kAhead < count) table_.PrefetchFound(offers_[i + kAhead].Mix);
            if (!StoreOffer(side, offers_[i], offers_.Key(i))) return false;
        }
        offers_.Clear();
        if (table_.Count() - counters_.FewestPositions >= kProgressStep) {
            counters_.FewestPositions = table_.Count();
            hooks_.ShowProgress(table_.Count());
        }
        return true;
    }
    bool StoreOffer(int side, const MovesOffers::Offer& offer, const std::uint8_t* key) {
        if (offer.Moves >= best_) return true;
        const int value = Value(side, offer.Moves, offer.Worth);
        assert(value >= Passed(side));
        const bool open = value + Passed(1 - side) < Limit();
        std::int32_t pos = table_.Find(key, offer.Mix);
        if (pos == 0) {
            if (!open) return true;
            pos = table_.Add(key, offer.Mix);
            if (pos == 0) return false;
        }
        if (table_.Moves(pos, side) <= offer.Moves) return true;
        assert(!table_.Expanded(pos, side));
        table_.SetMoves(pos, side, offer.Moves);
        // An unknown number of moves is larger than any best.
        if (offer.Moves + table_.Moves(pos, 1 - side) < best_) {
            best_ = offer.Moves + table_.Moves(pos, 1 - side);
            meeting_ = pos;
        }
        if (!open) return true;
        waiting_[static_cast<std::size_t>(side)] += 1;
        return Queue(side).Add(value, pos);
    }

    BucketQueue& Queue(int side) { return queues_[static_cast<std::size_t>(side)]; }
    // Everything of the side with a lower value has been taken on.
    int& Passed(int side) { return passed_[static_cast<std::size_t>(side)]; }

    const Grid& grid_;
    const MovesBound bound_;
    SearchCounters& counters_;
    SolverHooks& hooks_;
    int boxes_;
    SharedBlock block_;
    MovesTable table_;
    BucketQueue::Chunks chunks_;
    std::vector<BucketQueue> queues_;
    MovesMaker<Set> maker_;
    MovesOffers offers_;

    MovesPosition start_;
    int startWorth_ = 0;
    int endWorth_ = 0;  // the largest of a solved position
    int best_;
    std::int32_t meeting_ = 0;  // the position that the best solution goes through
    std::array<int, 2> passed_{};
    std::array<std::int64_t, 2> waiting_{};  // in the queues, some of them more than once
    std::array<std::int32_t, kTakenAtOnce> taken_{};
    std::size_t takenCount_ = 0;
};

}  // namespace

FewestAnswer SearchFewestMoves(const BoardArrays& arrays, const LentMemory& memory, int known,
                               SearchCounters& counters, SolverHooks& hooks) {
    const Grid grid(arrays);
    return WithSetOf(grid.BoardShape, [&](auto set) {
        return FewestSearch<decltype(set)>(grid, arrays, memory, known, counters, hooks).Run();
    });
}

}  // namespace kavit
