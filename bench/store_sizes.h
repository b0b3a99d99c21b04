#pragma once

#include <cstdint>

namespace kavit::bench {

// What an offer costs and how a search grows with the size of its store, up to `largest` positions
// or as many as the machine has memory for. Hash Mixed, one thread.
int RunStoreSizes(std::int64_t largest);

}  // namespace kavit::bench
