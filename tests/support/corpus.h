#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/figures.h"

// The two tables beside the levels of a folder: "expected.tsv" has what a search of each level must
// count under each setting, "moves.tsv" the fewest moves of each level that has a solution. The
// plain twin and an exhaustive search make them (kavit-corpus-tables), never the solver.

namespace kavit::test {

// The repository's own levels; and a folder with more of them, "" unless one was given.
std::string OwnLevels();
std::string MoreLevels();
// Both, as far as they are there.
std::vector<std::string> LevelFolders();

struct TableSetting {
    const char* Name;
    int OptLevel, SeaType, HashCase;
    std::int32_t NumPos;

    void ApplyTo(Question& question) const;
};
constexpr std::array<TableSetting, 7> kTableSettings = {{{"Default", 1, 0, 0, 4000000},
                                                         {"OptNone", 0, 0, 0, 4000000},
                                                         {"HashCase1", 1, 0, 1, 4000000},
                                                         {"HashCase2", 1, 0, 2, 4000000},
                                                         {"Forward", 1, 1, 0, 4000000},
                                                         {"Backward", 1, 2, 0, 4000000},
                                                         {"SmallStore", 1, 0, 0, 500}}};

constexpr const char* kCountTitles =
    "level\tOptLevel\tSeaType\tHashCase\tNumPos\tresult\tSolPushes\tSolMoves\tnSol\tBucketCnt\t"
    "PosChanged\tPosDiscarded\tHashCnt\tRHashCnt\tSeaSteps\tForwDepth\tBackDepth";

struct CountRow {
    std::string Folder;
    std::string Level;         // without ".xsb"
    TableSetting Setting;      // its name is ""
    std::string Columns;       // from "result" on
    std::int64_t HashCnt = 0;  // 0 where there was no search
};
std::vector<CountRow> ReadCounts(const std::string& folder);

// What a search counted, as in the table.
std::string CountColumns(const Figures& figures);

constexpr const char* kMovesTitles = "level\tpushes\tmoves_at_fewest_pushes\tfewest_moves";

struct MovesRow {
    std::string Folder;
    std::string Level;
    // Of the exhaustive search; none where it grew too large.
    std::optional<int> Pushes;
    std::optional<int> Moves;        // the fewest at so few pushes
    std::optional<int> FewestMoves;  // of all
};
// A folder may have the first three columns for more levels in "best_moves.tsv", and all four for
// some of them in "fewest_moves.tsv".
std::vector<MovesRow> ReadMoves(const std::string& folder);

}  // namespace kavit::test
