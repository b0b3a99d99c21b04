#include "cli/level_book.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "cli/signals.h"
#include "level/board.h"
#include "level/shown_text.h"
#include "output/atomic_file.h"

namespace kavit {

namespace fs = std::filesystem;

std::string LevelBook::Wrong(const std::vector<LevelFile>& files) const {
    const bool isInput = std::any_of(files.begin(), files.end(), [&](const LevelFile& file) {
        std::error_code unknown;
        return file.Origin == LevelFile::Kind::File && fs::equivalent(file.Name, path_, unknown) &&
               !unknown;
    });
    return isInput ? ShownText(path_) + " is one of the files to read" : "";
}

void LevelBook::Add(const LevelEntry& entry, const LevelReport& report) {
    if (entry.Code != Result::Ok) return;
    CollectionLevel level = entry.Level;
    if (level.BoardText.empty()) {
        if (!report.Loaded) return;
        level.BoardText = BoardText(report.Solve.Request.Level, "\n");
    }
    if (const auto& found = report.Solve.Kept[1]) {
        const auto& recorded = report.Recorded;
        const auto effort =
            std::pair<std::int64_t, std::int64_t>(found->SolPushes, found->SolMoves);
        const bool better =
            recorded && recorded->Solves && std::pair(recorded->Pushes, recorded->Moves) < effort;
        if (!better) level.Solution = found->SolString;
    }
    levels_.push_back(std::move(level));
}

std::string LevelBook::Write(const CollectionHeader& header) const {
    Collection collection{header.Title, header.Author, header.Comment, levels_, {}};
    const SignalHold hold;
    return WriteWholeFile(path_, CollectionText(collection));
}

}  // namespace kavit
