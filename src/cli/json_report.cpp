#include "cli/json_report.h"

#include <nlohmann/json.hpp>

#include "cli/exit_status.h"

namespace kavit {

namespace {

using Json = nlohmann::ordered_json;

// A value of each kept solution; null where nothing is kept.
template <typename Field>
Json OfBoth(const SolveReport& solve, Field KeptSolution::*field) {
    Json values = Json::array();
    for (const auto& kept : solve.Kept) values.push_back(kept ? Json(*kept.*field) : Json());
    return values;
}

void AddSolutions(Json& object, const SolveReport& solve) {
    object["SolMoves"] = OfBoth(solve, &KeptSolution::SolMoves);
    object["SolPushes"] = OfBoth(solve, &KeptSolution::SolPushes);
    object["SolFoundAt"] = OfBoth(solve, &KeptSolution::SolFoundAt);
    object["SolPhase"] = OfBoth(solve, &KeptSolution::SolPhase);
    object["SolString"] = OfBoth(solve, &KeptSolution::SolString);
}

void AddCounters(Json& object, const SearchCounters& counters) {
    object["nSol"] = counters.nSol;
    object["nSolSearch"] = counters.nSolSearch;
    object["BucketCnt"] = counters.BucketCnt;
    object["PosChanged"] = counters.PosChanged;
    object["PosDiscarded"] = counters.PosDiscarded;
    object["HashCnt"] = counters.HashCnt;
    object["RHashCnt"] = counters.RHashCnt;
    object["SeaSteps"] = counters.SeaSteps;
    object["ForwDepth"] = counters.ForwDepth;
    object["BackDepth"] = counters.BackDepth;
    object["LastSide"] = counters.LastSide;
    object["HashSize"] = counters.HashSize;
    object["SqCompact"] = counters.SqCompact;
    object["seconds"] = counters.SearchSeconds;
    object["passSeconds"] = counters.PassSeconds;
    object["proofSeconds"] = counters.ProofSeconds;
    object["fewestSeconds"] = counters.FewestSeconds;
    object["fewestPositions"] = counters.FewestPositions;
    object["fewestOffers"] = counters.FewestOffers;
    object["bytesPerPosition"] = counters.BytesPerPosition;
    object["hash"] = HashName(counters.HashCase);
    object["threads"] = counters.Threads;
}

}  // namespace

// The solution with the fewest pushes, in plain names.
void AddBest(Json& object, const SolveReport& solve) {
    const auto& best = solve.Kept[1];
    object["pushes"] = best ? Json(best->SolPushes) : Json();
    object["moves"] = best ? Json(best->SolMoves) : Json();
    object["solution"] = best ? Json(best->SolString) : Json();
    object["pushesProved"] = solve.PushesProved;
    object["movesProved"] = solve.MovesProved;
    object["fewestMovesProved"] = solve.FewestMovesProved;
    if (solve.Code != Result::Ok && solve.PushesLowerBound)
        object["lowerBound"] = *solve.PushesLowerBound;
    if (solve.MovesLowerBound) object["movesLowerBound"] = *solve.MovesLowerBound;
}

void AddRecorded(Json& object, const RecordedSolution& recorded, const SolveReport& solve) {
    Json& part = object["recorded"];
    part["solves"] = recorded.Solves;
    part["pushes"] = recorded.Pushes;
    part["moves"] = recorded.Moves;
    if (!recorded.Solves) part["wrong"] = recorded.Wrong;
    if (recorded.Solves && solve.PushesProved)
        part["morePushes"] = recorded.Pushes - solve.Kept[1]->SolPushes;
}

// The words for the result: of a solved level those of message 30, whatever the optimizer said.
std::string Message(const SolveReport& solve) {
    if (!solve.Fault.empty()) return solve.Fault;
    if (solve.Code != Result::Ok) return solve.Lines.Left.value_or("");
    return MessageCatalogue().ShowMsg(Result::Solution, ReadValues(solve)).Left.value_or("");
}

std::string JsonLine(const LevelReport& report) {
    const SolveReport& solve = report.Solve;
    const bool fault = !solve.Fault.empty();
    Json object;
    object["level"] = report.Name;
    object["file"] = report.File;
    object["index"] = report.Index;
    object["title"] = report.Title;
    object["status"] = StatusWord(report.Solve);
    object["result"] = fault ? Json() : Json(static_cast<int>(solve.Code));
    object["message"] = Message(solve);
    object["LastMsg"] = fault ? Json() : Json(static_cast<int>(solve.LastMsg));
    AddSolutions(object, solve);
    AddCounters(object, solve.Counters);
    object["maxPositions"] = solve.Sizes.NumPos;
    object["blocks"] = solve.Sizes.Blocks;
    AddBest(object, solve);
    if (report.Recorded) AddRecorded(object, *report.Recorded, solve);
    if (fault) object["fault"] = solve.Fault;
    if (!report.Reason.empty()) object["reason"] = report.Reason;
    if (!report.SolFile.empty()) object["solFile"] = report.SolFile;
    if (!report.SolError.empty()) object["solError"] = report.SolError;
    if (!report.DumpError.empty()) object["dumpError"] = report.DumpError;
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace kavit
