#include "support/figures.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "support/levels.h"

namespace kavit::test {

namespace {

class ProgressHooks : public StopAt {
  public:
    using StopAt::StopAt;
    void ShowProgress(std::int64_t bucketCnt) override { Progress.push_back(bucketCnt); }
    std::vector<std::int64_t> Progress;
};

// What both count and keep, by the same names. A level that was refused has no numbers of its own.
template <typename Counters>
Figures FiguresOf(int result, const Counters& c) {
    const bool refused = result == 1 || result == 2 || result == 9 || result == 14;
    return {result,
            {{"nSol", c.nSol},
             {"BucketCnt", c.BucketCnt},
             {"PosChanged", c.PosChanged},
             {"PosDiscarded", c.PosDiscarded},
             {"HashCnt", c.HashCnt},
             {"RHashCnt", c.RHashCnt},
             {"SeaSteps", c.SeaSteps},
             {"ForwDepth", c.ForwDepth},
             {"BackDepth", c.BackDepth},
             {"ForwLevelCnt", c.ForwLevelCnt},
             {"BackLevelCnt", c.BackLevelCnt},
             {"LastSide", c.LastSide},
             {"HashSize", c.HashSize},
             {"SqCompact", !refused && c.SqCompact},
             {"NumBoxes", refused ? 0 : c.NumBoxes}}};
}

template <typename Kept>
void AddKept(Figures& f, int k, const Kept& kept) {
    f.Counts["SolMoves" + std::to_string(k)] = kept.SolMoves;
    f.Counts["SolPushes" + std::to_string(k)] = kept.SolPushes;
    f.Counts["SolFoundAt" + std::to_string(k)] = kept.SolFoundAt;
}

// What belongs to a table and not to the search: the twin has no Mixed one.
void ForgetTable(Figures& f, const Question& question) {
    if (question.HashCase == kMixed) f.Counts["RHashCnt"] = f.Counts["HashSize"] = 0;
}

}  // namespace

std::string Question::Text() const {
    std::ostringstream text;
    text << "NumPos " << NumPos << ", Blocks " << Blocks << ", OptLevel " << OptLevel
         << ", SeaType " << SeaType << ", HashCase " << HashCase << ", StopAfter " << StopAfter
         << "\n"
         << BoardText(Level, "\n");
    return text.str();
}

std::string Figures::Text() const {
    std::string text = "result " + std::to_string(Result);
    for (const auto& [name, count] : Counts) text += ", " + name + " " + std::to_string(count);
    text += ", progress";
    for (const std::int64_t value : Progress) text += " " + std::to_string(value);
    return text;
}

Figures Ask(Solver& solver, const Question& question) {
    ProgressHooks hooks(question.StopAfter);
    // One to three threads, whatever the machine has: no answer depends on their number.
    const SolverOptions options{static_cast<OptLevel>(question.OptLevel),
                                static_cast<SeaType>(question.SeaType),
                                static_cast<HashCase>(question.HashCase), question.OptSpecial != 0,
                                1 + question.NumPos % 3};
    Result result = solver.AnalyseBoard(question.Level, options);
    if (result == Result::Ok) result = solver.Search(hooks);
    Figures f = FiguresOf(static_cast<int>(result), solver.Counters());
    ForgetTable(f, question);
    // The twin says 32767 where nothing is kept.
    const KeptSolution none{.SolMoves = 32767, .SolPushes = 32767};
    for (const int k : {0, 1}) AddKept(f, k, solver.Kept(k).value_or(none));
    f.Progress = hooks.Progress;
    f.Counts["Yields"] = hooks.Yields;
    return f;
}

Figures Ask(PlainTwin& twin, const Question& question) {
    int left = question.StopAfter;
    twin.StopSea = left < 0;
    std::vector<std::int64_t> progress;
    int yields = 0;
    twin.OnProgress = [&](std::int32_t bucketCnt) { progress.push_back(bucketCnt); };
    twin.OnYield = [&] {
        ++yields;
        if (--left == 0) twin.StopSea = true;
    };
    twin.OptLevel = std::min(question.OptLevel, 3);  // the levels above it search like it
    twin.SeaType = question.SeaType;
    twin.HashCase = question.HashCase == kMixed ? 0 : question.HashCase;
    Figures f = FiguresOf(twin.Solve(question.Level), twin);
    ForgetTable(f, question);
    twin.OnYield = nullptr;
    twin.OnProgress = nullptr;
    for (const int k : {0, 1}) AddKept(f, k, twin.Kept.at(static_cast<std::size_t>(k)));
    f.Progress = progress;
    f.Counts["Yields"] = yields;
    return f;
}

Figures AskWithSizes(Solver& solver, const Question& question) {
    const ApplyReply reply = solver.ApplySizes({question.NumPos, question.Blocks, 300});
    if (!reply.Ok) throw std::runtime_error(std::string(reply.Message));
    return Ask(solver, question);
}

std::string KeptText(const Solver& solver) {
    const SearchCounters& c = solver.Counters();
    std::ostringstream text;
    text << FiguresOf(0, c).Text() << ", nSolSearch " << c.nSolSearch << ", levels " << c.ForwLevel
         << "/" << c.BackLevel << ", OptimumPushes " << c.OptimumPushes << ", at least "
         << c.PushesLowerBound << ", MovesProved " << c.MovesProved
         << ", fewest of all: " << c.FewestMovesProved << ", at least " << c.MovesLowerBound << ", "
         << c.FewestPositions << "/" << c.FewestOffers;
    for (const int k : {0, 1}) {
        const KeptSolution kept = solver.Kept(k).value_or(KeptSolution{});
        text << ", kept " << kept.SolMoves << "/" << kept.SolPushes << " phase " << kept.SolPhase
             << " at " << kept.SolFoundAt << "/" << kept.SolFoundAtSearch << " " << kept.SolString;
    }
    return text.str();
}

std::string StoreText(const Solver& solver) {
    std::ostringstream text;
    for (std::int64_t pos = 1; pos <= solver.Counters().BucketCnt; ++pos) {
        const StoredPosition p = solver.Position(pos);
        text << p.Tag << " " << p.Parent << " " << p.Moves << " " << p.Man << " "
             << p.NormalisedMan;
        for (const int box : p.Boxes) text << " " << box;
        text << "\n";
    }
    return text.str();
}

std::string WholeText(Solver& solver, const Board& level, const SolverOptions& options,
                      SolverHooks& hooks) {
    std::string text;
    try {
        Result result = solver.AnalyseBoard(level, options);
        if (result == Result::Ok) result = solver.Search(hooks);
        text = std::to_string(static_cast<int>(result)) + " ";
        if (result == Result::Ok)
            text += std::to_string(static_cast<int>(solver.OptimizeMoves(hooks))) + " ";
        if (solver.Kept(0)) solver.BuildSolutions();
    } catch (const std::exception& fault) {
        text = fault.what();
    }
    return text + KeptText(solver) + StoreText(solver);
}

std::string StoreDifference(const Solver& solver, const PlainTwin& twin) {
    std::ostringstream text;
    const auto cell = [&twin](std::uint8_t byte) -> int {
        return twin.SqCompact ? twin.IdxToCell[byte] : byte;
    };
    for (std::int32_t p = 1; p <= twin.BucketCnt; ++p) {
        const StoredPosition ours = solver.Position(p);
        const PlainRecord& plain = twin.PosRec[static_cast<std::size_t>(p)];
        if (ours.Tag != plain.Tag || ours.Parent != plain.Parent || ours.Man != cell(plain.Man) ||
            ours.Moves != plain.Moves) {
            text << "record " << p << ": " << ours.Tag << " " << ours.Parent << " " << ours.Man
                 << " " << ours.Moves << ", twin " << +plain.Tag << " " << plain.Parent << " "
                 << cell(plain.Man) << " " << plain.Moves;
            return text.str();
        }
        const auto same = [&](int square, std::uint8_t byte) { return square == cell(byte); };
        const std::uint8_t* key = twin.Key(p);
        if (!std::equal(ours.Boxes.begin(), ours.Boxes.end(), key, key + twin.NumBoxes, same) ||
            ours.NormalisedMan != cell(key[twin.NumBoxes])) {
            text << "key of position " << p;
            return text.str();
        }
    }
    const auto compareRuns = [&text](const char* side, const auto& plain, const auto& ours) {
        for (std::size_t level = 1; level < plain.size(); ++level) {
            const LayerRun run = LayerTables::Get(ours, static_cast<int>(level), 1);
            if (run.Top == plain[level][0].Top && run.End == plain[level][0].End) continue;
            text << side << " run of level " << level << ": " << run.Top << ".." << run.End
                 << ", twin " << plain[level][0].Top << ".." << plain[level][0].End << "; ";
        }
    };
    compareRuns("forward", twin.ForwTopEnd, solver.Layers().ForwTopEnd);
    compareRuns("backward", twin.BackTopEnd, solver.Layers().BackTopEnd);
    return text.str();
}

}  // namespace kavit::test
