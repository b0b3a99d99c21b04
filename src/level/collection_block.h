#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kavit {

// Rows that hang together: what a collection has in the place of a level. Keeps no more of them
// than a level can have.
class CollectionBlock {
  public:
    void AddRow(const std::string& row);
    // The rows without what lies outside the rectangle of the walls, as the single-level readers
    // have it, joined by \n. Empty when they make no level; `why` then says why.
    [[nodiscard]] std::string TakeRows(std::string& why);

  private:
    std::int64_t seen_ = 0;
    std::int64_t height_ = 0;  // from the first row with a wall to the last
    std::vector<std::string> rows_;
    std::size_t firstCol_ = std::string::npos;
    std::size_t lastCol_ = 0;
};

}  // namespace kavit
