#include "app/model/level_control.h"

#include <algorithm>
#include <sstream>
#include <system_error>

#include "app/model/examples.h"
#include "level/transform.h"
#include "output/atomic_file.h"

namespace kavit {

namespace {

// What could not be read of it: the first piece in full.
std::string LeftOutOf(const Album& album) {
    const std::size_t more = album.LeftOut.size() - 1;
    return album.LeftOut.front() +
           (more > 0 ? "\n\n" + std::to_string(more) + " more of that kind" : "");
}

std::string NoLevelsIn(const Album& folder) {
    return "There are no levels in " + folder.Path.string() +
           (folder.LeftOut.empty() ? "" : "\n\n" + LeftOutOf(folder));
}

}  // namespace

bool OpenLevel::Built() const {
    return !AsRead || !SameLevel(Board, *AsRead);
}

void LevelControl::PrepareWindow() {
    solution_.SetAside();
    settings_.ApplyPending();
    if (solution_.Known()) return;  // its line stays until a level takes the board
    desk_.Screen.Progress = 0;
    desk_.Screen.Left.clear();
    desk_.Screen.Right.clear();
}

void LevelControl::Open() {
    if (desk_.Refused(Need::Levels)) return;
    PrepareWindow();
    const auto answer = desk_.Window().AskOpenFile(files_.Folder().string(), files_.OpenFileName());
    if (answer) OpenPath(*answer);
}

void LevelControl::OpenGiven(const std::string& fullName) {
    if (desk_.Refused(Need::Levels)) return;
    PrepareWindow();
    OpenPath(fullName);
}

void LevelControl::OpenPath(const std::string& fullName) {
    const std::filesystem::path path = files_.Folder() / fullName;
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) {
        Album folder = ReadFolder(path);
        if (folder.Entries.empty()) return desk_.Say(NoLevelsIn(folder));
        return OpenAlbum(std::move(folder));
    }
    if (auto album = ReadAlbum(path)) return OpenAlbum(std::move(*album));
    LevelFolder files = files_;
    const std::string fault = files.Open(fullName);
    if (!fault.empty()) return desk_.Say(fault);
    OpenCurrent(std::move(files), true);
}

void LevelControl::Step(int step) {
    if (desk_.Refused(Need::Levels)) return;
    PrepareWindow();
    if (!album_.Entries.empty()) {
        const int row = album_.Chosen + step;
        if (row < 0) return desk_.Say("No previous levels");
        if (row >= static_cast<int>(album_.Entries.size())) return desk_.Say("No more levels");
        ChooseEntry(row);
        return;
    }
    LevelFolder files = files_;
    const std::string fault = step > 0 ? files.Next() : files.Previous();
    if (!fault.empty()) return desk_.Say(fault);
    OpenCurrent(std::move(files), true);
}

void LevelControl::Restart() {
    if (desk_.Refused(Need::Levels)) return;
    PrepareWindow();
    solution_.Forget();
    desk_.Fire(Event::Restarted);
    ShowLevel();
    desk_.ShowMsg(Result::LevelOpened);
}

void LevelControl::Example(int index) {
    if (desk_.Refused(Need::Hash)) return;
    LevelFolder files = files_;
    std::string fault;
    if (index == kExampleOther) {
        const auto answer = desk_.Window().AskText(
            "File to Read", "Enter file name\r\nDefault extension .xsb", files_.OtherName());
        if (!answer || answer->empty()) return;
        fault = files.OpenOther(*answer);
    } else if (index == kExampleNext) {
        fault = files.OpenNextNumbered();
    } else {
        const auto* const example =
            std::find_if(std::begin(kExamples), std::end(kExamples),
                         [index](const kavit::Example& e) { return e.Index == index; });
        if (example != std::end(kExamples)) fault = files.OpenExample(example->File);
    }
    if (!fault.empty()) return desk_.Say(fault);
    OpenCurrent(std::move(files), false);
}

// Reads the current file of `files`, which counts as ours from here on.
void LevelControl::OpenCurrent(LevelFolder files, bool fromList) {
    if (!MayLeave()) return;
    OpenLevel opened;
    opened.FileName = files.LevelName();
    opened.Board = level_.Board;
    const ReadReply reply = Read(files.LevelPath(), opened.Board);
    if (reply.Cancelled) return desk_.Window().Quit();
    files_ = std::move(files);
    album_ = {};
    ShowList();
    Load(std::move(opened), reply, fromList);
}

// The board, with what is known of where it came from, takes the place of the one before.
void LevelControl::Load(OpenLevel opened, const ReadReply& reply, bool fromList) {
    opened.Bad = !reply.Loaded();
    opened.AsRead = opened.Board;
    level_ = std::move(opened);
    kept_ = level_.Board;
    solution_.Forget();
    desk_.Fire(level_.Bad ? Event::LevelFailed : Event::LevelRead);
    desk_.SetTitle(level_.FileName);
    ShowLevel();
    if (level_.Bad) {
        desk_.ShowMsg(reply.Code);
        return ShowPlace(reply);
    }
    desk_.ShowMsg(fromList ? Result::LevelOpened : Result::Ok);
}

void LevelControl::OpenAlbum(Album album) {
    if (!MayLeave()) return;
    kept_ = level_.Board;  // what there was to save was asked for
    if (!album.Path.empty()) {
        // Solution files go beside the levels, and Open begins there.
        (void)files_.Open(album.Entries.front().File.string());
    }
    album_ = std::move(album);
    desk_.Screen.ListVisible = true;
    if (!album_.LeftOut.empty()) desk_.Say(LeftOutOf(album_));
    ChooseEntry(0);
}

void LevelControl::ListFolder() {
    if (desk_.Refused(Need::Levels)) return;
    Album folder = ReadFolder(files_.Folder());
    const std::vector<AlbumEntry>& entries = folder.Entries;
    if (entries.empty()) return desk_.Say(NoLevelsIn(folder));
    const auto here = std::find_if(entries.begin(), entries.end(), [&](const AlbumEntry& entry) {
        return entry.File.filename() == files_.LevelFile();
    });
    if (here != entries.end() && !level_.Built())
        folder.Chosen = static_cast<int>(here - entries.begin());
    album_ = std::move(folder);
    desk_.Screen.ListVisible = true;
    ShowList();
    if (!album_.LeftOut.empty()) desk_.Say(LeftOutOf(album_));
}

bool LevelControl::ChooseEntry(int row) {
    if (row < 0 || row >= static_cast<int>(album_.Entries.size())) return false;
    if (desk_.Refused(Need::Levels) || !MayLeave()) {
        ShowList();
        return false;
    }
    PrepareWindow();
    album_.Chosen = row;
    const CollectionLevel& entry = album_.Entries[static_cast<std::size_t>(row)].Level;
    OpenLevel opened;
    opened.FileName = album_.NameOf(row);
    std::istringstream text(entry.BoardText);
    const ReadReply reply = ReadLevelStream(text, opened.Board, {});
    Load(std::move(opened), reply, true);
    if (!entry.Title.empty()) desk_.Screen.Right = entry.Title;
    ShowList();
    return !level_.Bad;
}

void LevelControl::ShowList() {
    auto rows = std::make_shared<std::vector<ListRow>>();
    for (const AlbumEntry& entry : album_.Entries) {
        // A file of a folder is found by its name.
        const bool titled = !entry.Level.Title.empty() || !album_.Folder();
        rows->push_back({titled ? entry.Level.Title : entry.File.stem().string(),
                         entry.Level.BoardText, entry.Mark});
    }
    desk_.Screen.List = std::move(rows);
    desk_.Screen.ListChosen = album_.Chosen;
    if (album_.Entries.empty()) desk_.Screen.ListVisible = false;
}

// A pipe that nobody writes to would stop the window for ever.
ReadReply LevelControl::Read(const std::filesystem::path& file, Board& board) {
    std::error_code error;
    if (std::filesystem::is_fifo(file, error)) {
        return {Result::CantOpen, false, {}, "it is a pipe"};
    }
    return ReadLevelFile(file.string(), board, [this](const InvalidChar& invalid) {
        return AskInvalid(invalid, "OK reads on, Cancel ends the program.");
    });
}

InvalidCharAnswer LevelControl::AskInvalid(const InvalidChar& invalid, const char* otherwise) {
    const std::string text = InvalidCharText(invalid.Character) + "\n\n" + otherwise;
    return desk_.Window().Ask(text, Choices::OkCancel) == Choice::Yes ? InvalidCharAnswer::Space
                                                                      : InvalidCharAnswer::Cancel;
}

void LevelControl::ShowLevel() {
    desk_.ShowBoard(level_.Board);
    desk_.ClearLabels();
}

void LevelControl::ShowPlace(const ReadReply& reply) {
    if (!reply.Reason.empty()) {
        desk_.Screen.Debug = reply.Reason;
    } else if (reply.Place.Line > 0) {
        desk_.Screen.Debug = "line " + std::to_string(reply.Place.Line) + ", column " +
                             std::to_string(reply.Place.Column);
    }
}

void LevelControl::TakePasted(const Board& board) {
    level_ = {board, std::nullopt, "", false};
    kept_ = board;
    album_.Chosen = -1;
    ShowList();
    solution_.Forget();
    desk_.Fire(Event::ImportTaken);
    desk_.SetTitle("");
    ShowLevel();
    desk_.ShowMsg(Result::CanEditBoard);
}

void LevelControl::Clear() {
    ClearBoard(level_.Board);
    level_ = {level_.Board, std::nullopt, "", false};
    album_.Chosen = -1;
    ShowList();
    if (!IsEditing(desk_.Now())) kept_ = level_.Board;
    solution_.Forget();
    desk_.Fire(Event::Cleared);
    desk_.SetTitle("");
    ShowLevel();
}

void LevelControl::Copy() {
    desk_.Window().SetClipboard(CroppedText(level_.Board));
    if (!IsSolving(desk_.Now())) desk_.Screen.Right = "The board is on the clipboard";
}

// An empty board is no loss.
bool LevelControl::Unsaved() const {
    return level_.Board.Cell != kept_.Cell && level_.Board.Cell != Board().Cell;
}

bool LevelControl::MayLeave() {
    if (!Unsaved()) return true;
    const Choice answer =
        desk_.Window().Ask("The board was changed. Save it?", Choices::SaveDiscardCancel);
    return answer == Choice::Yes ? AskAndSave() : answer == Choice::No;
}

// Into the level's own file. What has none, as a level of a collection, asks for one.
void LevelControl::Save() {
    if (desk_.Refused(Need::Change)) return;
    const bool ownFile = !level_.FileName.empty() && album_.Entries.empty() && !level_.Bad;
    (void)(ownFile ? SaveTo(files_.LevelPath()) : AskAndSave());
}

void LevelControl::SaveAs() {
    if (!desk_.Refused(Need::Change)) (void)AskAndSave();
}

// False when the level is not in a file afterwards.
bool LevelControl::AskAndSave() {
    const std::string suggested = level_.FileName.empty() ? "" : level_.FileName + ".xsb";
    const auto answer =
        desk_.Window().AskSaveFile(FileKind::Level, files_.Folder().string(), suggested, "");
    return answer && SaveTo(*answer);
}

bool LevelControl::SaveTo(const std::filesystem::path& file) {
    std::string fault = WriteWholeFile(file, CroppedText(level_.Board));
    if (fault.empty()) fault = files_.Open(file.string());
    if (!fault.empty()) {
        desk_.Say(fault);
        return false;
    }
    kept_ = level_.Board;
    level_.AsRead = level_.Board;
    level_.FileName = files_.LevelName();
    level_.Bad = false;
    album_.Chosen = -1;  // a level of its own from here on
    ShowList();
    if (!IsEditing(desk_.Now())) desk_.SetTitle(level_.FileName);
    return true;
}

void LevelControl::Exit() {
    if (!desk_.Refused(Need::Exit) && MayLeave()) desk_.Window().Quit();
}

}  // namespace kavit
