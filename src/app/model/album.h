#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "level/collection.h"

namespace kavit {

// One level of the list, with what is known of it.
struct AlbumEntry {
    CollectionLevel Level;       // Solution: the recorded one, or the best found since
    std::filesystem::path File;  // of a folder: where it lies
    std::string Mark;            // "70/224", pushes and moves, or why it can't be solved
    bool Found = false;          // the solution was found since, and not recorded

    // What the solution is called.
    [[nodiscard]] const char* SolutionName() const {
        return Found ? "Solution found before" : "Recorded solution";
    }
};

// The levels of a collection's file, or of a folder, that are listed beside the board. A folder
// lists its level files; those that hold collections give all of their levels.
struct Album {
    std::filesystem::path Path;        // the file or the folder
    Collection Head;                   // title, author and comment
    std::vector<std::string> LeftOut;  // a sentence for each piece that could not be read
    std::vector<AlbumEntry> Entries;
    int Chosen = -1;

    [[nodiscard]] bool Folder() const;
    // "album-12" for the twelfth level of album.sok; a level file of a folder has its own name.
    [[nodiscard]] std::string NameOf(int row) const;
    [[nodiscard]] std::optional<int> NextUnsolved(int from) const;
    // What Save Collection writes.
    [[nodiscard]] Collection ToCollection() const;
};

// Nothing where the file holds one level at most, which the single-level reader takes.
[[nodiscard]] std::optional<Album> ReadAlbum(const std::filesystem::path& file);
[[nodiscard]] std::optional<Album> AlbumOfText(const std::string& text);
[[nodiscard]] Album ReadFolder(const std::filesystem::path& folder);

}  // namespace kavit
