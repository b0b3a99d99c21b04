#include "solver/expander.h"

#include "solver/expander_of.h"

namespace kavit {

std::unique_ptr<Expander> MakeExpander(SearchState& state) {
    const int words = (Grid(state.Arrays).BitCount + 63) / 64;
    switch (words) {
        case 1:
            return std::make_unique<ExpanderOf<1>>(state);
        case 2:
            return std::make_unique<ExpanderOf<2>>(state);
        case 3:
            return std::make_unique<ExpanderOf<3>>(state);
        case 4:
            return std::make_unique<ExpanderOf<4>>(state);
        default:
            return std::make_unique<ExpanderOf<5>>(state);
    }
}

}  // namespace kavit
