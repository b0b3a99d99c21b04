#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/level_list.h"
#include "cli/options.h"
#include "level/collection.h"
#include "level/result.h"
#include "output/solve_session.h"

namespace kavit {

// A level to solve, or what is there in its place.
struct LevelEntry {
    std::string Name;  // as given, and for a collection FILE#N "Title"
    std::string File;
    std::string LevelName;  // in file names
    bool FromCollection = false;
    bool OnlyOne = false;  // of its collection, by name
    bool FromStandardInput = false;
    Result Code = Result::Ok;  // not Ok: there is no level here, and Reason says why
    std::string Reason = {};
    CollectionLevel Level = {};  // of a single level: as far as it could be told apart
    std::string Text = {};       // of a single level on standard input
};

// The levels of all files, one after the other, read as they are asked for: a collection of any
// length takes no more memory than a level. A text with one level is left to the single-level
// readers, which take it as they always did.
class LevelFeed {
  public:
    LevelFeed(const std::vector<LevelFile>& files, const LevelChoice& chosen,
              const SolveSession& session);
    ~LevelFeed();

    // The next level that is wanted; none at the end. Tells on standard error of lines that were
    // left out.
    [[nodiscard]] std::optional<LevelEntry> Next();
    // Of the collection that was read last.
    [[nodiscard]] const CollectionHeader& Header() const { return header_; }

  private:
    [[nodiscard]] std::optional<LevelEntry> Open(const LevelFile& file);
    [[nodiscard]] std::optional<LevelEntry> NextOfCollection();
    [[nodiscard]] static LevelEntry NoSuchLevel(const LevelFile& file);
    [[nodiscard]] bool Wanted(const CollectionLevel& level, std::int64_t only) const;
    [[nodiscard]] bool ReadInput(std::string& text, std::string& reason) const;

    const std::vector<LevelFile>& files_;
    const LevelChoice& chosen_;
    const SolveSession& session_;
    std::size_t next_ = 0;
    const LevelFile* file_ = nullptr;  // of the reader
    bool found_ = false;               // a level in it
    CollectionHeader header_;
    std::unique_ptr<std::istream> stream_;
    std::unique_ptr<CollectionReader> reader_;
};

}  // namespace kavit
