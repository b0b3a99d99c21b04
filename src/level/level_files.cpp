#include "level/level_files.h"

#include <algorithm>
#include <system_error>

#include "level/digit.h"
#include "level/without_case.h"

namespace kavit {

namespace fs = std::filesystem;

namespace {

// Takes the digits that `text` starts with, without leading zeros.
std::string_view TakeNumber(std::string_view& text) {
    const auto isZero = [](char c) { return c == '0'; };
    const auto* const digits = std::find_if_not(text.begin(), text.end(), isZero);
    const auto* const end = std::find_if_not(digits, text.end(), IsDigit);
    const std::string_view number(digits, static_cast<std::size_t>(end - digits));
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return number;
}

// Below, at or above 0 in natural order.
int NaturalCompare(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a[0]) && IsDigit(b[0])) {
            const std::string_view x = TakeNumber(a);
            const std::string_view y = TakeNumber(b);
            if (x.size() != y.size())
                return static_cast<int>(x.size()) - static_cast<int>(y.size());
            if (const int order = x.compare(y); order != 0) return order;
            continue;
        }
        const auto x = static_cast<unsigned char>(Upper(a[0]));
        const auto y = static_cast<unsigned char>(Upper(b[0]));
        if (x != y) return x - y;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    return static_cast<int>(b.empty()) - static_cast<int>(a.empty());
}

// A pipe or a device may be opened by its name; whoever goes through a folder does not mean it.
bool IsListed(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

}  // namespace

bool NaturalLess(std::string_view a, std::string_view b) {
    const int order = NaturalCompare(a, b);
    return order < 0 || (order == 0 && a < b);
}

std::vector<std::string> ListLevelFiles(const fs::path& folder, std::string_view extension) {
    const std::string ending = "." + std::string(extension);
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        const std::size_t length = std::min(name.size(), ending.size());
        const std::string_view end = std::string_view(name).substr(name.size() - length);
        if (name[0] != '.' && EqualWithoutCase(end, ending) && IsListed(entry->path()))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end(), NaturalLess);
    return names;
}

// Names that differ in case only are different files here, so the very name goes first.
std::optional<std::size_t> FindLevelFile(const std::vector<std::string>& names,
                                         std::string_view name) {
    auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) {
        found = std::find_if(names.begin(), names.end(), [name](const std::string& other) {
            return EqualWithoutCase(other, name);
        });
    }
    if (found == names.end()) return std::nullopt;
    return static_cast<std::size_t>(found - names.begin());
}

std::string LevelNameOf(std::string_view fileName) {
    return std::string(fileName.substr(0, fileName.find('.')));
}

std::string NextNumberedName(std::string_view name) {
    const auto* const first = std::find_if(name.begin(), name.end(), IsDigit);
    const auto* const last = std::find_if_not(first, name.end(), IsDigit);
    if (first == last) return std::string(name);
    std::string digits(first, last);
    auto digit = digits.rbegin();
    for (; digit != digits.rend() && *digit == '9'; ++digit) *digit = '0';
    if (digit == digits.rend()) {
        digits.insert(digits.begin(), '1');
    } else {
        ++*digit;
    }
    return std::string(name.begin(), first) + digits + std::string(last, name.end());
}

}  // namespace kavit
