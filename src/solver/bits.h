#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace kavit {

// A set of cells, one bit each, in N words. Small levels fit in one or two words, so the number of
// words is a template argument and every loop below is unrolled.
template <int N>
struct Bits {
    std::array<std::uint64_t, N> Word{};

    static Bits Of(int bit) {
        Bits set;
        set.Set(bit);
        return set;
    }
    void Set(int bit) { At(bit) |= Mask(bit); }
    void Reset(int bit) { At(bit) &= ~Mask(bit); }
    [[nodiscard]] bool Has(int bit) const {
        return (Word[Index(bit)] >> (static_cast<unsigned>(bit) & 63U) & 1U) != 0;
    }
    [[nodiscard]] bool Any() const {
        std::uint64_t any = 0;
        for (int i = 0; i < N; ++i) any |= W(i);
        return any != 0;
    }
    // The lowest bit, -1 of an empty set.
    [[nodiscard]] int Lowest() const {
        for (int i = 0; i < N; ++i)
            if (W(i) != 0) return i * 64 + std::countr_zero(W(i));
        return -1;
    }
    // Takes the lowest bit out; the set must not be empty.
    int PopLowest() {
        for (int i = 0;; ++i) {
            if (W(i) == 0) continue;
            const int bit = i * 64 + std::countr_zero(W(i));
            W(i) &= W(i) - 1;
            return bit;
        }
    }
    // Shifts by 1 to 63 bits.
    [[nodiscard]] Bits Up(int count) const {
        Bits result;
        result.W(0) = W(0) << count;
        for (int i = 1; i < N; ++i) result.W(i) = W(i) << count | W(i - 1) >> (64 - count);
        return result;
    }
    [[nodiscard]] Bits Down(int count) const {
        Bits result;
        for (int i = 0; i + 1 < N; ++i) result.W(i) = W(i) >> count | W(i + 1) << (64 - count);
        result.W(N - 1) = W(N - 1) >> count;
        return result;
    }
    // The 64 bits from `bit` on; what lies beyond the last word is 0.
    [[nodiscard]] std::uint64_t Window(int bit) const {
        const std::size_t i = Index(bit);
        const unsigned shift = static_cast<unsigned>(bit) & 63U;
        std::uint64_t window = Word[i] >> shift;
        // Two shifts, so that a shift by 64 becomes one by 63 and one by 1.
        if (i + 1 < N) window |= Word[i + 1] << 1 << (63 - shift);
        return window;
    }
    friend Bits operator&(Bits a, const Bits& b) {
        for (int i = 0; i < N; ++i) a.W(i) &= b.W(i);
        return a;
    }
    friend Bits operator|(Bits a, const Bits& b) {
        for (int i = 0; i < N; ++i) a.W(i) |= b.W(i);
        return a;
    }
    // a without b.
    friend Bits operator-(Bits a, const Bits& b) {
        for (int i = 0; i < N; ++i) a.W(i) &= ~b.W(i);
        return a;
    }
    friend bool operator==(const Bits&, const Bits&) = default;

  private:
    std::uint64_t& W(int i) { return Word[static_cast<std::size_t>(i)]; }
    [[nodiscard]] const std::uint64_t& W(int i) const { return Word[static_cast<std::size_t>(i)]; }
    static std::size_t Index(int bit) {
        if constexpr (N == 1) return 0;
        return static_cast<std::size_t>(bit) >> 6;
    }
    std::uint64_t& At(int bit) { return Word[Index(bit)]; }
    static std::uint64_t Mask(int bit) {
        return std::uint64_t{1} << (static_cast<unsigned>(bit) & 63U);
    }
};

}  // namespace kavit
