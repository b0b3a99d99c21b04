#include "support/levels.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "level/level_reader.h"
#include "level/replay.h"

namespace kavit::test {

Board BoardOf(std::string_view text) {
    Board board;
    if (!ImportLevelText(text, board, {}).Loaded()) throw std::runtime_error("no level");
    return board;
}

Board BoardOfFile(const std::string& path) {
    Board board;
    if (!ReadLevelFile(path, board, {}).Loaded()) throw std::runtime_error("no level: " + path);
    return board;
}

Collection CollectionOf(std::string_view text) {
    std::istringstream stream{std::string(text)};
    return ReadCollection(stream);
}

void SetExtent(Board& board) {
    const Board empty;
    board.MinRow = empty.MinRow;
    board.MinCol = empty.MinCol;
    board.MaxRow = empty.MaxRow;
    board.MaxCol = empty.MaxCol;
    for (std::size_t c = 0; c < kCells; ++c) {
        const auto row = static_cast<std::int16_t>(c / Maxcol + 1);
        const auto col = static_cast<std::int16_t>(c % Maxcol + 1);
        if (board.Cell[c] == kMan || board.Cell[c] == kManOnGoal) {
            board.ManPos = static_cast<std::int16_t>(c);
        }
        if (board.Cell[c] != kWall) continue;
        board.MinRow = std::min(board.MinRow, row);
        board.MinCol = std::min(board.MinCol, col);
        board.MaxRow = std::max(board.MaxRow, row);
        board.MaxCol = std::max(board.MaxCol, col);
    }
}

void SearchLevel(Solver& solver, const Board& level, const SolverOptions& options) {
    SolverHooks hooks;
    Result result = solver.AnalyseBoard(level, options);
    if (result == Result::Ok) result = solver.Search(hooks);
    if (result != Result::Ok)
        throw std::runtime_error("not solved: " + std::to_string(static_cast<int>(result)));
}

std::string KeptFault(const Solver& solver, const Board& level) {
    for (const int k : {0, 1}) {
        const KeptSolution& kept = solver.Kept(k).value();
        const ReplayOutcome replay = Replay(level, kept.SolString);
        if (!replay.Solved) return "a string that does not replay: " + kept.SolString;
        if (replay.Moves != kept.SolMoves || replay.Pushes != kept.SolPushes)
            return "a string that is not as long as it says: " + kept.SolString;
    }
    if (solver.Kept(0)->SolMoves > solver.Kept(1)->SolMoves)
        return "solution 0 has more moves than 1";
    const bool fewest = solver.Kept(1)->SolPushes <= solver.Kept(0)->SolPushes;
    return fewest ? "" : "solution 1 has more pushes than 0";
}

std::string ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace kavit::test
