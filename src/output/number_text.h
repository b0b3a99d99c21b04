#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

// How numbers look in the texts of the program. The two forms decide the spacing of every status
// line and report, so each place says which one it means.
namespace kavit {

// With a sign position: a blank for zero and above, "-" below.
[[nodiscard]] inline std::string S(std::int64_t x) {
    std::string text(x < 0 ? 0 : 1, ' ');
    text += std::to_string(x);
    return text;
}

// Without it.
[[nodiscard]] inline std::string B(std::int64_t x) {
    return std::to_string(x);
}

// At least `digits` digits, zeros in front; a number that needs more is written whole.
[[nodiscard]] inline std::string Padded(std::int64_t x, std::size_t digits) {
    std::string text = std::to_string(std::abs(x));
    text.insert(0, digits - std::min(digits, text.size()), '0');
    if (x < 0) text.insert(text.begin(), '-');
    return text;
}

// Bytes as a person says them, with powers of 1024: "91 MB", "1.4 GB".
[[nodiscard]] std::string BytesText(std::uint64_t bytes);

}  // namespace kavit
