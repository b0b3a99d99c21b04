#include "app/model/album.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "level/level_files.h"

namespace kavit {
namespace fs = std::filesystem;
namespace {

constexpr const char* kExtensions[] = {"xsb", "sok", "txt"};

// A pipe that nobody writes to would stop the window for ever.
bool IsPlainFile(const fs::path& file) {
    std::error_code error;
    return fs::is_regular_file(file, error);
}

void Add(Album& album, std::istream& stream, const fs::path& file) {
    Collection read = ReadCollection(stream);
    const std::string where = file == album.Path ? "" : " of " + file.filename().string();
    for (const SkippedLines& lines : std::exchange(read.Skipped, {})) {
        album.LeftOut.push_back("Lines " + std::to_string(lines.First) + " to " +
                                std::to_string(lines.Last) + where + " are left out: " + lines.Why);
    }
    for (CollectionLevel& level : std::exchange(read.Levels, {})) {
        AlbumEntry& entry = album.Entries.emplace_back();
        entry.Level = std::move(level);
        entry.File = file;
    }
    album.Head = std::move(read);
}

std::optional<Album> Read(std::istream& stream, const fs::path& file) {
    if (!IsCollection(stream)) return std::nullopt;
    stream.clear();
    stream.seekg(0);
    Album album;
    album.Path = file;
    Add(album, stream, file);
    if (album.Entries.empty()) return std::nullopt;
    return album;
}

}  // namespace

bool Album::Folder() const {
    return !Entries.empty() && Entries.front().File != Path;
}

std::string Album::NameOf(int row) const {
    const AlbumEntry& entry = Entries[static_cast<std::size_t>(row)];
    const std::string name =
        entry.File.empty() ? "pasted" : LevelNameOf(entry.File.filename().string());
    const auto same = std::count_if(Entries.begin(), Entries.end(), [&](const AlbumEntry& other) {
        return other.File == entry.File;
    });
    return same == 1 ? name : name + "-" + std::to_string(entry.Level.Index);
}

std::optional<int> Album::NextUnsolved(int from) const {
    for (std::size_t row = static_cast<std::size_t>(std::max(from, 0)); row < Entries.size();
         ++row) {
        if (Entries[row].Mark.empty()) return static_cast<int>(row);
    }
    return std::nullopt;
}

Collection Album::ToCollection() const {
    Collection collection = Head;
    for (const AlbumEntry& entry : Entries) collection.Levels.push_back(entry.Level);
    return collection;
}

std::optional<Album> ReadAlbum(const fs::path& file) {
    if (!IsPlainFile(file)) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    return Read(stream, file);
}

std::optional<Album> AlbumOfText(const std::string& text) {
    std::istringstream stream(text);
    return Read(stream, {});
}

Album ReadFolder(const fs::path& folder) {
    Album album;
    album.Path = folder;
    std::vector<std::string> names;
    for (const char* extension : kExtensions) {
        for (std::string& name : ListLevelFiles(folder, extension))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end(), NaturalLess);
    for (const std::string& name : names) {
        std::ifstream stream(folder / name, std::ios::binary);
        Add(album, stream, folder / name);
    }
    album.Head = {};
    return album;
}

}  // namespace kavit
