#include "output/recorded_solution.h"

#include "level/replay.h"
#include "output/number_text.h"

namespace kavit {

namespace {

std::string Count(std::int64_t count, const std::string& thing) {
    return B(count) + " " + thing + (count == 1 ? "" : thing == "push" ? "es" : "s");
}

}  // namespace

RecordedSolution PlayRecorded(const Board& board, std::string_view lurd) {
    const ReplayOutcome played = Replay(board, lurd);
    RecordedSolution recorded{played.Solved, played.Moves, played.Pushes, ""};
    if (!played.Played()) {
        recorded.Wrong =
            "letter " + B(static_cast<std::int64_t>(played.FailedAt) + 1) + ": " + played.What;
    } else if (!played.Solved) {
        recorded.Wrong = "a box is left beside the goals";
    }
    return recorded;
}

std::string RecordedText(const RecordedSolution& recorded, const SolveReport& found,
                         const std::string& name) {
    if (!recorded.Solves) return "The recorded solution does not solve it: " + recorded.Wrong;
    std::string text = name + ": " + B(recorded.Moves) + "/" + B(recorded.Pushes);
    if (!found.PushesProved) return text;
    const std::int64_t more = recorded.Pushes - found.Kept[1]->SolPushes;
    if (more > 0) return text + ", " + Count(more, "push") + " more than needed";
    if (!found.MovesProved) return text + ", with the fewest pushes";
    const std::int64_t moves = recorded.Moves - found.Kept[1]->SolMoves;
    if (moves <= 0) return text + ", with the fewest pushes, and the fewest moves for them";
    return text + ", with the fewest pushes and " + Count(moves, "move") + " more than needed";
}

}  // namespace kavit
