#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "solver/board/grid.h"

namespace kavit {

// A square of the man and what it costs.
struct ManCost {
    std::uint8_t Man = 0;  // in key numbering
    int Cost = 0;
};

// The man's walks among the boxes of a key; squares are in key numbering. Throws SolverFault where
// he cannot walk.
class ManWalks {
  public:
    virtual ~ManWalks() = default;
    // The steps between two squares.
    [[nodiscard]] virtual int Walk(const std::uint8_t* key, std::uint8_t from, std::uint8_t to) = 0;
    // For every target square the least of cost + walk over all sources. All squares are in one
    // region of the man.
    virtual void SpreadCosts(const std::uint8_t* key, const std::vector<ManCost>& sources,
                             std::vector<ManCost>& targets) = 0;
};

// For the level of the grid, which must outlive it; keys have `boxes` boxes.
[[nodiscard]] std::unique_ptr<ManWalks> MakeManWalks(const Grid& grid, int boxes);

}  // namespace kavit
