#include "output/atomic_file.h"
#include "output/dumps.h"
#include "output/number_text.h"

namespace kavit {

std::string DumpLevels(std::string_view prefix, std::string_view baseName, const Solver& solver) {
    return WriteWholeFile(LevelsFileName(prefix, baseName),
                          LevelsText(baseName, solver.Layers(), solver.Counters()));
}

std::string DumpPosition(std::int64_t posIdx, int fileNo, std::string_view baseName,
                         const Solver& solver) {
    const std::int64_t stored = solver.Counters().BucketCnt;
    if (posIdx < 1 || posIdx > stored) {
        return "There is no position" + S(posIdx) +
               (stored == 0 ? "; none is stored" : "; 1 to " + B(stored) + " are stored");
    }
    return AppendToFile(PositionFileName(baseName, fileNo),
                        PositionText(posIdx, solver.Position(posIdx)));
}

}  // namespace kavit
