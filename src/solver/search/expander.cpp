#include "solver/search/expander.h"

#include "solver/search/expander_of.h"

namespace kavit {

std::unique_ptr<Expander> MakeExpander(SearchState& state) {
    switch (Grid(state.Arrays).BoardShape) {
        case Grid::Shape::kRows16x8:
            return std::make_unique<ExpanderOf<RowBits<1, 1>>>(state);
        case Grid::Shape::kRows8x16:
            return std::make_unique<ExpanderOf<RowBits<2, 1>>>(state);
        case Grid::Shape::kRows16x16:
            return std::make_unique<ExpanderOf<RowBits<2, 2>>>(state);
        case Grid::Shape::kRows16x32:
            break;
    }
    return std::make_unique<ExpanderOf<RowBits<4, 4>>>(state);
}

}  // namespace kavit
