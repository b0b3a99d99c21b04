#include "level/collection_block.h"

#include <algorithm>

#include "level/board.h"

namespace kavit {

namespace {

constexpr int kFewestRows = 3;              // with fewer there is no square inside the walls
constexpr std::size_t kLongestRow = 10000;  // characters kept, and far more than a level has

}  // namespace

void CollectionBlock::AddRow(const std::string& row) {
    const std::size_t first = row.find('#');
    if (first == std::string::npos && height_ == 0) return;
    ++seen_;
    if (first != std::string::npos) {
        firstCol_ = std::min(firstCol_, first);
        lastCol_ = std::max(lastCol_, row.rfind('#'));
        height_ = seen_;
    }
    if (seen_ <= Maxrow) rows_.push_back(row.substr(0, kLongestRow));
}

std::string CollectionBlock::TakeRows(std::string& why) {
    const auto tooMany = [&why](std::int64_t count, const char* what, int most) {
        why = std::to_string(count) + what + std::to_string(most) + " are the most";
        return "";
    };
    const std::size_t width = lastCol_ - firstCol_ + 1;
    if (height_ > Maxrow) return tooMany(height_, " rows, and ", Maxrow);
    if (width > Maxcol) {
        return tooMany(static_cast<std::int64_t>(width), " columns, and ", Maxcol);
    }
    why = "too few rows for a level";
    if (height_ < kFewestRows) return "";
    std::string text;
    for (std::int64_t i = 0; i < height_; ++i) {
        std::string row = rows_[static_cast<std::size_t>(i)];
        row = row.substr(std::min(firstCol_, row.size()), width);
        row.resize(row.find_last_not_of(' ') + 1);
        text += (i > 0 ? "\n" : "") + (row.empty() ? " " : row);
    }
    const bool pieces = text.find_first_of("@+$*.") != std::string::npos;
    why = pieces ? "" : "no man, no box and no goal";
    return pieces ? text : "";
}

}  // namespace kavit
