#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "solver/store/offer.h"

// The hash table of HashCase Mixed. The described tables take their home slot from a sum whose
// multiplier shrinks as the table grows, until keys clump; this one spreads them by 64 well-mixed
// bits, and it costs the same at any size.
//
// It is made of lines of 64 bytes, the unit in which a machine fetches memory. A line holds twelve
// positions, and of each key a fingerprint of one byte: all twelve are compared at once, and of 27
// foreign lines one has a position whose key is read for nothing. A key belongs into the line that
// its mix names, or, where that is full, into the next one, and so on. A full line remembers in 32
// bits which keys went on: each sets the bit that its mix names. So the look for a key that is not
// there ends at the first full line, too, except one time in some ten.
//
// Four fifths of the places are taken when all NumPos positions are stored. Then a look costs
// 1.08 lines for a key that is there and 1.04 for one that is not, over the life of the table less;
// a position takes 6.7 bytes of it. Where places are fewer bytes are saved and looks cost more:
// at nine tenths they are 1.2 and 1.1 lines, and storing a key passes three full ones.

namespace kavit {

class MixedTable {
  public:
    static constexpr int kPlaces = 12;

    struct alignas(64) Line {
        std::uint32_t Pos[kPlaces];   // taken from the first on; 0 is free
        std::uint8_t Print[kPlaces];  // 1..255 of a taken place, 0 of a free one
        std::uint32_t Passed;         // keys that went on to the next line
    };
    static_assert(sizeof(Line) == 64);

    MixedTable() = default;
    // `lines` zeroed lines, at least LinesFor(numPos) of them.
    MixedTable(Line* begin, std::uint64_t lines) : begin_(begin), lines_(lines) {
        assert(begin != nullptr && lines > 0);
    }

    // One place in five stays free; at least one does, which ends every path.
    [[nodiscard]] static constexpr std::uint64_t LinesFor(std::int64_t numPos) {
        return (static_cast<std::uint64_t>(numPos) * 5 + 47) / 48;
    }
    [[nodiscard]] static constexpr std::uint64_t BytesFor(std::int64_t numPos) {
        return LinesFor(numPos) * sizeof(Line);
    }
    [[nodiscard]] std::int64_t Places() const {
        return static_cast<std::int64_t>(lines_) * kPlaces;
    }
    // The position in a place, 0 when it is free.
    [[nodiscard]] std::int32_t PlaceAt(std::int64_t place) const {
        assert(place >= 0 && place < Places());
        return static_cast<std::int32_t>(begin_[place / kPlaces].Pos[place % kPlaces]);
    }

    // Puts the offer, whose Mix is known, at the beginning of its path; the key is not read.
    void Home(Offer& offer, const std::uint8_t* /*key*/) const {
        offer.Slot =
            static_cast<std::int32_t>(static_cast<unsigned __int128>(offer.Mix) * lines_ >> 64);
        offer.Step = 0;
        offer.Reprobes = 0;
        assert(offer.Slot >= 0 && static_cast<std::uint64_t>(offer.Slot) < lines_);
    }
    void HomeLanes(Offer* offers, const std::uint8_t* keys, std::size_t /*stride*/) const {
        for (int lane = 0; lane < kHashLanes; ++lane) Home(offers[lane], keys);
    }
    void Prefetch(const Offer& offer) const { __builtin_prefetch(begin_ + offer.Slot); }

    // The next position on the offer's path, from where the offer stands, that may have its key; 0
    // at the end of the path. The offer stays there: what is stored meanwhile is seen when it is
    // asked again.
    [[nodiscard]] std::int32_t Candidate(Offer& offer) const {
        for (;;) {
            const Line& line = At(offer);
            const unsigned same = PlacesWith(line, PrintOf(offer.Mix)) >> offer.Step << offer.Step;
            if (same != 0) {
                offer.Step = std::countr_zero(same);
                assert(offer.Step < kPlaces && line.Pos[offer.Step] != 0);
                return static_cast<std::int32_t>(line.Pos[offer.Step]);
            }
            // No key goes on while there is room.
            if ((line.Passed & PassedBit(offer.Mix)) == 0) return 0;
            Next(offer);
        }
    }
    // Leaves the candidate behind.
    void Pass(Offer& offer) const {
        assert(At(offer).Print[offer.Step] == PrintOf(offer.Mix));
        ++offer.Step;  // kPlaces behind the last place: no place is left there
    }
    // Stores a position where its path ends: Candidate has just said 0.
    void Insert(Offer& offer, std::int32_t pos) const {
        assert(pos > 0);
        unsigned free = PlacesWith(At(offer), 0);
        for (; free == 0; free = PlacesWith(At(offer), 0)) {
            At(offer).Passed |= PassedBit(offer.Mix);
            Next(offer);
        }
        Line& line = At(offer);
        const int place = std::countr_zero(free);
        assert(line.Pos[place] == 0 && (place == 0 || line.Pos[place - 1] != 0));
        line.Pos[place] = static_cast<std::uint32_t>(pos);
        line.Print[place] = PrintOf(offer.Mix);
    }

    // The places of a line that have this fingerprint, one bit each.
    [[nodiscard]] static unsigned PlacesWith(const Line& line, std::uint8_t print) {
#if defined(__SSE2__)
        constexpr std::size_t at = offsetof(Line, Print);
        static_assert(at + 16 == sizeof(Line));
        const __m128i prints = _mm_load_si128(
            reinterpret_cast<const __m128i*>(reinterpret_cast<const std::byte*>(&line) + at));
        const __m128i same = _mm_cmpeq_epi8(prints, _mm_set1_epi8(static_cast<char>(print)));
        return static_cast<unsigned>(_mm_movemask_epi8(same)) & ((1U << kPlaces) - 1);
#else
        return PlacesWithOneByOne(line, print);
#endif
    }
    // The same, for machines without such registers.
    [[nodiscard]] static unsigned PlacesWithOneByOne(const Line& line, std::uint8_t print) {
        unsigned same = 0;
        for (unsigned i = 0; i < kPlaces; ++i) same |= (line.Print[i] == print ? 1U : 0U) << i;
        return same;
    }

  private:
    // Line, fingerprint and bit come from different bits of the mix: its upper end, the lowest
    // byte and the one above.
    static std::uint8_t PrintOf(std::uint64_t mix) {
        const auto byte = static_cast<std::uint8_t>(mix);
        return byte == 0 ? 1 : byte;
    }
    static std::uint32_t PassedBit(std::uint64_t mix) {
        return 1U << (mix >> 8 & 31U);
    }

    Line& At(const Offer& offer) const {
        assert(offer.Slot >= 0 && static_cast<std::uint64_t>(offer.Slot) < lines_);
        return begin_[offer.Slot];
    }
    void Next(Offer& offer) const {
        ++offer.Slot;
        if (static_cast<std::uint64_t>(offer.Slot) == lines_) offer.Slot = 0;
        offer.Step = 0;
        ++offer.Reprobes;
        assert(offer.Reprobes <= lines_);  // one line has a free place at least
    }

    Line* begin_ = nullptr;
    std::uint64_t lines_ = 0;
};

}  // namespace kavit
