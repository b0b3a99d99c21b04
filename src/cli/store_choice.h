#pragma once

#include <cstdint>
#include <string>

#include "cli/options.h"
#include "solver/types.h"

namespace kavit {

// The store that the options ask for, for a level of so many boxes.
struct StoreChoice {
    Sizes Fields;
    std::uint64_t Bytes = 0;
    std::string Wrong;   // why there can be none, "" when there can
    bool Usage = false;  // then: no machine could give it
};

// `available` is what the process may take; "" for `Wrong` means that it fits.
[[nodiscard]] StoreChoice ChooseStore(const Options& options, int boxes, std::uint64_t available);

// "4000000 positions of up to 8 boxes take 91 MB; this machine can give 14 GB".
[[nodiscard]] std::string StoreText(const StoreChoice& choice, std::uint64_t available);

// What to tell whose search has filled the store.
[[nodiscard]] std::string FullStoreText(const StoreChoice& choice, std::uint64_t available);

}  // namespace kavit
