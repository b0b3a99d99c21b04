#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

#include "solver/store/offer.h"
#include "solver/store/primes.h"
#include "solver/types.h"

// The hash table of HashCases Default, 1 and 2: one slot for a position, a home slot and a probe
// step for each key, both laid down to the last count.
//
// A slot is 32 bits: the position's index in as many low bits as NumPos needs, and in the rest a
// fingerprint of the key. With 4000000 positions ten bits are left, and of 1024 foreign positions
// on a probe path only one has its key read. The order of the slots, and with it every count, is
// that of a table of bare indices. What this costs: nothing; a table of separate fingerprint bytes
// would have cost a second cache miss and a byte for each slot.

namespace kavit {

class SlotTable {
  public:
    // The most positions for which the range of the prime test holds a table size.
    static constexpr std::int64_t kMostPositions = 894730239;

    // HashSize, the slots less one: a prime 1.2 times the positions. Throws SolverFault above
    // kMostPositions.
    [[nodiscard]] static std::int32_t SizeFor(std::int32_t numPos, PrimeTable& primes);
    [[nodiscard]] static std::uint64_t BytesFor(std::int32_t hashSize) {
        return (static_cast<std::uint64_t>(hashSize) + 1) * sizeof(std::uint32_t);
    }

    // Takes over the bytes at `slots`, zeroed and enough for SizeFor. Throws as SizeFor does.
    void StartSearch(std::uint32_t* slots, std::int32_t numPos, int keyLength, HashCase hashCase,
                     PrimeTable& primes);

    [[nodiscard]] std::int64_t Places() const { return std::int64_t{hashSize_} + 1; }
    // The position in a slot, 0 when it is free.
    [[nodiscard]] std::int32_t PlaceAt(std::int64_t slot) const {
        assert(slot >= 0 && slot < Places());
        return IndexIn(slots_[slot]);
    }

    // Puts one offer at its home slot.
    void Home(Offer& offer, const std::uint8_t* key) const { SetHome(offer, key, HomeSlot(key)); }
    // The same for eight offers, whose keys lie `stride` bytes apart: the reductions of one key
    // wait for each other, those of eight do not.
    void HomeLanes(Offer* offers, const std::uint8_t* keys, std::size_t stride) const {
        assert(keyLength_ >= 2 && stride >= static_cast<std::size_t>(keyLength_));
        const auto last = static_cast<std::size_t>(keyLength_ - 1);
        std::uint32_t h[kHashLanes];
        for (std::size_t lane = 0; lane < kHashLanes; ++lane) h[lane] = keys[lane * stride + last];
        for (std::size_t i = last; i-- > 0;)
            for (std::size_t lane = 0; lane < kHashLanes; ++lane)
                h[lane] = Reduce(h[lane] * hashMult_ + keys[lane * stride + i]);
        for (std::size_t lane = 0; lane < kHashLanes; ++lane)
            SetHome(offers[lane], keys + lane * stride, h[lane]);
    }
    // Fetches a home slot, and what lies below it: probe paths of a table that fills lead there.
    void Prefetch(const Offer& offer) const {
        constexpr std::int32_t below = 12;
        __builtin_prefetch(slots_ + offer.Slot);
        __builtin_prefetch(slots_ + (offer.Slot >= below ? offer.Slot - below : 0));
    }
    // The next position on the offer's path, from where the offer stands, that may have its key; 0
    // at the end of the path. The offer stays there: what is stored meanwhile is seen when it is
    // asked again.
    [[nodiscard]] std::int32_t Candidate(Offer& offer) const {
        assert(offer.Slot >= 0 && offer.Slot <= hashSize_ && offer.Step < 0);
        const std::uint32_t print = Fingerprint(offer.Mix);
        for (;;) {
            const std::uint32_t slot = slots_[offer.Slot];
            if (slot == 0) return 0;
            if ((slot & ~indexMask_) == print) return IndexIn(slot);
            Pass(offer);
        }
    }
    // Leaves the candidate behind.
    void Pass(Offer& offer) const {
        offer.Slot += offer.Step;
        while (offer.Slot < 0) offer.Slot += hashSize_;
        ++offer.Reprobes;
        // A path comes to every slot once; at least one is free.
        assert(offer.Reprobes <= static_cast<std::uint32_t>(hashSize_));
    }
    // Stores a position where its path ends: Candidate has just said 0.
    void Insert(const Offer& offer, std::int32_t pos) const {
        assert(pos > 0 && slots_[offer.Slot] == 0);
        assert((static_cast<std::uint32_t>(pos) & ~indexMask_) == 0);
        slots_[offer.Slot] = Fingerprint(offer.Mix) | static_cast<std::uint32_t>(pos);
    }

  private:
    [[nodiscard]] std::int32_t IndexIn(std::uint32_t slot) const {
        return static_cast<std::int32_t>(slot & indexMask_);
    }
    // The part of a key's mix that a slot keeps, in its place.
    [[nodiscard]] std::uint32_t Fingerprint(std::uint64_t mix) const {
        return static_cast<std::uint32_t>(mix) & ~indexMask_;
    }
    // One step of the home slot's reduction: h (below 2^31 + 256) as it stands where it is below
    // HashSize, else (h mod HashSize) + 1, by multiplication with the reciprocal.
    [[nodiscard]] std::uint32_t Reduce(std::uint32_t h) const {
        // The upper half of a product is in a register of its own; any other shift would cost.
        const std::uint64_t twice = std::uint64_t{h} << 1;
        const auto product = static_cast<unsigned __int128>(reciprocal_) * twice;
        const auto quotient = static_cast<std::uint32_t>(product >> 64);
        return h - quotient * static_cast<std::uint32_t>(hashSize_) + (quotient > 0 ? 1U : 0U);
    }
    [[nodiscard]] std::uint32_t HomeSlot(const std::uint8_t* key) const {
        std::uint32_t h = key[keyLength_ - 1];
        for (int i = keyLength_ - 2; i >= 0; --i) h = Reduce(h * hashMult_ + key[i]);
        return h;
    }
    // The middle box in key order names the step.
    void SetHome(Offer& offer, const std::uint8_t* key, std::uint32_t home) const {
        assert(home <= static_cast<std::uint32_t>(hashSize_));
        offer.Slot = static_cast<std::int32_t>(home);
        offer.Step = oneStep_ ? steps_[0] : steps_[key[(keyLength_ - 1) / 2]];
        offer.Reprobes = 0;
    }

    std::uint32_t* slots_ = nullptr;
    std::uint32_t indexMask_ = 0;
    std::uint32_t hashMult_ = 1;
    std::uint64_t reciprocal_ = 0;
    std::int32_t hashSize_ = 0;
    int keyLength_ = 0;
    bool oneStep_ = true;                    // whatever the key
    std::array<std::int32_t, 256> steps_{};  // by the byte of the middle box
};

}  // namespace kavit
