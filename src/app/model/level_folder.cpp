#include "app/model/level_folder.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "level/level_files.h"

namespace kavit {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kDefaultExtension = ".xsb";

// The text between the first and the second "." of a name that has one.
std::string ExtensionOf(std::string_view fileName) {
    const std::string_view rest = fileName.substr(fileName.find('.') + 1);
    return std::string(rest.substr(0, rest.find('.')));
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && !fs::is_directory(status);
}

}  // namespace

LevelFolder::LevelFolder(const fs::path& current, const fs::path& examples)
    : folder_(current), exampleFolder_(examples) {}

void LevelFolder::SetCurrent(const fs::path& path) {
    levelPath_ = path;
    levelFile_ = path.filename().string();
    levelName_ = LevelNameOf(levelFile_);
}

std::string LevelFolder::Open(const std::string& fullName) {
    const fs::path path = folder_ / fullName;
    const std::string file = path.filename().string();
    if (file.find('.') == std::string::npos) {
        return "file " + fullName + " has no extension; level files are named like level1.xsb";
    }
    openFileName_ = path.string();
    folder_ = path.parent_path();
    SetCurrent(path);
    list_ = ListLevelFiles(folder_, ExtensionOf(levelFile_));
    const std::optional<std::size_t> index = FindLevelFile(list_, levelFile_);
    levelIdx_ = static_cast<int>(index.value_or(list_.size()));
    return "";
}

std::string LevelFolder::StepTo(int index) {
    levelIdx_ = index;
    SetCurrent(folder_ / list_[static_cast<std::size_t>(index)]);
    return "";
}

std::string LevelFolder::Next() {
    if (levelIdx_ == kNotOpened) return "Must Open First";
    if (levelIdx_ >= static_cast<int>(list_.size()) - 1) return "No more levels";
    return StepTo(levelIdx_ + 1);
}

// From a file that is not in the list one steps to the list's last.
std::string LevelFolder::Previous() {
    if (levelIdx_ == kNotOpened) return "Must Open First";
    if (levelIdx_ <= 0) return "No previous levels";
    return StepTo(levelIdx_ - 1);
}

std::string LevelFolder::OpenNamed(const std::string& name) {
    for (const fs::path& folder : {folder_, exampleFolder_}) {
        if (folder.empty() || !IsFile(folder / name)) continue;
        SetCurrent(folder / name);
        return "";
    }
    return "file " + name + " Not found";
}

std::string LevelFolder::OpenExample(const std::string& fileName) {
    return OpenNamed(fileName);
}

// Only the file's own name can have an extension; a "." at its end is none.
std::string LevelFolder::OpenOther(const std::string& typed) {
    otherName_ = typed;
    const std::string file = fs::path(typed).filename().string();
    const bool extended = file.find('.') + 1 < file.size() && file.find('.') != std::string::npos;
    return OpenNamed(extended ? typed : typed + std::string(kDefaultExtension));
}

std::string LevelFolder::OpenNextNumbered() {
    if (otherName_.empty()) return "No previus name";
    const fs::path last(otherName_);
    const std::string next = NextNumberedName(last.filename().string());
    return OpenOther((last.parent_path() / next).string());
}

}  // namespace kavit
