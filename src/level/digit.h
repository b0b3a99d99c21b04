#pragma once

namespace kavit {

// A decimal digit, whatever the locale.
[[nodiscard]] constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace kavit
