#pragma once

#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "solver/board/reg128.h"

namespace kavit {

// A set of cells of the inside of a level, one lane a row, in one, two or four 128-bit registers. A
// step sideways is a shift by a bit, a step up or down a shift by a lane, so that growing a set by
// one step takes about a dozen instructions for each register. The highest bit of a lane stays
// unused: it is the wall between the end of a row and the beginning of the next.
template <int LaneBytes, int Regs>
class RowBits {
  public:
    using Lane =
        std::conditional_t<LaneBytes == 1, std::uint8_t,
                           std::conditional_t<LaneBytes == 2, std::uint16_t, std::uint32_t>>;
    static constexpr int kLaneBits = 8 * LaneBytes;
    static constexpr int kRows = 16 / LaneBytes * Regs;
    static constexpr int kBits = 128 * Regs;

    static RowBits Of(int bit) {
        assert(bit >= 0 && bit < kBits);
        Words words{};
        words[Word(bit)] = std::uint64_t{1} << (static_cast<unsigned>(bit) & 63U);
        RowBits set;
        std::memcpy(static_cast<void*>(set.reg_.data()), words.data(), sizeof words);
        return set;
    }
    // A bit of the board, 0..kBits - 1.
    [[nodiscard]] unsigned Bit(int bit) const {
        assert(bit >= 0 && bit < kBits);
        std::uint8_t byte = 0;
        std::memcpy(&byte, reinterpret_cast<const char*>(reg_.data()) + (bit >> 3), 1);
        return static_cast<unsigned>(byte) >> (static_cast<unsigned>(bit) & 7U) & 1U;
    }
    [[nodiscard]] bool Has(int bit) const { return Bit(bit) != 0; }
    [[nodiscard, gnu::always_inline]] inline bool Any() const {
        Reg128 any = reg_[0];
        for (std::size_t i = 1; i < Regs; ++i) any = any | reg_[i];
        return !any.Zero();
    }
    // The lowest bit, -1 of an empty set.
    [[nodiscard]] int Lowest() const { return LowestAbove(-1); }
    // The lowest bit above `bit`, -1 where there is none.
    [[nodiscard]] int LowestAbove(int bit) const {
        assert(bit >= -1 && bit < kBits);
        const Words words = ToWords();
        const int from = bit + 1;
        for (std::size_t i = Word(from); i < words.size(); ++i) {
            std::uint64_t word = words[i];
            if (i == Word(from)) word &= ~std::uint64_t{0} << (static_cast<unsigned>(from) & 63U);
            if (word != 0) return static_cast<int>(i) * 64 + std::countr_zero(word);
        }
        return -1;
    }
    // One step in a direction, in the order of Dir.
    [[nodiscard, gnu::always_inline]] inline RowBits Left() const {
        RowBits result;
        for (std::size_t i = 0; i < Regs; ++i)
            result.reg_[i] = reg_[i].template BitDown<LaneBytes>();
        return result;
    }
    [[nodiscard, gnu::always_inline]] inline RowBits Right() const {
        RowBits result;
        for (std::size_t i = 0; i < Regs; ++i) result.reg_[i] = reg_[i].template BitUp<LaneBytes>();
        return result;
    }
    [[nodiscard, gnu::always_inline]] inline RowBits Down() const {
        RowBits result;
        result.reg_[0] = reg_[0].template LaneUp<LaneBytes>();
        for (std::size_t i = 1; i < Regs; ++i)
            result.reg_[i] = reg_[i].template LaneUp<LaneBytes>(reg_[i - 1]);
        return result;
    }
    [[nodiscard, gnu::always_inline]] inline RowBits Up() const {
        RowBits result;
        for (std::size_t i = 0; i + 1 < Regs; ++i)
            result.reg_[i] = reg_[i].template LaneDown<LaneBytes>(reg_[i + 1]);
        result.reg_[Regs - 1] = reg_[Regs - 1].template LaneDown<LaneBytes>();
        return result;
    }
    [[nodiscard, gnu::always_inline]] inline RowBits Around() const {
        return (Left() | Right()) | (Down() | Up());
    }

    [[gnu::always_inline]] friend inline RowBits operator&(const RowBits& a, const RowBits& b) {
        RowBits result;
        for (std::size_t i = 0; i < Regs; ++i) result.reg_[i] = a.reg_[i] & b.reg_[i];
        return result;
    }
    [[gnu::always_inline]] friend inline RowBits operator|(const RowBits& a, const RowBits& b) {
        RowBits result;
        for (std::size_t i = 0; i < Regs; ++i) result.reg_[i] = a.reg_[i] | b.reg_[i];
        return result;
    }
    // a without b.
    [[gnu::always_inline]] friend inline RowBits operator-(const RowBits& a, const RowBits& b) {
        RowBits result;
        for (std::size_t i = 0; i < Regs; ++i) result.reg_[i] = a.reg_[i] - b.reg_[i];
        return result;
    }

    // The rows in memory, with an empty one before and behind: what lies around a cell can be read
    // off three of them.
    class Rows {
      public:
        Rows() = default;
        explicit Rows(const RowBits& set) {
            std::memcpy(lanes_.data() + 1, set.reg_.data(), sizeof set.reg_);
        }
        // The cells around a cell: its 3x3 neighbourhood row by row without its centre, 8 bits.
        [[nodiscard]] unsigned Ring(int bit) const {
            assert(bit >= 0 && bit < kBits);
            const auto row = static_cast<std::size_t>(bit / kLaneBits);
            const int column = bit % kLaneBits;
            const auto around = [&](std::size_t r) {
                return static_cast<unsigned>((std::uint64_t{lanes_[r]} << 1 >> column) & 7U);
            };
            const unsigned middle = around(row + 1);
            return around(row) | (middle & 1U) << 3 | (middle & 4U) << 2 | around(row + 2) << 5;
        }

      private:
        std::array<Lane, static_cast<std::size_t>(kRows) + 2> lanes_{};
    };

  private:
    using Words = std::array<std::uint64_t, static_cast<std::size_t>(2 * Regs)>;
    static std::size_t Word(int bit) { return static_cast<std::size_t>(bit) >> 6; }
    [[nodiscard]] Words ToWords() const {
        Words words;
        std::memcpy(words.data(), reg_.data(), sizeof words);
        return words;
    }

    std::array<Reg128, static_cast<std::size_t>(Regs)> reg_;
};

}  // namespace kavit
