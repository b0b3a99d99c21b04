#include <algorithm>

#include "twin/plain_twin.h"

namespace kavit {

namespace {

std::size_t At(std::int64_t index) {
    return static_cast<std::size_t>(index);
}

void Record(std::vector<std::array<PlainRun, 2>>& table, int level, PlainRun run) {
    if (table.size() <= At(level)) table.resize(At(level) + 1);
    table[At(level)][0] = run;
}

}  // namespace

int PlainTwin::Solve(const Board& board) {
    ForwDepth = BackDepth = ForwLevelCnt = BackLevelCnt = LastSide = 0;
    PosChanged = PosDiscarded = SeaSteps = nSol = BucketCnt = 0;
    HashCnt = RHashCnt = 0;
    Kept = {};
    // Cells beyond the walls are never written again, so nothing of the last level may stay there.
    ManDist.fill(255);
    scratch_.fill(1);
    ForwTopEnd.clear();
    BackTopEnd.clear();
    const int refused = AnalyseBoard(board);
    if (refused != 0) return refused;
    if (!OutsideFits()) return 3;
    const int prepared = PrepareSearch();
    if (prepared == 0 || prepared == 4) return prepared;
    return SearchRounds();
}

void PlainTwin::ShowProgressAndYield() {
    if (OnProgress) OnProgress(BucketCnt);
    if (OnYield) OnYield();
}

int PlainTwin::PrepareSearch() {
    const int optLevel = OptLevel;
    OptLevel = 0;
    ClearStore();
    progressTick_ = 0;
    lowerBound_ = 0;
    StorePos(NormMan(ManStart), -1, 1, ManStart, 0);
    forw_ = {lastPos_, lastPos_};
    const int result = StoreBackwardStarts();
    Record(ForwTopEnd, 1, forw_);
    Record(BackTopEnd, 1, back_);
    OptLevel = optLevel;
    progressTick_ = BucketCnt;
    ShowProgressAndYield();
    return result;
}

// One position for each region that the boxes on the goals leave free.
int PlainTwin::StoreBackwardStarts() {
    SeaBoard = EmptyBoard;
    InsideSq.fill(0);
    FillFree(InsideSq, FirstIn);
    for (int c = 0; c < kCells; ++c) {
        if (GoalSq[At(c)] != 0) SeaBoard[At(c)] = 2;
    }
    RegionSq.fill(0);
    int result = 0;
    back_ = {};
    for (int c = FirstIn; c <= LastIn; ++c) {
        if (InsideSq[At(c)] == 0 || RegionSq[At(c)] != 0 || SeaBoard[At(c)] != 0) continue;
        RegionSq.fill(0);
        FillFree(RegionSq, c);
        if (std::find(RegionSq.begin(), RegionSq.end(), 1) - RegionSq.begin() != c) continue;
        result = StorePos(c, -1, 2, c, 0);
        if (result == 0) break;
        back_.End = lastPos_;
        if (back_.Top == 0) back_.Top = lastPos_;
    }
    return result;
}

int PlainTwin::SearchRounds() {
    SeaBoard = EmptyBoard;
    int result = -1;
    while (result == -1) {
        int side = SeaType;
        if (side == 0) side = forw_.End - forw_.Top >= back_.End - back_.Top ? 2 : 1;
        result = Step(side == 1);
        LastSide = side;
        ++SeaSteps;
        if (nSol > 0) break;
    }
    ForwLevelCnt = ForwDepth - (LastSide == 1 ? 1 : 0);
    BackLevelCnt = BackDepth - (LastSide == 1 ? 0 : 1);
    ShowProgressAndYield();
    return result;
}

int PlainTwin::Step(bool forward) {
    PlainRun& side = forward ? forw_ : back_;
    int& depth = forward ? ForwDepth : BackDepth;
    ++depth;
    const PlainRun range = side;
    lowerBound_ = range.Top;
    lastPos_ = 0;
    side = {};
    for (std::int32_t p = range.Top; p <= range.End; ++p) {
        if (OnYield) OnYield();
        if (StopSea) return 8;
        const int result = forward ? ExpandForward(p) : ExpandBackward(p);
        if (result >= 0) return result;
    }
    if (OptLevel >= 2) Record(forward ? ForwTopEnd : BackTopEnd, depth + 1, side);
    if (nSol > 0) return 0;
    return side.Top > 0 ? -1 : 3;
}

int PlainTwin::ExpandForward(std::int32_t p) {
    const int m = PosRec[At(p)].Moves;
    PlaceBoxes(p);
    FillManDist(ManCell(PosRec[At(p)].Man));
    for (const int b : boxList_) {
        for (const int dir : Dir) {
            const int s = b - dir;
            const int t = b + dir;
            if (s < 0 || s >= kCells || ManDist[At(s)] == 255) continue;
            if (SeaBoard[At(t)] != 0 || DeadSq[At(t)] != 0) continue;
            SeaBoard[At(t)] = 2;
            SeaBoard[At(b)] = 0;
            if (!FrozenTest(t)) {
                const int result = StorePos(NormMan(b), p, 1, b, ManDist[At(s)] + m);
                if (result > 0 || (nSol > 0 && OptLevel == 0)) {
                    SeaBoard = EmptyBoard;
                    return std::max(result, 0);
                }
                if (result < 0) {
                    forw_.End = lastPos_;
                    if (forw_.Top == 0) forw_.Top = lastPos_;
                }
            }
            SeaBoard[At(t)] = 0;
            SeaBoard[At(b)] = 2;
        }
    }
    RemoveBoxes();
    return -1;
}

int PlainTwin::ExpandBackward(std::int32_t p) {
    const int m = PosRec[At(p)].Moves;
    PlaceBoxes(p);
    FillManDist(ManCell(PosRec[At(p)].Man));
    for (const int b : boxList_) {
        for (const int dir : Dir) {
            const int n = b + dir;
            if (n < 0 || n >= kCells || ManDist[At(n)] == 255) continue;
            const int w = n + dir;
            if (ManDist[At(w)] == 255) continue;
            SeaBoard[At(b)] = 0;
            SeaBoard[At(n)] = 2;
            const int moves = BackDepth == 1 ? 1 : ManDist[At(n)] + m;
            const int result = StorePos(NormMan(w), p, 2, w, moves);
            if (result > 0 || (nSol > 0 && OptLevel == 0)) {
                SeaBoard = EmptyBoard;
                return std::max(result, 0);
            }
            if (result < 0) {
                back_.End = lastPos_;
                if (back_.Top == 0) back_.Top = lastPos_;
            }
            SeaBoard[At(b)] = 2;
            SeaBoard[At(n)] = 0;
        }
    }
    RemoveBoxes();
    return -1;
}

void PlainTwin::PlaceBoxes(std::int32_t p) {
    boxList_ = BoxCells(p);
    for (const int b : boxList_) SeaBoard[At(b)] = 2;
}

void PlainTwin::RemoveBoxes() {
    for (const int b : boxList_) SeaBoard[At(b)] = 0;
}

}  // namespace kavit
