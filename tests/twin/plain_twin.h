#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "level/board.h"

// The plain twin of the solver: the same search, written down as directly as it can be said, for
// the tests to compare every counter with and for the benchmark as the yardstick. Keys are built by
// scanning the whole board, the man's region by copying the board and filling the copy, walks by
// depth-first relaxation, and a probe compares whole keys. It shares no code with the solver and
// must never be made clever.

namespace kavit {

template <typename T>
using PlainCells = std::array<T, static_cast<std::size_t>(kCells)>;

struct PlainRecord {
    std::uint8_t Tag = 0;  // 1 forward, 2 backward; plus 10 on a path to a meeting
    std::int32_t Parent = 0;
    std::uint8_t Man = 0;
    std::int16_t Moves = 0;
};

struct PlainRun {
    std::int32_t Top = 0;
    std::int32_t End = 0;
};

struct PlainKept {
    int SolMoves = 32767;
    int SolPushes = 32767;
    std::int64_t SolFoundAt = 0;
};

struct PlainTwin {
    PlainTwin(std::int32_t numPos, int blocks, int optLevel, int seaType, int hashCase);

    // Analyses and searches: 0 solved, 1, 2, 9, 14 refused, 3 no solution, 4 store full, 8 stopped.
    int Solve(const Board& board);

    // Settings. The last three may be changed between two solves.
    std::int32_t NumPos;
    int Blocks;
    int OptLevel;
    int SeaType;
    int HashCase;

    // Yield: for each expanded position and after each progress. Progress, with BucketCnt: every
    // 5000 insertions, after the preparation and at the end. Both may set StopSea.
    std::function<void()> OnYield;
    std::function<void(std::int32_t)> OnProgress;
    bool StopSea = false;

    // What a search counts; all counters begin at 0.
    std::int32_t BucketCnt = 0;
    std::int32_t PosChanged = 0;
    std::int32_t PosDiscarded = 0;
    std::int32_t nSol = 0;
    std::int64_t HashCnt = 0;
    std::int64_t RHashCnt = 0;
    std::int32_t SeaSteps = 0;
    int ForwDepth = 0;
    int BackDepth = 0;
    int ForwLevelCnt = 0;
    int BackLevelCnt = 0;
    int LastSide = 0;
    std::int32_t HashSize = 0;
    bool SqCompact = false;
    int NumBoxes = 0;
    std::array<PlainKept, 2> Kept;
    std::vector<std::array<PlainRun, 2>> ForwTopEnd;  // [level][slot - 1], level 0 is not used
    std::vector<std::array<PlainRun, 2>> BackTopEnd;

    // The store: positions 1..BucketCnt.
    std::vector<std::uint8_t> PosKey;  // Blocks + 1 bytes each
    std::vector<PlainRecord> PosRec;
    std::vector<std::int32_t> HashHead;
    [[nodiscard]] const std::uint8_t* Key(std::int32_t position) const;
    // The box cells of a position in increasing order, and the cell of a key byte of the man.
    [[nodiscard]] std::vector<int> BoxCells(std::int32_t position) const;
    [[nodiscard]] int ManCell(std::uint8_t byte) const;

    // The board as the search sees it: 0 free, 1 wall, 2 box; walls only; tables of 0 and 1.
    PlainCells<std::uint8_t> SeaBoard{};
    PlainCells<std::uint8_t> EmptyBoard{};
    PlainCells<std::uint8_t> GoalSq{};
    PlainCells<std::uint8_t> BoxStart{};
    PlainCells<std::uint8_t> ReachSq{};  // 255 inside
    PlainCells<std::uint8_t> DeadSq{};
    PlainCells<std::uint8_t> InsideSq{};
    PlainCells<std::uint8_t> RegionSq{};
    PlainCells<std::uint8_t> ManDist{};
    PlainCells<std::uint8_t> CellToIdx{};
    std::array<int, 256> IdxToCell{};
    int ManStart = 0;
    int FirstCell = 0;
    int LastCell = 0;
    int FirstIn = 0;
    int LastIn = 0;

  private:
    // plain_analysis.cpp
    int AnalyseBoard(const Board& board);
    int SplitBoard(const Board& board);
    void FillDeadEnds();
    void FillReach(int cell);
    void NumberCells();
    void ComputeDeadSq();
    void MarkLive(int cell);
    int FrozenCheck();
    [[nodiscard]] bool OutsideFits() const;

    // plain_rules.cpp
    bool FrozenTest(int cell);
    bool Blocked(int cell, int axis);
    void FillManDist(int man);
    void RelaxManDist(int cell, int depth);
    int NormMan(int man);
    void FillFree(PlainCells<std::uint8_t>& mark, int cell);

    // plain_store.cpp
    void ClearStore();
    [[nodiscard]] std::uint8_t KeyByte(int cell) const;
    int StorePos(int manNorm, std::int32_t parent, int tag, int man, int moves);
    int ProbeAndInsert(std::int32_t parent, int tag, std::uint8_t manByte, int moves);
    int OfferToOwnSide(std::int32_t p, std::int32_t parent, std::uint8_t manByte, int moves);
    void MarkPath(std::int32_t a, std::int32_t b);

    // plain_search.cpp
    void ShowProgressAndYield();
    int PrepareSearch();
    int StoreBackwardStarts();
    int SearchRounds();
    int Step(bool forward);
    int ExpandForward(std::int32_t p);
    int ExpandBackward(std::int32_t p);
    void PlaceBoxes(std::int32_t p);
    void RemoveBoxes();

    // plain_meeting.cpp
    void EvalMeeting(std::int32_t meetPos, std::int32_t meetParent);
    [[nodiscard]] int CountMoves(const std::vector<std::int32_t>& path) const;

    std::vector<int> primes_;
    std::int64_t hashMult_ = 256;
    std::vector<std::uint8_t> curKey_;
    std::vector<int> boxList_;
    std::vector<int> unnamedBoxes_;  // boxes outside whose cell no key byte can name
    PlainCells<std::uint8_t> scratch_{};
    bool enclosed_ = true;
    bool notOnGoal_ = false;
    int normResult_ = 0;
    std::int32_t lastPos_ = 0;
    std::int32_t lowerBound_ = 0;
    std::int32_t progressTick_ = 0;
    PlainRun forw_;  // Top1..End1
    PlainRun back_;  // Top2..End2
};

}  // namespace kavit
