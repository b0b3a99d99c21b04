#include "solver/moves/fewest_moves.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <new>

#include "solver/board/board_shape.h"
#include "solver/moves/fewest_moves_wave.h"

namespace kavit {

namespace {

constexpr int kForward = 0;
constexpr int kBackward = 1;
constexpr std::size_t kAhead = 16;  // offers whose rows are on their way
constexpr std::int32_t kProgressStep = 5000;

template <typename Set>
class FewestSearch {
  public:
    FewestSearch(const Grid& grid, const BoardArrays& arrays, const LentMemory& memory, int known,
                 const ChunkThreads& threads, SearchCounters& counters, SolverHooks& hooks)
        : grid_(grid),
          bound_(MakeMovesBound(grid, arrays)),
          counters_(counters),
          hooks_(hooks),
          boxes_(static_cast<int>(grid.GoalBits.size())),
          block_(memory.Rows, memory.RowBytes),
          table_(memory, block_, boxes_ + 1),
          chunks_(block_),
          best_(known),
          wave_(grid_, bound_, table_, boxes_),
          ring_(wave_, threads) {
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
        // What was found before the memory ran out stands, in the heap of a thread as in the store.
        try {
            answer.Code = Search();
        } catch (const std::bad_alloc&) {
            answer.Code = Result::OutOfMemory;
        }
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
        ring_.Begin();
        while (passed_[0] + passed_[1] < Limit()) {
            const bool forward = Queue(kForward).Waiting() <= Queue(kBackward).Waiting();
            const Result result = PassValue(forward ? kForward : kBackward);
            if (result != Result::GoOn) return result;
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
        MovesOffers ends(boxes_ + 1);
        OfferEnd(start_, ends);
        if (!StoreOffers(kForward, ends)) return false;
        ends.Begin(0);
        for (const int man : bound_.ManEnds) OfferEnd({grid_.GoalBits, man}, ends);
        return StoreOffers(kBackward, ends);
    }
    void OfferEnd(const MovesPosition& position, MovesOffers& ends) {
        std::vector<std::uint8_t> key;
        const std::uint64_t mix = position.Write(grid_, key);
        std::copy(key.begin(), key.end(), ends.Add({mix, Worth(position), 0}));
    }

    // Takes on the positions of the side with the value that it is at, and what they bring with the
    // same one. GoOn when all are done, else what ended it.
    Result PassValue(int side) {
        wave_.Begin(Queue(side), side, Passed(side));
        for (int slot = ring_.Next(); slot != ChunkRing::kNone; slot = ring_.Next()) {
            const MovesOffers& offers = wave_.In(slot);
            for (std::size_t i = 0; i < offers.Positions(); ++i) {
                hooks_.Yield();
                if (hooks_.Stopping()) return Result::Stopped;
            }
            if (!StoreOffers(side, offers)) return Result::OutOfMemory;
        }
        Passed(side) += 1;
        return Result::GoOn;
    }

    // False: the memory is full.
    bool StoreOffers(int side, const MovesOffers& offers) {
        const std::size_t count = offers.Count();
        counters_.FewestOffers += static_cast<std::int64_t>(count);
        for (std::size_t i = 0; i < count; ++i) table_.PrefetchHome(offers[i].Mix);
        for (std::size_t i = 0; i < count; ++i) {
            if (i + kAhead < count) table_.PrefetchFound(offers[i + kAhead].Mix);
            if (!StoreOffer(side, offers[i], offers.Key(i))) return false;
        }
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

    MovesPosition start_;
    int startWorth_ = 0;
    int endWorth_ = 0;  // the largest of a solved position
    int best_;
    std::int32_t meeting_ = 0;  // the position that the best solution goes through
    std::array<int, 2> passed_{};

    MovesWave<Set> wave_;
    ChunkRing ring_;  // the last: its threads read all of the above
};

}  // namespace

FewestAnswer SearchFewestMoves(const BoardArrays& arrays, const LentMemory& memory, int known,
                               const ChunkThreads& threads, SearchCounters& counters,
                               SolverHooks& hooks) {
    const Grid grid(arrays);
    return WithSetOf(grid.BoardShape, [&](auto set) {
        return FewestSearch<decltype(set)>(grid, arrays, memory, known, threads, counters, hooks)
            .Run();
    });
}

}  // namespace kavit
