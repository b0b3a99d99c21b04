#include "cli/json_report.h"

#include <nlohmann/json.hpp>

namespace kavit {

namespace {

using Json = nlohmann::ordered_json;

// A value of each kept solution; null where nothing is kept.
template <typename Field>
Json OfBoth(const LevelReport& report, Field KeptSolution::*field) {
    Json values = Json::array();
    for (const KeptSolution& kept : report.Solve.Kept) {
        values.push_back(report.Solved() ? Json(kept.*field) : Json());
    }
    return values;
}

void AddSolutions(Json& object, const LevelReport& report) {
    object["SolMoves"] = OfBoth(report, &KeptSolution::SolMoves);
    object["SolPushes"] = OfBoth(report, &KeptSolution::SolPushes);
    object["SolFoundAt"] = OfBoth(report, &KeptSolution::SolFoundAt);
    object["SolPhase"] = OfBoth(report, &KeptSolution::SolPhase);
    object["SolString"] = OfBoth(report, &KeptSolution::SolString);
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
    object["bytesPerPosition"] = counters.BytesPerPosition;
    object["movesProved"] = counters.MovesProved;
}

}  // namespace

std::string JsonLine(const LevelReport& report) {
    Json object;
    object["level"] = report.Name;
    if (report.Fault.empty()) {
        object["result"] = static_cast<int>(report.Code);
        object["message"] = report.Solved() ? report.SolvedMessage : report.Lines.Left.value_or("");
        object["LastMsg"] = static_cast<int>(report.LastMsg);
    } else {
        object["result"] = nullptr;
        object["message"] = report.Fault;
        object["LastMsg"] = nullptr;
    }
    AddSolutions(object, report);
    AddCounters(object, report.Solve.Counters);
    if (!report.Fault.empty()) object["fault"] = report.Fault;
    if (!report.Reason.empty()) object["reason"] = report.Reason;
    if (!report.SolFile.empty()) object["solFile"] = report.SolFile;
    if (!report.SolError.empty()) object["solError"] = report.SolError;
    if (!report.DumpError.empty()) object["dumpError"] = report.DumpError;
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace kavit
