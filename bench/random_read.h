#pragma once

#include <cstddef>

namespace kavit::bench {

// Nanoseconds that one random read in a block of so many bytes takes on this machine, each read
// waiting for the one before: what a cache miss costs that nothing hides. The block asks for huge
// pages as the store does.
[[nodiscard]] double RandomReadNs(std::size_t bytes);

}  // namespace kavit::bench
