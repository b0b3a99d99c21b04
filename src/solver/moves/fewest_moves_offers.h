#pragma once

#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <vector>

#include "solver/board/freeze.h"
#include "solver/board/man_region.h"
#include "solver/moves/fewest_moves_bound.h"

namespace kavit {

// The neighbours of positions on their way to the table. In a cache line of its own: every
// neighbour changes it, and another thread fills the one beside it.
class alignas(64) MovesOffers {
  public:
    struct Offer {
        std::uint64_t Mix;  // random words of its boxes and its man
        int Worth;          // in half moves
        int Moves;
    };

    explicit MovesOffers(int keyLength) : stride_(static_cast<std::size_t>(keyLength)) {}

    // Empties it for the neighbours of so many positions.
    void Begin(std::size_t positions) {
        positions_ = positions;
        offers_.clear();
        keys_.clear();
    }
    [[nodiscard]] std::size_t Positions() const { return positions_; }
    [[nodiscard]] std::size_t Count() const { return offers_.size(); }
    [[nodiscard]] const Offer& operator[](std::size_t i) const {
        assert(i < offers_.size());
        return offers_[i];
    }
    [[nodiscard]] const std::uint8_t* Key(std::size_t i) const {
        assert((i + 1) * stride_ <= keys_.size());
        return keys_.data() + i * stride_;
    }
    // Adds an offer and returns the place of its key.
    std::uint8_t* Add(const Offer& offer) {
        offers_.push_back(offer);
        keys_.resize(keys_.size() + stride_);
        return keys_.data() + keys_.size() - stride_;
    }

  private:
    std::size_t stride_;
    std::size_t positions_ = 0;
    std::vector<Offer> offers_;
    std::vector<std::uint8_t> keys_;
};

// Makes the neighbours of a position on either side. A function of the position alone: nothing of
// the search is read or changed. In cache lines of its own, as the next thread's follows it.
template <typename Set>
class alignas(64) MovesMaker {
  public:
    MovesMaker(const Grid& grid, const MovesBound& bound)
        : grid_(grid), bound_(bound), region_(grid), freeze_(grid) {
        for (const int bit : grid.LiveBits) live_ = live_ | region_.Single(bit);
        for (const int bit : bound.FromStarts) fromStarts_ = fromStarts_ | region_.Single(bit);
    }

    // Every push out of the position, with the walk before it.
    void MakePushes(const std::uint8_t* key, int boxes, int moves, MovesOffers& offers) {
        Unpack(key, boxes);
        for (int i = 0; i < boxCount_; ++i) freeze_.PutBox(bits_[At(i)]);
        const Set free = region_.Inside() - boxSet_;
        std::array<Set, 4> stands;
        Set asked;
        for (int d = 0; d < 4; ++d) {
            const Set pushable = boxSet_ & region_.Shift(free & live_, d ^ 2);
            stands[At(d)] = region_.Shift(pushable, d ^ 2) & free;
            asked = asked | stands[At(d)];
        }
        Walk(man_, free, asked, [&](int stand, int distance) {
            for (int d = 0; d < 4; ++d) {
                if (!stands[At(d)].Has(stand)) continue;
                const int from = stand + grid_.Step[At(d)];
                const int to = from + grid_.Step[At(d)];
                if (freeze_.FrozenAfter(from, to)) continue;
                MoveBox(from, to);
                AddOffer(from, moves + distance + 1, offers);
            }
        });
        for (int i = 0; i < boxCount_; ++i) freeze_.TakeBox(bits_[At(i)]);
    }

    // Every position from which one push and a walk lead to this one, taken back: the push that
    // left the man on his square, and then the walk to where the push before may have left him.
    void MakePulls(const std::uint8_t* key, int boxes, int moves, MovesOffers& offers) {
        Unpack(key, boxes);
        if (!fromStarts_.Has(man_)) return;
        for (int d = 0; d < 4; ++d) {
            const int box = man_ + grid_.Step[At(d)];
            const int stand = man_ - grid_.Step[At(d)];
            if (!(boxSet_ & region_.Single(box)).Any()) continue;
            if (!((region_.Inside() - boxSet_) & region_.Single(stand)).Any()) continue;
            MoveBox(box, man_);
            const Set after = (boxSet_ - region_.Single(box)) | region_.Single(man_);
            const Set free = region_.Inside() - after;
            Set ends;
            for (int e = 0; e < 4; ++e)
                ends = ends | (free & region_.Shift(after, e ^ 2) & region_.Shift(free, e));
            Walk(stand, free, ends,
                 [&](int end, int distance) { AddOffer(end, moves + distance + 1, offers); });
        }
    }

  private:
    static std::size_t At(int i) {
        assert(i >= 0);
        return static_cast<std::size_t>(i);
    }

    void Unpack(const std::uint8_t* key, int boxes) {
        assert(boxes >= 1 && boxes < 256);
        key_ = key;
        boxCount_ = boxes;
        boxSet_ = Set{};
        mix_ = 0;
        worth_ = 0;
        for (int i = 0; i < boxes; ++i) {
            const int bit = grid_.KeyToBit[key[i]];
            assert(bit >= 0 && (i == 0 || key[i - 1] < key[i]));
            bits_[At(i)] = bit;
            boxSet_ = boxSet_ | region_.Single(bit);
            mix_ ^= grid_.BoxMix[At(bit)];
            worth_ += bound_.Box[At(bit)];
        }
        man_ = grid_.KeyToBit[key[boxes]];
        assert(man_ >= 0 && !boxSet_.Has(man_));
    }

    // Calls found(bit, steps) for every asked cell in the man's reach, nearest first.
    template <typename Found>
    void Walk(int from, const Set& free, Set asked, Found found) const {
        assert(free.Has(from) && !(asked - free).Any());
        Set front = region_.Single(from);
        Set open = free - front;
        for (int distance = 0;; ++distance) {
            const Set reached = front & asked;
            if (reached.Any()) {
                for (int bit = reached.Lowest(); bit >= 0; bit = reached.LowestAbove(bit))
                    found(bit, distance);
                asked = asked - reached;
                if (!asked.Any()) return;
            }
            front = front.Around() & open;
            if (!front.Any()) return;
            open = open - front;
        }
    }

    // The boxes of the neighbours to come: the position's, with one of them moved. Their bytes stay
    // in increasing order.
    void MoveBox(int from, int to) {
        assert(boxSet_.Has(from) && !boxSet_.Has(to) && region_.Inside().Has(to));
        movedMix_ = mix_ ^ grid_.BoxMix[At(from)] ^ grid_.BoxMix[At(to)];
        movedWorth_ = worth_ - bound_.Box[At(from)] + bound_.Box[At(to)];
        const std::uint8_t gone = grid_.BitToKey[At(from)];
        const std::uint8_t come = grid_.BitToKey[At(to)];
        int at = 0;
        int next = 0;
        while (next < boxCount_ && key_[next] < come) {
            if (key_[next] != gone) moved_[At(at++)] = key_[next];
            ++next;
        }
        moved_[At(at++)] = come;
        for (; next < boxCount_; ++next)
            if (key_[next] != gone) moved_[At(at++)] = key_[next];
        assert(at == boxCount_);  // one went, one came
    }
    void AddOffer(int man, int moves, MovesOffers& offers) const {
        assert(region_.Inside().Has(man) && moves >= 1);
        std::uint8_t* key = offers.Add(
            {movedMix_ ^ grid_.ManMix[At(man)], movedWorth_ + bound_.Man[At(man)], moves});
        std::memcpy(key, moved_.data(), At(boxCount_));
        key[boxCount_] = grid_.ManByte(man);
    }

    const Grid& grid_;
    const MovesBound& bound_;
    ManRegion<Set> region_;
    FreezeBoard freeze_;
    Set live_;
    Set fromStarts_;

    // The position in hand, and its boxes after one of them has moved.
    const std::uint8_t* key_ = nullptr;
    int boxCount_ = 0;
    std::array<int, 256> bits_{};
    Set boxSet_;
    int man_ = 0;
    std::uint64_t mix_ = 0;
    int worth_ = 0;
    std::array<std::uint8_t, 256> moved_{};
    std::uint64_t movedMix_ = 0;
    int movedWorth_ = 0;
};

}  // namespace kavit
