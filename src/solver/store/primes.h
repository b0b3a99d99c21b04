#pragma once

#include <cstdint>
#include <vector>

namespace kavit {

// Prime numbers up to 2147483647 by trial division with a table that grows as it is needed. The
// table also gives the probe steps of hash Case 2: entry 0 is 1, entry 1 is 2, then every prime.
class PrimeTable {
  public:
    static constexpr std::int32_t kLargest = 1073676289;  // 32767 squared: the range of IsPrime

    // n from 2 to kLargest; throws SolverFault beyond it.
    [[nodiscard]] bool IsPrime(std::int32_t n);
    // The smallest prime that is at least n. Throws SolverFault where it would leave the range.
    [[nodiscard]] std::int32_t NextPrime(std::int32_t n);
    // Entry k of the table, which grows to hold it.
    [[nodiscard]] std::int32_t Entry(int k);

  private:
    void Grow();

    std::vector<std::int32_t> primes_ = {1, 2, 3};
};

}  // namespace kavit
