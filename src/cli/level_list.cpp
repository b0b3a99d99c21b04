#include "cli/level_list.h"

#include <filesystem>
#include <system_error>

#include "level/level_files.h"

namespace kavit {

namespace {

namespace fs = std::filesystem;

void AddFolder(const std::string& folder, std::vector<LevelSource>& levels) {
    std::error_code failed;
    (void)fs::directory_iterator(folder, failed);
    if (failed) {
        levels.push_back({LevelSource::Kind::NoLevel, folder, failed.message(), false});
        return;
    }
    const std::vector<std::string> names = ListLevelFiles(folder, "xsb");
    for (const std::string& name : names) {
        levels.push_back({LevelSource::Kind::File, (fs::path(folder) / name).string(), "", false});
    }
    if (names.empty()) {
        levels.push_back(
            {LevelSource::Kind::NoLevel, folder, "no .xsb files in this folder", true});
    }
}

}  // namespace

std::vector<LevelSource> ListLevels(const std::vector<std::string>& arguments) {
    std::vector<LevelSource> levels;
    for (const std::string& argument : arguments) {
        std::error_code unknown;
        if (argument == "-") {
            levels.push_back({LevelSource::Kind::StandardInput, argument, "", false});
        } else if (fs::is_directory(argument, unknown)) {
            AddFolder(argument, levels);
        } else {
            levels.push_back({LevelSource::Kind::File, argument, "", false});
        }
    }
    return levels;
}

std::string LevelNameOf(const LevelSource& source) {
    if (source.Origin == LevelSource::Kind::StandardInput) return "standard-input";
    const std::string name = LevelNameOf(fs::path(source.Name).filename().string());
    return name.empty() ? "level" : name;
}

}  // namespace kavit
