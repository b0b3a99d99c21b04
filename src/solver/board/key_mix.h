#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>

// A key as 64 random bits: one random word for each box square and one for the man's square, all
// added without carry. A successor's mix is its parent's with three words exchanged, whatever the
// number of boxes, and no key needs to be read for it. The words depend on nothing but the bytes of
// the key, so that the mix of a stored key can be made again from its row.

namespace kavit {

struct KeyWords {
    std::array<std::uint64_t, 256> Box{};
    std::array<std::uint64_t, 256> Man{};
};

// Fixed pseudo-random words, the same on every machine (splitmix64).
constexpr KeyWords MakeKeyWords() {
    KeyWords words;
    std::uint64_t state = 0x243f6a8885a308d3U;
    for (auto* table : {&words.Box, &words.Man}) {
        for (std::uint64_t& word : *table) {
            state += 0x9e3779b97f4a7c15U;
            std::uint64_t z = state;
            z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
            z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
            word = z ^ (z >> 31);
        }
    }
    return words;
}
inline constexpr KeyWords kKeyWords = MakeKeyWords();

// The mix of a whole key: the squares of the boxes, the man's last.
[[nodiscard]] inline std::uint64_t MixOf(const std::uint8_t* key, int keyLength) {
    assert(keyLength >= 2);
    std::uint64_t mix = kKeyWords.Man[key[keyLength - 1]];
    for (int i = 0; i + 1 < keyLength; ++i) mix ^= kKeyWords.Box[key[i]];
    return mix;
}

}  // namespace kavit
