#include "output/solution_file.h"

#include <cmath>
#include <cstddef>

#include "output/number_text.h"
#include "output/watch.h"

namespace kavit {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string Line(std::string_view label, const std::string& value) {
    return std::string(label) + value + std::string(kLineEnd);
}

std::string ResultLine(const SolveReport& r) {
    std::string pairs = B(r.Kept[0]->SolMoves) + "/" + B(r.Kept[0]->SolPushes);
    if (r.HasTwoSolutions()) pairs += "  " + S(r.Kept[1]->SolMoves) + "/" + B(r.Kept[1]->SolPushes);
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
std::string FoundAt(const SolveReport& r) {
    if (r.Counters.SeaPhase < 2) {
        const auto found = [&](std::size_t k) {
            return B(r.Kept[k]->SolFoundAt) + "/" + B(r.Kept[k]->SolPhase);
        };
        return found(0) + (r.Kept[0]->SolPhase != r.Kept[1]->SolPhase ? ", " + found(1) : "");
    }
    const auto found = [&](std::size_t k) {
        const KeptSolution& kept = *r.Kept[k];
        return S(kept.SolPhase == 1 ? kept.SolFoundAtSearch : kept.SolFoundAt) + "/" +
               B(kept.SolPhase);
    };
    return found(0) + ",  " + found(1);
}

std::string ExpertLines(const SolveReport& r) {
    const SearchCounters& c = r.Counters;
    return Line("\\Pos. Changed:   ", B(c.PosChanged)) +
           Line("\\Pos. Discarded: ", B(c.PosDiscarded)) +
           Line("\\Bucket_size:    ", B(r.Sizes.NumPos)) +
           Line("\\HashCnt:        ", HashCount(c.HashCnt)) +
           Line("\\RHashCnt:       ", HashCount(c.RHashCnt)) +
           Line("\\nSol/Step:     ", FoundAt(r));
}

// "" where a fault ended the solve.
std::string StopReason(StopCause cause) {
    switch (cause) {
        case StopCause::Time:
            return "TimeOut";
        case StopCause::User:
            return "Stopped";
        case StopCause::Memory:
            return "Out of Memory";
        case StopCause::No:
            break;
    }
    return "";
}

// What level 4 has found out about the fewest moves of all solutions.
std::string FewestMovesText(const SolveReport& r) {
    std::string text = B(r.Kept[0]->SolMoves);
    text += r.FewestMovesProved ? ", proved"
                                : ", at least " + B(r.MovesLowerBound.value_or(0)) + " needed";
    return text + (r.HasTwoSolutions() ? "; the second solution has the fewest pushes" : "");
}

}  // namespace

std::string SolutionBaseName(const SolveRequest& request) {
    if (request.LevelName.empty() || request.HideExpert) return request.LevelName;
    const SolverOptions& options = request.Options;
    std::string name = request.LevelName;
    name += kOptSuffix.at(static_cast<std::size_t>(options.OptLevel));
    if (options.OptSpecial) name += "_sp";
    const auto hash = static_cast<int>(options.HashCase.value_or(HashCase::Default));
    if (hash != 0) name.append("_").append(B(hash));
    return name;
}

SolutionName ChooseSolutionName(const SolveRequest& request, bool noWriteSol, bool writeSol) {
    using Kind = SolutionName::Kind;
    if (noWriteSol) return {Kind::None, ""};
    const std::string base = SolutionBaseName(request);
    if (base.empty()) return {Kind::Ask, ""};
    return {writeSol ? Kind::Write : Kind::Ask, base + ".sol"};
}

std::string SolutionFileText(const SolveReport& r) {
    std::string text;
    // A board that no level file holds is part of the answer.
    const SolveRequest& asked = r.Request;
    if (asked.BoardImported || asked.BoardMoved)
        text += BoardText(asked.Level, kLineEnd) + Line("", "");
    text += Line(r.Kept[0]->SolString, "");
    text += Line(r.Kept[r.HasTwoSolutions() ? 1 : 0]->SolString, "");  // twice when there is one
    text += Line("", "");
    text += ResultLine(r);
    text += Line("\\Time:           ", SecondsText(r.SeaStart, r.LastTick));
    text += Line("\\Pos.Count:      ", B(r.Counters.BucketCnt));
    if (!asked.HideExpert) text += ExpertLines(r);
    text +=
        Line("\\Best Solution between", S(r.Counters.nSolSearch + r.Counters.nSol) + " analyzed");
    if (r.EndedEarly()) text += Line("\\Best Solution before ", StopReason(r.Cause));
    // Last, so that every other line keeps its place.
    if (!asked.HideExpert && asked.Options.OptLevel >= OptLevel::SomethingPlus)
        text += Line("\\Moves proved:   ", r.MovesProved ? "yes" : "no");
    // Beyond 8,000,000 positions it is chosen without being asked for.
    if (!asked.HideExpert && r.Counters.HashCase == HashCase::Mixed)
        text += Line("\\Hash:           ", std::string(HashName(HashCase::Mixed)));
    if (asked.Options.OptLevel == OptLevel::FewestOfAll)
        text += Line("\\Fewest moves:   ", FewestMovesText(r));
    return text;
}

std::string SolutionViewText(const SolveReport& r) {
    const auto pair = [&](std::size_t k) {
        return S(r.Kept[k]->SolMoves) + "/" + S(r.Kept[k]->SolPushes);
    };
    std::string text = BoardText(r.Request.Level, kLineEnd);
    if (!text.empty()) text.pop_back();  // the line feeds stand between the rows only
    text += Line("", "") + Line("", "");
    text += Line(r.Kept[0]->SolString, "");
    if (r.HasTwoSolutions()) text += Line(r.Kept[1]->SolString, "");
    text += Line("", "") + "RESULT: " + pair(0);
    if (r.HasTwoSolutions()) text += "   " + pair(1);
    if (r.Request.Options.OptLevel == OptLevel::FewestOfAll) {
        text += Line("", "") + Line("", "") + "Fewest moves of all: " + FewestMovesText(r);
    }
    if (r.EndedEarly()) {
        text += Line("", "") + Line("", "") + "Best Solution before ";
        text += r.Cause == StopCause::Time ? "TimeOut" : "Stopped";
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
