#include "fuzz/fuzz_check.h"

#include <algorithm>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "solver/search/worth_threads.h"
#include "support/levels.h"
#include "support/plain_oracle.h"

namespace kavit::test {

namespace {

constexpr std::size_t kOracleStates = 20000;

// Thrown by a check that fails.
struct Wrong {
    FuzzFailure Failure;
};

void Require(bool holds, const std::string& what, const std::string& detail = "") {
    if (!holds) throw Wrong{{what, detail}};
}

// The search for the fewest moves of all, and what can be said of it without knowing the level.
std::string SeekFewest(Solver& solver, const FuzzSolve& solve, FuzzTally& tally) {
    StopAt hooks(solve.StopPassAfter);
    const int before = solver.Kept(0)->SolMoves;
    const Result result = solver.FewestMoves(hooks);
    const SearchCounters& c = solver.Counters();
    const std::string text = "\n" + KeptText(solver);
    const std::string fault = KeptFault(solver, solve.Ask.Level);
    Require(fault.empty(), fault.substr(0, fault.find(':')), fault);
    const int moves = solver.Kept(0)->SolMoves;
    Require(c.MovesLowerBound > 0 && c.MovesLowerBound <= moves && moves <= before,
            "fewer moves than there can be, or more than before", text);
    Require(c.FewestMovesProved == (c.MovesLowerBound == moves) &&
                (c.FewestMovesProved || result != Result::GoOn),
            "FewestMovesProved where it is not due, or the other way round", text);
    Require(result != Result::Stopped || solve.StopPassAfter != 0,
            "the search for the fewest moves stopped by itself", text);
    tally.FewestProved += c.FewestMovesProved ? 1 : 0;
    tally.FewestFull += result == Result::OutOfMemory ? 1 : 0;
    tally.FewestStopped += result == Result::Stopped ? 1 : 0;
    tally.FewestBetter += moves < before ? 1 : 0;
    return text;
}

// The optimizer, the strings and what can be said of them without knowing the level.
std::string Finish(Solver& solver, const FuzzSolve& solve, const Figures& search,
                   FuzzTally& tally) {
    StopAt hooks(solve.StopPassAfter);
    const Result pass = solver.OptimizeMoves(hooks);
    solver.BuildSolutions();
    std::string text = KeptText(solver);
    const SearchCounters& c = solver.Counters();
    const std::string fault = KeptFault(solver, solve.Ask.Level);
    Require(fault.empty(), fault.substr(0, fault.find(':')), fault);
    Require(solver.Kept(0)->SolMoves <= search["SolMoves0"] &&
                solver.Kept(1)->SolMoves <= search["SolMoves1"] &&
                solver.Kept(1)->SolPushes == search["SolPushes1"],
            "the optimizer lost a better solution", text);
    Require(c.MovesProved == (solve.Ask.OptLevel >= 3 && pass == Result::GoOn),
            "MovesProved where it is not due, or the other way round", text);
    if (solve.Ask.OptLevel < 2) {
        Require(pass == Result::GoOn && c.BucketCnt == search["BucketCnt"] && c.nSolSearch == 0,
                "the optimizer ran without being asked", text);
    }
    switch (pass) {
        case Result::GoOn:
            break;
        case Result::Stopped:
            ++tally.PassesStopped;
            Require(solve.StopPassAfter != 0, "the optimizer stopped by itself", text);
            break;
        case Result::OutOfMemory:
            ++tally.PassesFull;
            Require(c.BucketCnt == solve.Ask.NumPos, "out of memory with room left", text);
            break;
        default:
            Require(false, "a result that the optimizer does not have", text);
    }
    tally.Proved += c.MovesProved ? 1 : 0;
    if (solve.Ask.OptLevel == 4) text += SeekFewest(solver, solve, tally);
    return text;
}

// What can be said of a search that ended early.
void CheckEarlyEnd(const FuzzSolve& solve, const Figures& search) {
    if (search.Result == 8)
        Require(solve.Ask.StopAfter != 0, "the search stopped by itself", search.Text());
    if (search.Result == 4)
        Require(search["BucketCnt"] == solve.Ask.NumPos, "out of memory with room left",
                search.Text());
}

void CompareWithOracle(const Solver& solver, const Figures& search, const OracleAnswer& truth) {
    if (truth.Verdict == OracleVerdict::TooBig) return;
    const std::string detail = search.Text() + "; the game: " + std::to_string(truth.Pushes) +
                               " pushes, " + std::to_string(truth.Moves) + " moves";
    const bool solvable = truth.Verdict == OracleVerdict::Solvable;
    if (search.Result != 0) {
        Require(!solvable, "a level with a solution refused", detail);
        return;
    }
    Require(solvable, "a solution of a level that has none", detail);
    const KeptSolution& kept = solver.Kept(1).value();
    Require(kept.SolPushes == truth.Pushes, "not the fewest pushes", detail);
    Require(kept.SolMoves >= truth.Moves, "fewer moves than there can be", detail);
    if (solver.Counters().MovesProved)
        Require(kept.SolMoves == truth.Moves, "proved, but not the fewest moves",
                KeptText(solver) + "; " + detail);
}

void CompareMoves(const Solver& solver, const Board& level) {
    const OracleAnswer truth = AskOracle(level, kOracleStates, OracleAim::FewestMoves);
    if (truth.Verdict == OracleVerdict::TooBig) return;
    const std::string detail =
        KeptText(solver) + "; the game: " + std::to_string(truth.Moves) + " moves";
    Require(solver.Counters().MovesLowerBound <= truth.Moves, "a bound above the truth", detail);
    Require(solver.Kept(0)->SolMoves >= truth.Moves, "fewer moves than there can be", detail);
}

std::int64_t& CountOf(OracleVerdict verdict, FuzzTally& tally) {
    if (verdict == OracleVerdict::TooBig) return tally.TooBig;
    return verdict == OracleVerdict::Solvable ? tally.Solvable : tally.Unsolvable;
}

// One solve and all its checks; its counts as text.
std::string SolveAndCheck(Solver& solver, const FuzzSolve& solve, FuzzTally& tally) {
    const Figures search = AskWithSizes(solver, solve.Ask);
    PlainTwin twin(solve.Ask.NumPos, solve.Ask.Blocks, 0, 0, 0);
    const Figures plain = Ask(twin, solve.Ask);
    Require(search == plain, "not what the twin counts", search.Text() + "\ntwin " + plain.Text());
    const std::string difference = StoreDifference(solver, twin);
    Require(difference.empty(), "not what the twin stores", difference);
    ++tally.TwinAgreed;
    ++tally.Results[search.Result];
    const int result = search.Result;
    std::string text = search.Text();
    if (result == 0) text.append("\n").append(Finish(solver, solve, search, tally));
    if (solve.Ask.HashCase == kMixed) {
        FuzzSolve byDefault = solve;
        byDefault.Ask.HashCase = 0;
        Solver fresh;
        const std::string other = SolveText(fresh, byDefault);
        Require(WithoutTable(text) == WithoutTable(other), "Mixed gives what Default does not",
                text + "\nDefault " + other);
    }
    CheckEarlyEnd(solve, search);
    if (result == 0 || result == 3 || result == 14) {
        const OracleAnswer truth = AskOracle(solve.Ask.Level, kOracleStates);
        ++CountOf(truth.Verdict, tally);
        CompareWithOracle(solver, search, truth);
        if (solver.Counters().MovesLowerBound > 0) CompareMoves(solver, solve.Ask.Level);
    }
    return text;
}

}  // namespace

std::string SolveText(Solver& solver, const FuzzSolve& solve) {
    const Figures search = AskWithSizes(solver, solve.Ask);
    FuzzTally ignored;
    std::string text = search.Text();
    if (search.Result == 0) text.append("\n").append(Finish(solver, solve, search, ignored));
    return text;
}

std::string WithoutTable(const std::string& text) {
    return std::regex_replace(text, std::regex(", (RHashCnt|HashSize) [0-9]+"), "");
}

std::string FuzzTally::Text() const {
    std::ostringstream text;
    text << Cases << " cases; solves by result:";
    for (const auto& [result, count] : Results) text << " " << result << ": " << count;
    text << "; by the whole game: " << Solvable << " solvable, " << Unsolvable << " not, " << TooBig
         << " too big; " << TwinAgreed << " counted by the twin; " << Proved
         << " proofs of the fewest moves; passes stopped: " << PassesStopped
         << ", out of memory: " << PassesFull << "; the fewest moves of all proved " << FewestProved
         << " times, " << FewestBetter << " better; stopped: " << FewestStopped
         << ", out of memory: " << FewestFull;
    return text.str();
}

FuzzFailure CheckCase(const FuzzCase& fuzzCase, FuzzTally& tally) {
    ++tally.Cases;
    try {
        Solver solver;
        SetWorthThreads(solver, 1);
        std::string first;
        for (const FuzzSolve& solve : fuzzCase.Solves) {
            const std::string text = SolveAndCheck(solver, solve, tally);
            if (first.empty()) first = text;
        }
        const std::string again = SolveText(solver, fuzzCase.Solves.front());
        Require(again == first, "the same question, another answer", first + "\nagain " + again);
    } catch (const Wrong& wrong) {
        return wrong.Failure;
    } catch (const std::exception& fault) {
        return {"an exception", fault.what()};
    }
    return {};
}

}  // namespace kavit::test
