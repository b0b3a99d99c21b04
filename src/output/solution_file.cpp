#include "output/solution_file.h"

#include <cmath>
#include <cstddef>

#include "output/number_text.h"
#include "output/watch.h"

namespace kavit {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Solution 1 is worth a word of its own only when its moves differ.
bool HasTwoSolutions(const ReportInput& r) {
    return r.Kept[0].SolMoves != r.Kept[1].SolMoves;
}

std::string Line(std::string_view label, const std::string& value) {
    return std::string(label) + value + std::string(kLineEnd);
}

std::string ResultLine(const ReportInput& r) {
    std::string pairs = B(r.Kept[0].SolMoves) + "/" + B(r.Kept[0].SolPushes);
    if (HasTwoSolutions(r)) pairs += "  " + S(r.Kept[1].SolMoves) + "/" + B(r.Kept[1].SolPushes);
    return Line("\\RESULT:         ", pairs);
}

// The report shows a hash counter as one that began at -2147483647 and has 32 bits: when it has
// passed zero it stands behind a star as it is; where it has no room it is shown in full.
std::string HashCount(std::int64_t count) {
    constexpr std::int64_t half = 2147483647;
    if (count < half || count > 2 * half) return B(count);
    return std::string("*") + B(count - half);
}

// Which solution of which phase each kept one was.
std::string FoundAt(const ReportInput& r) {
    if (r.Counters.SeaPhase < 2) {
        const auto found = [&](std::size_t k) {
            return B(r.Kept[k].SolFoundAt) + "/" + B(r.Kept[k].SolPhase);
        };
        return found(0) + (r.Kept[0].SolPhase != r.Kept[1].SolPhase ? ", " + found(1) : "");
    }
    const auto found = [&](std::size_t k) {
        const KeptSolution& kept = r.Kept[k];
        return S(kept.SolPhase == 1 ? kept.SolFoundAtSearch : kept.SolFoundAt) + "/" +
               B(kept.SolPhase);
    };
    return found(0) + ",  " + found(1);
}

std::string ExpertLines(const ReportInput& r) {
    const SearchCounters& c = r.Counters;
    return Line("\\Pos. Changed:   ", B(c.PosChanged)) +
           Line("\\Pos. Discarded: ", B(c.PosDiscarded)) + Line("\\Bucket_size:    ", B(r.NumPos)) +
           Line("\\HashCnt:        ", HashCount(c.HashCnt)) +
           Line("\\RHashCnt:       ", HashCount(c.RHashCnt)) +
           Line("\\nSol/Step:     ", FoundAt(r));
}

std::string StopReason(const ReportInput& r) {
    if (r.TimeOut) return "TimeOut";
    if (r.SeaResult == Result::Stopped) return "Stopped";
    if (r.SeaResult == Result::OutOfMemory) return "Out of Memory";
    return "";
}

}  // namespace

std::string SolutionBaseName(const ReportInput& r) {
    if (r.LevelName.empty() || r.HideExpert) return r.LevelName;
    std::string name = r.LevelName;
    name += kOptSuffix.at(static_cast<std::size_t>(r.OptLevel));
    if (r.OptSpecial) name += "_sp";
    if (r.HashCase != 0) name.append("_").append(B(r.HashCase));
    return name;
}

SolutionName ChooseSolutionName(const ReportInput& r) {
    using Kind = SolutionName::Kind;
    if (r.chkNoWriteSol) return {Kind::None, ""};
    const std::string base = SolutionBaseName(r);
    if (base.empty()) return {Kind::Ask, ""};
    return {r.chkWriteSol ? Kind::Write : Kind::Ask, base + ".sol"};
}

std::string SolutionFileText(const ReportInput& r) {
    std::string text;
    // A board that no level file holds is part of the answer.
    if (r.BoardImported || r.BoardMoved) text += BoardText(r.Level, kLineEnd) + Line("", "");
    text += Line(r.Kept[0].SolString, "");
    text += Line(r.Kept[HasTwoSolutions(r) ? 1 : 0].SolString, "");  // twice when there is one
    text += Line("", "");
    text += ResultLine(r);
    text += Line("\\Time:           ", SecondsText(r.SeaStart, r.LastTick));
    text += Line("\\Pos.Count:      ", B(r.Counters.BucketCnt));
    if (!r.HideExpert) text += ExpertLines(r);
    text +=
        Line("\\Best Solution between", S(r.Counters.nSolSearch + r.Counters.nSol) + " analyzed");
    if (r.StopSea) text += Line("\\Best Solution before ", StopReason(r));
    // Last, so that every other line keeps its place.
    if (!r.HideExpert && r.OptLevel == 3) {
        text += Line("\\Moves proved:   ", r.Counters.MovesProved ? "yes" : "no");
    }
    return text;
}

std::string SolutionViewText(const ReportInput& r) {
    const auto pair = [&](std::size_t k) {
        return S(r.Kept[k].SolMoves) + "/" + S(r.Kept[k].SolPushes);
    };
    std::string text = BoardText(r.Level, kLineEnd);
    if (!text.empty()) text.pop_back();  // the line feeds stand between the rows only
    text += Line("", "") + Line("", "");
    text += Line(r.Kept[0].SolString, "");
    if (HasTwoSolutions(r)) text += Line(r.Kept[1].SolString, "");
    text += Line("", "") + "RESULT: " + pair(0);
    if (HasTwoSolutions(r)) text += "   " + pair(1);
    if (r.StopSea) {
        text += Line("", "") + Line("", "") + "Best Solution before ";
        text += r.TimeOut ? "TimeOut" : "Stopped";
    }
    return text;
}

std::string SecondsText(double seaStart, double lastTick) {
    double seconds = lastTick - seaStart;
    if (seconds < 0) seconds += kSecondsPerDay;
    const std::int64_t hundredths = std::llrint(seconds * 100);
    std::string text = B(hundredths / 100);
    const std::string decimals = Padded(hundredths % 100, 2);
    if (decimals == "00") return text;
    text += "." + decimals;
    if (text.back() == '0') text.pop_back();
    return text;
}

}  // namespace kavit
