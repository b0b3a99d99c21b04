#include "output/atomic_file.h"
#include "output/dumps.h"
#include "output/number_text.h"
#include "solver/board_arrays.h"
#include "solver/position_store.h"

namespace kavit {

namespace {

PositionView ReadPosition(const Solver& solver, const BoardArrays& arrays, std::int32_t pos) {
    const PosRecord record = solver.Store().Record(pos);
    const auto square = [&](std::uint8_t byte) -> std::int64_t {
        return arrays.SqCompact ? arrays.IdxToCell[byte] : byte;
    };
    PositionView view{record.Tag, record.Parent, square(record.Man), record.Moves, {}};
    for (const std::uint8_t byte : solver.Store().Key(pos)) view.Key.push_back(square(byte));
    return view;
}

}  // namespace

std::string DumpLevels(std::string_view prefix, std::string_view baseName, const Solver& solver) {
    return WriteWholeFile(LevelsFileName(prefix, baseName),
                          LevelsText(baseName, solver.Levels(), solver.Counters()));
}

std::string DumpPosition(std::int64_t posIdx, int fileNo, std::string_view baseName,
                         const Solver& solver, const Board& board) {
    const std::int32_t stored = solver.Counters().BucketCnt;
    if (posIdx < 1 || posIdx > stored) {
        return "There is no position" + S(posIdx) +
               (stored == 0 ? "; none is stored" : "; 1 to " + B(stored) + " are stored");
    }
    BoardArrays arrays;
    const auto blocks = static_cast<int>(solver.AppliedSizes().Blocks);
    const Result result = AnalyseBoard(board, blocks, arrays);
    if (result != Result::Ok || arrays.NumBoxes + 1 != solver.Store().KeyLength()) {
        return "The positions stored are not those of this board";
    }
    return AppendToFile(
        PositionFileName(baseName, fileNo),
        PositionText(posIdx, ReadPosition(solver, arrays, static_cast<std::int32_t>(posIdx))));
}

}  // namespace kavit
