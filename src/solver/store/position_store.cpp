#include "solver/store/position_store.h"

#include <cmath>
#include <new>

#include "solver/types.h"

namespace kavit {

namespace {

constexpr std::size_t kSlack = 16;                         // readable bytes behind the last key
constexpr std::uint64_t kSpare = std::uint64_t{64} << 20;  // left to everything else

std::size_t RowBytes(std::int64_t blocks) {
    return sizeof(PosRecord) + static_cast<std::size_t>(blocks) + 1;
}

// No room at all where there is not even enough to ask.
std::uint64_t Available(MemorySource& source) {
    try {
        return source.Available();
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

}  // namespace

bool PositionStore::Allocate(std::int64_t numPos, std::int64_t blocks, std::int32_t hashSize) {
    rows_.Release();
    slots_.Release();
    // NumPos is below 2^31 and a row below 2^16 bytes: no overflow.
    const std::size_t rows = (static_cast<std::size_t>(numPos) + 1) * RowBytes(blocks) + kSlack;
    const std::size_t slots = (static_cast<std::size_t>(hashSize) + 1) * sizeof(std::uint32_t);
    // The kernel may promise more than there is and end the process when it is touched.
    const std::uint64_t available = Available(*source_);
    if (rows + slots > available || available - rows - slots < (rows + slots > kSpare ? kSpare : 0))
        return false;
    if (!rows_.Take(*source_, rows) || !slots_.Take(*source_, slots)) {
        rows_.Release();
        slots_.Release();
        return false;
    }
    numPos_ = static_cast<std::int32_t>(numPos);
    blocks_ = static_cast<int>(blocks);
    hashSize_ = hashSize;
    const auto indexBits =
        static_cast<unsigned>(std::bit_width(static_cast<std::uint64_t>(numPos)));
    indexMask_ = static_cast<std::uint32_t>((std::uint64_t{1} << indexBits) - 1);
    // ceil(2^63 / HashSize), too large by less than HashSize < 2^31: exact for every h below 2^32.
    reciprocal_ = ((std::uint64_t{1} << 63) - 1) / static_cast<std::uint64_t>(hashSize) + 1;
    hashMult_ = 256;
    while (hashMult_ > static_cast<std::uint32_t>(2147483647 / hashSize)) hashMult_ /= 2;
    return true;
}

bool PositionStore::Resize(std::int64_t numPos, std::int64_t blocks) {
    const std::int64_t slots = std::llrint(static_cast<double>(numPos) * 1.2);
    if (slots > PrimeTable::kLargest) return false;
    std::int32_t hashSize = 0;
    try {
        hashSize = Primes.NextPrime(static_cast<std::int32_t>(slots));
    } catch (const SolverFault&) {
        return false;
    } catch (const std::bad_alloc&) {
        return false;
    }
    const std::int64_t oldNumPos = numPos_;
    const std::int64_t oldBlocks = blocks_;
    const std::int32_t oldHashSize = hashSize_;
    if (Allocate(numPos, blocks, hashSize)) return true;
    // Back to the old sizes; the memory was there a moment ago. If it is gone, nothing is held.
    if (oldNumPos > 0 && !Allocate(oldNumPos, oldBlocks, oldHashSize)) numPos_ = 0;
    return false;
}

void PositionStore::Clear(int numBoxes, kavit::HashCase hashCase) {
    slots_.Clear();
    keyLength_ = numBoxes + 1;
    halfBoxes_ = numBoxes / 2;
    hashCase_ = hashCase;
    rowLength_ = sizeof(PosRecord) + static_cast<std::size_t>(keyLength_);
    FillSteps();
}

void PositionStore::FillSteps() {
    for (int byte = 0; byte < 256; ++byte) {
        std::int32_t step = -2;
        if (hashCase_ == kavit::HashCase::Case1) step = -byte;
        if (hashCase_ == kavit::HashCase::Case2) step = -Primes.Entry(byte);
        // A step of whole turns would stay on one slot for ever; only tiny tables meet this.
        if (step % hashSize_ == 0) step = -1;
        steps_[byte] = step;
    }
}

double PositionStore::BytesPerPosition() const {
    if (numPos_ == 0) return 0;
    const double slots = 4.0 * (static_cast<double>(hashSize_) + 1) / numPos_;
    return static_cast<double>(RowBytes(blocks_)) + slots;
}

std::uint32_t PositionStore::HomeSlot(const std::uint8_t* key) const {
    std::uint32_t h = key[keyLength_ - 1];
    for (int i = keyLength_ - 2; i >= 0; --i) h = Reduce(h * hashMult_ + key[i]);
    return h;
}

}  // namespace kavit
