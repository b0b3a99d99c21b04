#include "cli/level_feed.h"

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "cli/complain.h"
#include "cli/standard_streams.h"
#include "level/shown_text.h"

namespace kavit {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostInput = std::size_t{256} << 20;

// A pattern without a wildcard may stand anywhere in the title.
bool TitleMatches(const std::string& title, const std::string& pattern) {
    const bool plain = pattern.find_first_of("*?[") == std::string::npos;
    const std::string whole = plain ? "*" + pattern + "*" : pattern;
    return fnmatch(whole.c_str(), title.c_str(), FNM_CASEFOLD) == 0;
}

bool EndsWithTxt(const std::string& name) {
    const std::string extension = fs::path(name).extension().string();
    return extension == ".txt" || extension == ".TXT";
}

void TellOfSkipped(const std::string& file, const std::vector<SkippedLines>& skipped) {
    for (const SkippedLines& lines : skipped) {
        std::string place = "line " + std::to_string(lines.First);
        if (lines.Last != lines.First) {
            place = "lines " + std::to_string(lines.First) + " to " + std::to_string(lines.Last);
        }
        Complain(ShownText(file), place + " left out: " + lines.Why);
    }
}

}  // namespace

LevelFeed::LevelFeed(const std::vector<LevelFile>& files, const LevelChoice& chosen,
                     const SolveSession& session)
    : files_(files), chosen_(chosen), session_(session) {}

LevelFeed::~LevelFeed() = default;

std::optional<LevelEntry> LevelFeed::Next() {
    for (;;) {
        if (reader_) {
            if (auto entry = NextOfCollection()) return entry;
            reader_.reset();
        }
        if (next_ == files_.size()) return std::nullopt;
        if (auto entry = Open(files_[next_++])) return entry;
    }
}

// Whether the level was asked for, by its number and by its title.
bool LevelFeed::Wanted(const CollectionLevel& level, std::int64_t only) const {
    if (only != 0 && level.Index != only) return false;
    const NumberRanges& numbers = chosen_.Numbers;
    const bool listed =
        numbers.empty() || std::any_of(numbers.begin(), numbers.end(), [&](const auto& range) {
            return level.Index >= range.first && level.Index <= range.second;
        });
    return listed && (chosen_.Title.empty() || TitleMatches(level.Title, chosen_.Title));
}

// The level of a file that holds one, or what is wrong with it; none when it is a collection, whose
// levels come by the reader, or when there is nothing in it that is wanted.
std::optional<LevelEntry> LevelFeed::Open(const LevelFile& file) {
    LevelEntry entry{.Name = file.Name, .File = file.Name, .LevelName = LevelNameOf(file)};
    entry.FromStandardInput = file.Origin == LevelFile::Kind::StandardInput;
    if (file.Origin == LevelFile::Kind::NoLevel) {
        entry.Code = file.EmptyFolder ? Result::NothingToOpen : Result::CantOpen;
        entry.Reason = file.Reason;
        return entry;
    }
    if (entry.FromStandardInput) {
        if (!ReadInput(entry.Text, entry.Reason)) {
            entry.Code = session_.StopRequested() ? Result::Stopped : Result::CantOpen;
            return entry;
        }
        stream_ = std::make_unique<std::istringstream>(entry.Text);
    } else {
        std::error_code unknown;
        if (!fs::is_regular_file(file.Name, unknown)) return entry;  // its reader says what it is
        stream_ = std::make_unique<std::ifstream>(file.Name, std::ios::binary);
        if (!*stream_) return entry;
    }
    const bool collection = IsCollection(*stream_);
    stream_->clear();
    stream_->seekg(0);
    reader_ = std::make_unique<CollectionReader>(*stream_);
    file_ = &file;
    found_ = false;
    if (collection) return std::nullopt;

    // What it has beside the board. Its rows are read again by the reader for one level, which says
    // itself what it leaves out.
    auto level = reader_->Next();
    reader_.reset();
    if (!level && file.FromFolder && EndsWithTxt(file.Name)) return std::nullopt;
    entry.Level = level.value_or(CollectionLevel{});
    entry.Level.Index = 1;
    if (Wanted(entry.Level, file.Only)) return entry;
    if (file.Only > 1) return NoSuchLevel(file);
    return std::nullopt;
}

LevelEntry LevelFeed::NoSuchLevel(const LevelFile& file) {
    return {.Name = file.Name + "#" + std::to_string(file.Only),
            .File = file.Name,
            .LevelName = LevelNameOf(file),
            .Code = Result::CantOpen,
            .Reason = "the file has no level of this number"};
}

std::optional<LevelEntry> LevelFeed::NextOfCollection() {
    for (;;) {
        auto level = reader_->Next();
        TellOfSkipped(file_->Name, reader_->TakeSkipped());
        if (!level) break;
        header_ = reader_->Header();
        if (found_ && file_->Only != 0) return std::nullopt;  // no need to read on
        if (!Wanted(*level, file_->Only)) continue;
        found_ = true;
        const std::string number = std::to_string(level->Index);
        LevelEntry entry{.Name = file_->Name + "#" + number,
                         .File = file_->Name,
                         .LevelName = LevelNameOf(*file_) + "-" + number,
                         .FromCollection = true,
                         .OnlyOne = file_->Only != 0};
        if (!level->Title.empty()) entry.Name += " \"" + level->Title + "\"";
        entry.FromStandardInput = file_->Origin == LevelFile::Kind::StandardInput;
        entry.Level = std::move(*level);
        return entry;
    }
    if (file_->Only == 0 || std::exchange(found_, true)) return std::nullopt;
    return NoSuchLevel(*file_);
}

// All of standard input: a pipe cannot be read twice.
bool LevelFeed::ReadInput(std::string& text, std::string& reason) const {
    InputBuffer buffer(session_);
    std::istream input(&buffer);
    char part[4096];
    while (input.read(part, sizeof part), input.gcount() > 0) {
        text.append(part, static_cast<std::size_t>(input.gcount()));
        if (text.size() > kMostInput) {
            reason = "more than " + std::to_string(kMostInput >> 20) + " MB";
            return false;
        }
    }
    if (input.bad()) reason = "reading failed";
    return !input.bad() && !session_.StopRequested();
}

}  // namespace kavit
