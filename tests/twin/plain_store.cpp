#include <algorithm>
#include <stdexcept>

#include "twin/plain_twin.h"

namespace kavit {

namespace {

std::size_t At(std::int64_t index) {
    return static_cast<std::size_t>(index);
}

bool IsPrime(std::int64_t n) {
    for (std::int64_t i = 2; i * i <= n; ++i) {
        if (n % i == 0) return false;
    }
    return true;
}

std::int64_t NextPrime(std::int64_t n) {
    if (n % 2 == 0) ++n;
    while (!IsPrime(n)) n += 2;
    return n;
}

}  // namespace

PlainTwin::PlainTwin(std::int32_t numPos, int blocks, int optLevel, int seaType, int hashCase)
    : NumPos(numPos), Blocks(blocks), OptLevel(optLevel), SeaType(seaType), HashCase(hashCase) {
    const std::int64_t wanted = (std::int64_t{numPos} * 12 + 5) / 10;  // 1.2 a position, to nearest
    HashSize = static_cast<std::int32_t>(NextPrime(wanted));
    PosKey.resize(At(std::int64_t{NumPos} + 1) * At(Blocks + 1));
    PosRec.resize(At(std::int64_t{NumPos} + 1));
    HashHead.resize(At(std::int64_t{HashSize} + 1));
    curKey_.resize(At(Blocks + 1));
    primes_ = {1, 2};
    while (primes_.size() < 256) primes_.push_back(static_cast<int>(NextPrime(primes_.back() + 1)));
}

void PlainTwin::ClearStore() {
    std::fill(HashHead.begin(), HashHead.end(), 0);
    BucketCnt = 0;
    lastPos_ = 0;
    hashMult_ = 256;
    while (hashMult_ > 2147483647 / HashSize) hashMult_ /= 2;
}

const std::uint8_t* PlainTwin::Key(std::int32_t position) const {
    return PosKey.data() + At(position) * At(Blocks + 1);
}

// Boxes outside that no byte can name are written as 0, and stay where they were.
std::uint8_t PlainTwin::KeyByte(int cell) const {
    if (SqCompact) return CellToIdx[At(cell)];
    return static_cast<std::uint8_t>(cell > 255 ? 0 : cell);
}

int PlainTwin::ManCell(std::uint8_t byte) const {
    return SqCompact ? IdxToCell[byte] : byte;
}

std::vector<int> PlainTwin::BoxCells(std::int32_t position) const {
    std::vector<int> cells;
    std::size_t unnamed = 0;
    for (int i = 0; i < NumBoxes; ++i) {
        const std::uint8_t byte = Key(position)[i];
        // Cell 0 itself can only be the first of all.
        if (byte == 0 && (SqCompact || i > 0)) {
            cells.push_back(unnamedBoxes_.at(unnamed++));
        } else {
            cells.push_back(ManCell(byte));
        }
    }
    return cells;
}

int PlainTwin::StorePos(int manNorm, std::int32_t parent, int tag, int man, int moves) {
    ++HashCnt;
    if (moves > 32767) throw std::overflow_error("the count of moves does not fit its field");
    std::size_t k = 0;
    for (int c = 0; c < kCells; ++c) {
        if (SeaBoard[At(c)] == 2) curKey_[k++] = KeyByte(c);
    }
    curKey_[At(NumBoxes)] = KeyByte(manNorm);
    const int result = ProbeAndInsert(parent, tag, KeyByte(man), moves);
    if (progressTick_ >= 5000) {
        progressTick_ = 0;
        ShowProgressAndYield();
    }
    return result;
}

int PlainTwin::ProbeAndInsert(std::int32_t parent, int tag, std::uint8_t manByte, int moves) {
    const int middle = curKey_[At(NumBoxes / 2)];
    int hashStep = -2;
    if (HashCase == 1) hashStep = -middle;
    if (HashCase == 2) hashStep = -primes_[At(middle)];
    if (hashStep % HashSize == 0) hashStep = -1;  // it would never leave its slot

    std::int64_t h = curKey_[At(NumBoxes)];
    for (int i = NumBoxes - 1; i >= 0; --i) {
        h = h * hashMult_ + curKey_[At(i)];
        if (h >= HashSize) h = h % HashSize + 1;
    }
    // In a store of one position a probe can come round without having met a free slot.
    bool room = false;
    for (std::int64_t probes = 0; probes <= HashSize; ++probes) {
        if (StopSea) return 8;
        const std::int32_t p = HashHead[At(h)];
        room = p == 0;
        if (room) break;
        if (std::equal(curKey_.begin(), curKey_.begin() + NumBoxes + 1, Key(p))) {
            if (PosRec[At(p)].Tag % 10 == tag) return OfferToOwnSide(p, parent, manByte, moves);
            ++nSol;
            EvalMeeting(p, parent);
            if (OptLevel >= 2) MarkPath(parent, p);
            return OptLevel > 0 ? -1 : 0;
        }
        h += hashStep;
        while (h < 0) h += HashSize;
        ++RHashCnt;
    }
    if (nSol >= 1) return -1;
    if (!room || BucketCnt >= NumPos) return 4;
    ++BucketCnt;
    ++progressTick_;
    lastPos_ = BucketCnt;
    HashHead[At(h)] = BucketCnt;
    PosRec[At(BucketCnt)] = {static_cast<std::uint8_t>(tag), parent, manByte,
                             static_cast<std::int16_t>(moves)};
    std::copy(curKey_.begin(), curKey_.begin() + NumBoxes + 1,
              PosKey.begin() + (Key(BucketCnt) - PosKey.data()));
    return -1;
}

int PlainTwin::OfferToOwnSide(std::int32_t p, std::int32_t parent, std::uint8_t manByte,
                              int moves) {
    PlainRecord& record = PosRec[At(p)];
    if (p < lowerBound_ || OptLevel == 0) return -1;
    if (moves >= record.Moves) {
        ++PosDiscarded;
        return -1;
    }
    if (OptLevel == 3 && PosRec[At(record.Parent)].Tag < 10) PosRec[At(record.Parent)].Tag += 10;
    record.Parent = parent;
    record.Man = manByte;
    record.Moves = static_cast<std::int16_t>(moves);
    ++PosChanged;
    return -1;
}

void PlainTwin::MarkPath(std::int32_t a, std::int32_t b) {
    for (std::int32_t p : {a, b}) {
        for (; p >= 1; p = PosRec[At(p)].Parent) {
            if (PosRec[At(p)].Tag < 10) PosRec[At(p)].Tag += 10;
        }
    }
}

}  // namespace kavit
