#include "solver/moves/assignment.h"

#include <cassert>
#include <limits>

namespace kavit {

Assignment::Assignment(int size)
    : size_(static_cast<std::size_t>(size)),
      cost_(size_ * size_),
      columnOf_(size_, -1),
      rowOf_(size_, -1),
      price_(size_) {}

int Assignment::Solve() {
    for (std::size_t row = 0; row < size_; ++row) Augment(row);
    int sum = 0;
    for (std::size_t row = 0; row < size_; ++row)
        sum += cost_[Index(static_cast<int>(row), columnOf_[row])];
    return sum;
}

// The shortest way, at reduced costs, from the row to a free column: from each column that it takes
// on, on to what that column's own row could have instead.
void Assignment::Augment(std::size_t row) {
    constexpr int far = std::numeric_limits<int>::max();
    std::vector<int> length(size_, far);
    std::vector<int> from(size_, -1);  // the column before, -1: the row itself
    std::vector<bool> done(size_);
    auto at = static_cast<int>(row);  // the row in hand
    int reached = 0;                  // the length to it
    int column = -1;
    for (;;) {
        const int own =
            column < 0 ? 0 : cost_[Index(at, column)] - price_[static_cast<std::size_t>(column)];
        int least = -1;
        for (std::size_t c = 0; c < size_; ++c) {
            if (done[c]) continue;
            const int through = reached + cost_[Index(at, static_cast<int>(c))] - price_[c] - own;
            if (through < length[c]) {
                length[c] = through;
                from[c] = column;
            }
            if (least < 0 || length[c] < length[static_cast<std::size_t>(least)])
                least = static_cast<int>(c);
        }
        assert(least >= 0);  // fewer rows than columns have one
        column = least;
        assert(length[static_cast<std::size_t>(column)] >= reached);
        reached = length[static_cast<std::size_t>(column)];
        done[static_cast<std::size_t>(column)] = true;
        if (rowOf_[static_cast<std::size_t>(column)] < 0) break;
        at = rowOf_[static_cast<std::size_t>(column)];
    }
    for (std::size_t c = 0; c < size_; ++c)
        if (done[c]) price_[c] += length[c] - reached;
    while (column >= 0) {
        const int before = from[static_cast<std::size_t>(column)];
        const int owner =
            before < 0 ? static_cast<int>(row) : rowOf_[static_cast<std::size_t>(before)];
        rowOf_[static_cast<std::size_t>(column)] = owner;
        columnOf_[static_cast<std::size_t>(owner)] = column;
        column = before;
    }
    assert(columnOf_[row] >= 0);
}

}  // namespace kavit
