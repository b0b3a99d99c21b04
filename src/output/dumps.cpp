#include "output/dumps.h"

#include <cstddef>

#include "output/number_text.h"

namespace kavit {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int kDistFile = 12;

void AddRun(std::string& text, std::string_view slot, const LayerRun& run) {
    text += "  Top";
    text += slot;
    text += " = " + Padded(run.Top, 7) + "  End";
    text += slot;
    text += " = " + Padded(run.End, 7);
}

// One line per level, up to the first level that neither the search nor the optimizer filled.
std::string RunsText(const LayerTables::Table& table) {
    std::string text;
    for (int level = 1;; ++level) {
        const LayerRun search = LayerTables::Get(table, level, 1);
        const LayerRun optimizer = LayerTables::Get(table, level, 2);
        if (search.Top == 0 && optimizer.Top == 0) return text;
        text += "SeaCnt = " + Padded(level, 3);
        AddRun(text, "1", search);
        if (optimizer.Top > 0) AddRun(text, "2", optimizer);
        text += kLineEnd;
    }
}

}  // namespace

std::string LevelsText(std::string_view baseName, const LayerTables& levels,
                       const SearchCounters& c) {
    const std::string base(baseName);
    const std::string end(kLineEnd);
    return base + ":  ForwTopEnd  LastSea:" + S(c.LastSide) +
           "  OptimumPushes:" + S(c.OptimumPushes) + "  Sea1:" + S(c.ForwDepth) +
           "  Sea2:" + S(c.BackDepth) + end + end + RunsText(levels.ForwTopEnd) + end + end + base +
           ":  BackTopEnd" + end + end + RunsText(levels.BackTopEnd) + end +
           "Last BucketCnt:" + S(c.BucketCnt) + end;
}

std::string PositionText(std::int64_t posIdx, const StoredPosition& position) {
    std::string text = " Bucket: (";
    const auto add = [&](std::int64_t number, std::size_t digits) {
        text += ' ';
        text += Padded(number, digits);
    };
    add(posIdx, 4);
    text += ")  [";
    add(position.Tag, 3);
    add(position.Parent, 4);
    add(position.Man, 3);
    add(position.Moves, 3);
    text += "] [";
    for (const int square : position.Boxes) add(square, 2);
    add(position.NormalisedMan, 2);
    text += "]";
    text += kLineEnd;
    return text;
}

std::string LevelsFileName(std::string_view prefix, std::string_view baseName) {
    return std::string(prefix) + "_" + std::string(baseName) + ".txt";
}

std::string PositionFileName(std::string_view baseName, int fileNo) {
    return std::string(baseName) + (fileNo == kDistFile ? "_Dist.txt" : ".txt");
}

}  // namespace kavit
