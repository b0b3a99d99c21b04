#pragma once

#include <cstddef>

namespace kavit {

// Begins to fetch a few bytes that will be read soon: they may lie across two cache lines.
inline void PrefetchBytes(const void* first, std::size_t bytes) {
    for (const std::size_t at : {std::size_t{0}, bytes - 1})
        __builtin_prefetch(static_cast<const std::byte*>(first) + at);
}

}  // namespace kavit
