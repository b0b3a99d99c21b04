#include "cli/option_values.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace kavit {

namespace {

constexpr std::string_view kUnits = "KMGT";
constexpr std::int64_t kMostLevels = 1000000000;

template <typename Name, std::size_t N>
std::size_t IndexOf(const Name (&names)[N], const std::string& text) {
    return static_cast<std::size_t>(std::find(std::begin(names), std::end(names), text) -
                                    std::begin(names));
}

[[noreturn]] void Wrong(const std::string& text, const std::string& what) {
    throw std::invalid_argument("'" + text + "' is " + what);
}

}  // namespace

std::int64_t WholeNumber(const std::string& text, std::int64_t least, std::int64_t most) {
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end || value < least || value > most) {
        Wrong(text,
              "not a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    }
    return value;
}

MemoryChoice MemoryOf(const std::string& text) {
    constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
    const char last = text.empty() ? ' ' : text.back();
    const std::size_t unit = kUnits.find(last);
    const bool percent = last == '%';
    const bool plain = unit == std::string_view::npos && !percent;
    const int shift = 10 * static_cast<int>(unit + 1);  // 0 without a unit
    try {
        const std::int64_t number = WholeNumber(plain ? text : text.substr(0, text.size() - 1), 1,
                                                percent ? 100 : kMost >> shift);
        if (percent) return {0, static_cast<int>(number)};
        return {static_cast<std::uint64_t>(number) << shift, 0};
    } catch (const std::invalid_argument&) {
        Wrong(text, "no size of memory, as in 500M, 4G or 50%");
    }
}

HashCase HashCaseOf(const std::string& text) {
    constexpr const char* kNumbers[] = {"0", "1", "2", "3"};
    constexpr const char* kNames[] = {"default", "case1", "case2", "mixed"};
    const std::size_t index = std::min(IndexOf(kNumbers, text), IndexOf(kNames, text));
    if (index == std::size(kNames)) Wrong(text, "none of 0 to 3, default, case1, case2, mixed");
    return static_cast<HashCase>(index);
}

SeaType SeaTypeOf(const std::string& text) {
    constexpr const char* kNames[] = {"both", "forward", "backward"};
    const std::size_t index = IndexOf(kNames, text);
    if (index == std::size(kNames)) Wrong(text, "none of both, forward, backward");
    return static_cast<SeaType>(index);
}

NumberRanges LevelNumbers(const std::string& text) {
    NumberRanges ranges;
    std::istringstream parts(text + ",");
    for (std::string part; std::getline(parts, part, ',');) {
        const std::size_t dash = part.find('-');
        try {
            const std::int64_t first = WholeNumber(part.substr(0, dash), 1, kMostLevels);
            const std::int64_t last = dash == std::string::npos
                                          ? first
                                          : WholeNumber(part.substr(dash + 1), first, kMostLevels);
            ranges.emplace_back(first, last);
        } catch (const std::invalid_argument&) {
            Wrong(text, "no list of level numbers, as in 5-9,12");
        }
    }
    return ranges;
}

}  // namespace kavit
