#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kavit {

// 128 bits seen as lanes of LaneBytes bytes. Shifts by one bit stay within a lane or may leave it:
// whoever uses them keeps the highest bit of every lane unused and masks the result.
#if defined(__SSE2__)

class Reg128 {
  public:
    Reg128() : value_(_mm_setzero_si128()) {}

    friend Reg128 operator&(Reg128 a, Reg128 b) {
        return Reg128(_mm_and_si128(a.value_, b.value_));
    }
    friend Reg128 operator|(Reg128 a, Reg128 b) { return Reg128(_mm_or_si128(a.value_, b.value_)); }
    // a without b.
    friend Reg128 operator-(Reg128 a, Reg128 b) {
        return Reg128(_mm_andnot_si128(b.value_, a.value_));
    }
    [[nodiscard]] bool Zero() const {
        return _mm_movemask_epi8(_mm_cmpeq_epi8(value_, _mm_setzero_si128())) == 0xffff;
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 BitUp() const {
        if constexpr (LaneBytes == 1) return Reg128(_mm_add_epi8(value_, value_));
        if constexpr (LaneBytes == 2) return Reg128(_mm_slli_epi16(value_, 1));
        return Reg128(_mm_slli_epi32(value_, 1));
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 BitDown() const {
        // Two lanes of one byte share a shift: a bit that crosses over lands on an unused one.
        if constexpr (LaneBytes <= 2) return Reg128(_mm_srli_epi16(value_, 1));
        return Reg128(_mm_srli_epi32(value_, 1));
    }
    // One lane up; the lane that comes in below is the highest of `below`.
    template <int LaneBytes>
    [[nodiscard]] Reg128 LaneUp(Reg128 below) const {
        return Reg128(_mm_or_si128(_mm_slli_si128(value_, LaneBytes),
                                   _mm_srli_si128(below.value_, 16 - LaneBytes)));
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 LaneUp() const {
        return Reg128(_mm_slli_si128(value_, LaneBytes));
    }
    // One lane down; the lane that comes in above is the lowest of `above`.
    template <int LaneBytes>
    [[nodiscard]] Reg128 LaneDown(Reg128 above) const {
        return Reg128(_mm_or_si128(_mm_srli_si128(value_, LaneBytes),
                                   _mm_slli_si128(above.value_, 16 - LaneBytes)));
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 LaneDown() const {
        return Reg128(_mm_srli_si128(value_, LaneBytes));
    }

  private:
    explicit Reg128(__m128i value) : value_(value) {}
    __m128i value_;
};

#else

class Reg128 {
  public:
    Reg128() = default;

    friend Reg128 operator&(Reg128 a, Reg128 b) { return Reg128(a.value_ & b.value_); }
    friend Reg128 operator|(Reg128 a, Reg128 b) { return Reg128(a.value_ | b.value_); }
    friend Reg128 operator-(Reg128 a, Reg128 b) { return Reg128(a.value_ & ~b.value_); }
    [[nodiscard]] bool Zero() const { return value_ == 0; }
    template <int LaneBytes>
    [[nodiscard]] Reg128 BitUp() const {
        return Reg128(value_ << 1);
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 BitDown() const {
        return Reg128(value_ >> 1);
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 LaneUp(Reg128 below = {}) const {
        return Reg128(value_ << (8 * LaneBytes) | below.value_ >> (128 - 8 * LaneBytes));
    }
    template <int LaneBytes>
    [[nodiscard]] Reg128 LaneDown(Reg128 above = {}) const {
        return Reg128(value_ >> (8 * LaneBytes) | above.value_ << (128 - 8 * LaneBytes));
    }

  private:
    explicit Reg128(unsigned __int128 value) : value_(value) {}
    unsigned __int128 value_ = 0;
};

#endif

}  // namespace kavit
