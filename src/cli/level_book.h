#pragma once

#include <string>
#include <vector>

#include "cli/level_feed.h"
#include "cli/level_list.h"
#include "cli/level_report.h"

namespace kavit {

// The levels of this command again, with the solutions found, for one new file that the collection
// reader takes. The better of the solution found and the one that came with the level is kept.
class LevelBook {
  public:
    explicit LevelBook(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] bool Wanted() const { return !path_.empty(); }
    // "", or why the file must not be written: it is one of those that are read.
    [[nodiscard]] std::string Wrong(const std::vector<LevelFile>& files) const;
    // A level, as it was read and with what came of it.
    void Add(const LevelEntry& entry, const LevelReport& report);
    // With the title of the collection when all levels came from one.
    [[nodiscard]] std::string Write(const CollectionHeader& header) const;

  private:
    std::string path_;
    std::vector<CollectionLevel> levels_;
};

}  // namespace kavit
