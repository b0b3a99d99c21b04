#include "solver/store/primes.h"

#include <cassert>

#include "solver/types.h"

namespace kavit {

namespace {

// Skips the multiples of 2 and 3: only numbers 6k - 1 and 6k + 1 are tried.
std::int32_t NextCandidate(std::int32_t n) {
    assert(n % 2 == 1);
    return n + (n % 3 == 1 ? 4 : 2);
}

void CheckRange(std::int32_t n) {
    if (n > PrimeTable::kLargest)
        throw SolverFault("The hash table would need a prime above 1073676289");
}

}  // namespace

void PrimeTable::Grow() {
    std::int32_t candidate = NextCandidate(primes_.back());
    while (!IsPrime(candidate)) candidate = NextCandidate(candidate);
    primes_.push_back(candidate);
}

bool PrimeTable::IsPrime(std::int32_t n) {
    assert(n >= 1);
    CheckRange(n);
    for (std::size_t i = 1;; ++i) {
        if (i == primes_.size()) Grow();
        const std::int32_t p = primes_[i];
        if (static_cast<std::int64_t>(p) * p > n) return true;
        if (n % p == 0) return false;
    }
}

std::int32_t PrimeTable::NextPrime(std::int32_t n) {
    if (n % 2 == 0) ++n;
    while (!IsPrime(n)) n = NextCandidate(n);
    assert(n <= kLargest);
    return n;
}

std::int32_t PrimeTable::Entry(int k) {
    assert(k >= 0);
    while (primes_.size() <= static_cast<std::size_t>(k)) Grow();
    return primes_[static_cast<std::size_t>(k)];
}

}  // namespace kavit
