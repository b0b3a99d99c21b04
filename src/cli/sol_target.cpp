#include "cli/sol_target.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "cli/signals.h"
#include "level/shown_text.h"
#include "output/atomic_file.h"
#include "output/solution_file.h"

namespace kavit {

namespace fs = std::filesystem;

SolTarget::SolTarget(std::string target, const std::vector<LevelFile>& files)
    : target_(std::move(target)), files_(files) {
    std::error_code unknown;
    folder_ = Wanted() &&
              (files.size() > 1 || target_.back() == '/' || fs::is_directory(target_, unknown));
}

std::string SolTarget::Wrong() const {
    std::error_code unknown;
    if (folder_ && fs::exists(target_, unknown) && !fs::is_directory(target_, unknown)) {
        return ShownText(target_) + " is no folder, which several levels need";
    }
    return "";
}

bool SolTarget::IsLevel(const fs::path& path) const {
    return std::any_of(files_.begin(), files_.end(), [&](const LevelFile& file) {
        std::error_code unknown;
        return file.Origin == LevelFile::Kind::File && fs::equivalent(file.Name, path, unknown) &&
               !unknown;
    });
}

std::string SolTarget::WriteTo(const fs::path& path, const LevelReport& report) {
    const std::string shown = ShownText(path.string());
    if (IsLevel(path)) return shown + ": this is a level file, it stays as it is";
    const auto [earlier, isNew] = written_.try_emplace(path, report.Name);
    if (!isNew) return shown + ": holds the solution of " + ShownText(earlier->second) + " already";
    if (path.has_parent_path() && path != target_) {
        std::error_code failed;
        fs::create_directories(path.parent_path(), failed);
        if (failed) return ShownText(path.parent_path().string()) + ": " + failed.message();
    }
    const SignalHold hold;  // an end in between would leave the temporary file behind
    return WriteWholeFile(path, SolutionFileText(report.Solve));
}

void SolTarget::Write(LevelReport& report) {
    fs::path path = target_;
    if (folder_ || report.OneOfMany) path /= SolutionBaseName(report.Solve.Request) + ".sol";
    report.SolError = WriteTo(path, report);
    if (report.SolError.empty()) report.SolFile = path.string();
}

}  // namespace kavit
