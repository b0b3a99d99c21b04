#pragma once

#include <cstdint>

namespace kavit {

// Measures the man's walk between two squares (in key numbering) among the boxes of a key.
class WalkMeter {
  public:
    virtual ~WalkMeter() = default;
    [[nodiscard]] virtual int Walk(const std::uint8_t* key, std::uint8_t from, std::uint8_t to) = 0;
};

}  // namespace kavit
