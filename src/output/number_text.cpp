#include "output/number_text.h"

#include <cstdio>
#include <string_view>

namespace kavit {

std::string BytesText(std::uint64_t bytes) {
    constexpr std::string_view kUnits = "KMGT";
    auto value = static_cast<double>(bytes);
    std::size_t unit = 0;
    for (; value >= 1024 && unit < kUnits.size(); ++unit) value /= 1024;
    if (unit == 0) return std::to_string(bytes) + " bytes";
    char text[64];
    std::snprintf(text, sizeof text, value < 10 ? "%.1f %cB" : "%.0f %cB", value, kUnits[unit - 1]);
    return text;
}

}  // namespace kavit
