#pragma once

#include <cassert>
#include <cstddef>
#include <vector>

namespace kavit {

// The cheapest assignment of n rows to n columns, by shortest augmenting paths, with the prices of
// the columns that prove it: for every row the cost less the price is least at its own column.
class Assignment {
  public:
    explicit Assignment(int size);

    [[nodiscard]] int& Cost(int row, int column) { return cost_[Index(row, column)]; }
    int Solve();  // its cost
    [[nodiscard]] int ColumnOf(int row) const {
        assert(row >= 0 && static_cast<std::size_t>(row) < size_);
        return columnOf_[static_cast<std::size_t>(row)];
    }
    [[nodiscard]] int PriceOf(int column) const {
        assert(column >= 0 && static_cast<std::size_t>(column) < size_);
        return price_[static_cast<std::size_t>(column)];
    }

  private:
    [[nodiscard]] std::size_t Index(int row, int column) const {
        assert(row >= 0 && static_cast<std::size_t>(row) < size_);
        assert(column >= 0 && static_cast<std::size_t>(column) < size_);
        return static_cast<std::size_t>(row) * size_ + static_cast<std::size_t>(column);
    }
    void Augment(std::size_t row);

    std::size_t size_;
    std::vector<int> cost_;
    std::vector<int> columnOf_;
    std::vector<int> rowOf_;  // -1: free
    std::vector<int> price_;
};

}  // namespace kavit
