#pragma once

#include <filesystem>
#include <string>
#include <vector>

// Which level file is the current one, and which comes next: the logic of Open File, Next Level,
// Previous Level and the Examples menu, without reading a level.

namespace kavit {

// The current level file and the folder list around it. Every command answers the text of a message
// box, "" when the current file is now the wanted one; refused commands leave the current file.
class LevelFolder {
  public:
    // `current` is the current folder; `examples` is where example levels are looked for that are
    // not in the current folder (may be empty).
    explicit LevelFolder(const std::filesystem::path& current,
                         const std::filesystem::path& examples = {});

    // Makes a file, named in full or from the current folder, the current one, its folder the
    // current folder, and the files of its extension the folder list. It need not exist.
    [[nodiscard]] std::string Open(const std::string& fullName);
    [[nodiscard]] std::string Next();
    [[nodiscard]] std::string Previous();

    // The Examples menu; the folder list stays. Other takes a name as typed and adds ".xsb" to one
    // without an extension; Next counts the name of Other up.
    [[nodiscard]] std::string OpenExample(const std::string& fileName);
    [[nodiscard]] std::string OpenOther(const std::string& typed);
    [[nodiscard]] std::string OpenNextNumbered();

    [[nodiscard]] const std::string& LevelFile() const { return levelFile_; }
    [[nodiscard]] const std::string& LevelName() const { return levelName_; }
    // The current file in full: what to read.
    [[nodiscard]] const std::filesystem::path& LevelPath() const { return levelPath_; }
    // The current folder: where the next Open dialog starts and where solution files go.
    [[nodiscard]] const std::filesystem::path& Folder() const { return folder_; }
    [[nodiscard]] const std::string& OpenFileName() const { return openFileName_; }
    [[nodiscard]] const std::string& OtherName() const { return otherName_; }

  private:
    void SetCurrent(const std::filesystem::path& path);
    [[nodiscard]] std::string StepTo(int index);
    [[nodiscard]] std::string OpenNamed(const std::string& name);

    static constexpr int kNotOpened = -99;

    std::filesystem::path folder_;
    std::filesystem::path exampleFolder_;
    std::vector<std::string> list_;  // of folder_
    int levelIdx_ = kNotOpened;      // from 0; one beyond the end and one more: not in the list
    std::filesystem::path levelPath_;
    std::string levelFile_;
    std::string levelName_;
    std::string openFileName_;
    std::string otherName_;
};

}  // namespace kavit
