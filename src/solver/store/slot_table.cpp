#include "solver/store/slot_table.h"

#include <bit>
#include <cmath>
#include <string>

namespace kavit {

std::int32_t SlotTable::SizeFor(std::int32_t numPos, PrimeTable& primes) {
    if (numPos > kMostPositions)
        throw SolverFault("Hash Default, Case 1 and Case 2 hold up to " +
                          std::to_string(kMostPositions) +
                          " positions; a larger store needs hash Mixed");
    assert(numPos > 0);
    return primes.NextPrime(static_cast<std::int32_t>(std::llrint(numPos * 1.2)));
}

void SlotTable::StartSearch(std::uint32_t* slots, std::int32_t numPos, int keyLength,
                            HashCase hashCase, PrimeTable& primes) {
    assert(hashCase != HashCase::Mixed && numPos > 0 && keyLength > 1);
    slots_ = slots;
    keyLength_ = keyLength;
    hashSize_ = SizeFor(numPos, primes);
    const auto indexBits = static_cast<unsigned>(std::bit_width(static_cast<unsigned>(numPos)));
    indexMask_ = (1U << indexBits) - 1;
    assert(numPos <= hashSize_ && static_cast<std::uint32_t>(numPos) <= indexMask_);
    // ceil(2^63 / HashSize), too large by less than HashSize < 2^31: exact for every h below 2^32.
    reciprocal_ = ((std::uint64_t{1} << 63) - 1) / static_cast<std::uint64_t>(hashSize_) + 1;
    hashMult_ = 256;
    while (hashMult_ > static_cast<std::uint32_t>(2147483647 / hashSize_)) hashMult_ /= 2;
    assert(hashMult_ >= 1);
    oneStep_ = hashCase == HashCase::Default;
    for (int byte = 0; byte < 256; ++byte) {
        std::int32_t step = -2;
        if (hashCase == HashCase::Case1) step = -byte;
        if (hashCase == HashCase::Case2) step = -primes.Entry(byte);
        // A step of whole turns would stay on one slot for ever; only tiny tables meet this.
        if (step % hashSize_ == 0) step = -1;
        steps_[static_cast<std::size_t>(byte)] = step;
        assert(step < 0 && (step % hashSize_ != 0 || hashSize_ == 1));
    }
}

}  // namespace kavit
