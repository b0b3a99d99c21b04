#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace kavit {

// Up to which of the positions 0..last a level could still be solved, by asking for as few of them
// as can be. Once it cannot be solved it never can again, so that an answer settles all positions
// before it or all behind.
//
//     TurningPoint turn(last);
//     while (const auto k = turn.Next()) turn.Answer(*k, solvable(*k));
//
// A position may stay unknown, when time or memory ends: the questions go on to both sides of it.
// Each unknown costs a whole time limit, so after `patience` of them there is no further question,
// and the answer is a range.
class TurningPoint {
  public:
    enum class Solvable : std::uint8_t { Yes, No, Unknown };

    // `last` is known not to be solvable.
    explicit TurningPoint(std::int64_t last, int patience = 3);

    [[nodiscard]] std::optional<std::int64_t> Next() const;
    void Answer(std::int64_t position, Solvable solvable);

    // The last position that is known to be solvable, -1 for none, and the first that is known
    // not to be. Nothing lies between them when the answer is exact.
    [[nodiscard]] std::int64_t LastYes() const { return lastYes_; }
    [[nodiscard]] std::int64_t FirstNo() const { return firstNo_; }
    [[nodiscard]] bool Exact() const { return firstNo_ - lastYes_ == 1; }

  private:
    std::int64_t lastYes_ = -1;
    std::int64_t firstNo_;
    std::vector<std::int64_t> unknown_;  // increasing
    int patience_;
};

}  // namespace kavit
