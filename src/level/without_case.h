#pragma once

#include <algorithm>
#include <string_view>

// Comparing names without regard to the case of ASCII letters, whatever the locale.
namespace kavit {

[[nodiscard]] constexpr char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

[[nodiscard]] constexpr bool EqualWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Upper(x) == Upper(y); });
}

}  // namespace kavit
