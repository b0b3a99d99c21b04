#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "app/model/album.h"
#include "app/model/desk.h"
#include "app/model/level_folder.h"
#include "app/model/settings_control.h"
#include "app/model/solution_control.h"
#include "level/board.h"
#include "level/level_reader.h"

namespace kavit {

// The board with what is known of where it came from.
struct OpenLevel {
    kavit::Board Board;
    std::optional<kavit::Board> AsRead;  // from a file; none for what was pasted or drawn
    std::string FileName;                // the level's name by its file, "" for none
    bool Bad = false;                    // the last file could not be read

    // No file holds this level: drawn, pasted, or changed since it was read. A level that was only
    // moved, mirrored or turned is still that of its file.
    [[nodiscard]] bool Built() const;
    [[nodiscard]] bool Moved() const { return !Built() && Board.Cell != AsRead->Cell; }
    [[nodiscard]] std::string Name() const { return Built() ? "" : FileName; }

    bool operator==(const OpenLevel&) const = default;
};

// The level on the board: files, the folder around them, the Examples menu, saving, and the
// question before a level is lost that no file holds.
class LevelControl {
  public:
    LevelControl(Desk& desk, SettingsControl& settings, SolutionControl& solution,
                 const std::filesystem::path& folder)
        : desk_(desk), settings_(settings), solution_(solution), files_(folder) {}

    [[nodiscard]] OpenLevel& Level() { return level_; }
    [[nodiscard]] const OpenLevel& Level() const { return level_; }
    [[nodiscard]] const std::filesystem::path& Folder() const { return files_.Folder(); }

    void Open();
    void OpenGiven(const std::string& fullName);  // dropped, or named on the command line
    void Restart();
    void Step(int step);  // 1 next level, -1 previous
    void Example(int index);
    // A level of the list; false when the one on the board stays, or this one can't be read.
    bool ChooseEntry(int row);
    void Save();
    void SaveAs();
    // Levels from a file, a folder or a text that holds several.
    void OpenAlbum(Album album);
    // Lists the current folder; the board stays.
    void ListFolder();
    [[nodiscard]] Album& List() { return album_; }
    void ShowList();
    void Copy();
    void Exit();

    // A pasted level takes the board. The window is made ready as for one from a file.
    void TakePasted(const Board& board);
    // CLEAR: an empty board.
    void Clear();
    // False when the user keeps the level that would be lost.
    [[nodiscard]] bool MayLeave();
    // Commands that need the whole window.
    void PrepareWindow();
    // Beside the message that says what is wrong with a text: where, or why it can't be read.
    void ShowPlace(const ReadReply& reply);
    [[nodiscard]] InvalidCharAnswer AskInvalid(const InvalidChar& invalid, const char* otherwise);

  private:
    [[nodiscard]] bool Unsaved() const;
    [[nodiscard]] bool AskAndSave();
    [[nodiscard]] bool SaveTo(const std::filesystem::path& file);
    void Load(OpenLevel opened, const ReadReply& reply, bool fromList);
    void OpenPath(const std::string& fullName);
    void OpenCurrent(LevelFolder files, bool fromList);
    [[nodiscard]] ReadReply Read(const std::filesystem::path& file, Board& board);
    void ShowLevel();

    Desk& desk_;
    SettingsControl& settings_;
    SolutionControl& solution_;
    LevelFolder files_;
    Album album_;  // empty for a single level
    OpenLevel level_;
    Board kept_;  // as last read or saved
};

}  // namespace kavit
