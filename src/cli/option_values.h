#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "solver/types.h"

// What the values of options mean. Each throws std::invalid_argument with what is wrong: the value
// in quotes, and what it should have been.

namespace kavit {

// A share of what the process may have, or a number of bytes.
struct MemoryChoice {
    std::uint64_t Bytes = 0;
    int Percent = 0;  // 1..100; 0: Bytes holds
};

// Level numbers as ranges with both ends.
using NumberRanges = std::vector<std::pair<std::int64_t, std::int64_t>>;

// Digits only: no sign, no blanks, no hexadecimal, nothing cut off.
[[nodiscard]] std::int64_t WholeNumber(const std::string& text, std::int64_t least,
                                       std::int64_t most);
// "4G", "500M", "50%"; K, M, G and T are powers of 1024, a number alone is bytes.
[[nodiscard]] MemoryChoice MemoryOf(const std::string& text);
// "0".."3", "default", "case1", "case2", "mixed".
[[nodiscard]] HashCase HashCaseOf(const std::string& text);
[[nodiscard]] SeaType SeaTypeOf(const std::string& text);
// "5-9,12".
[[nodiscard]] NumberRanges LevelNumbers(const std::string& text);

}  // namespace kavit
