#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "cli/level_list.h"
#include "cli/level_report.h"

namespace kavit {

// Where the solution files of one command go: to the file named, or into the folder under the names
// of the levels, where there are several files or a collection. Nothing that this command read or
// wrote before is ever replaced.
class SolTarget {
  public:
    // "" for the target: nothing is written.
    SolTarget(std::string target, const std::vector<LevelFile>& files);

    [[nodiscard]] bool Wanted() const { return !target_.empty(); }
    // What is wrong with the target as such, "" when nothing is.
    [[nodiscard]] std::string Wrong() const;
    // Writes the solution file of a solved level, and notes in the report where or why not.
    void Write(LevelReport& report);

  private:
    [[nodiscard]] bool IsLevel(const std::filesystem::path& path) const;
    [[nodiscard]] std::string WriteTo(const std::filesystem::path& path, const LevelReport& report);

    std::string target_;
    bool folder_ = false;
    const std::vector<LevelFile>& files_;
    std::map<std::filesystem::path, std::string> written_;  // and for which level
};

}  // namespace kavit
