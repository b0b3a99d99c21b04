#pragma once

#include <string_view>

namespace kavit {

// The three help texts have the same sections in the same order. They are wrapped as source code
// is: a line that starts with a letter goes on with the paragraph above it, a line that starts with
// a blank or a hyphen stays a line of its own.
[[nodiscard]] std::string_view SpanishHelp();
[[nodiscard]] std::string_view FrenchHelp();
[[nodiscard]] std::string_view EnglishHelp();

}  // namespace kavit
