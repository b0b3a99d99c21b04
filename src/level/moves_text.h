#pragma once

#include <optional>
#include <string>
#include <string_view>

// Recorded solutions as people write them: the letters l, u, r, d for steps and L, U, R, D for
// pushes, and before a letter or a group in parentheses how often it comes: 3r2(uL) is rrruLuL.

namespace kavit {

inline constexpr std::size_t kMostMoves = 1000000;

// True for a text of move letters, digits and parentheses that holds at least one letter.
[[nodiscard]] bool LooksLikeMoves(std::string_view text);

// The letters one by one; none when the text is not well formed or has more than kMostMoves.
[[nodiscard]] std::optional<std::string> ExpandMoves(std::string_view text);

}  // namespace kavit
