#include "cli/level_list.h"

#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "level/level_files.h"
#include "level/without_case.h"

namespace kavit {

namespace {

namespace fs = std::filesystem;

// Turns "\x0a" back into the character, as names are printed.
std::string FromShown(std::string_view shown) {
    std::string text;
    while (!shown.empty()) {
        unsigned value = 0;
        if (shown.size() >= 4 && shown.substr(0, 2) == "\\x" &&
            std::from_chars(shown.data() + 2, shown.data() + 4, value, 16).ptr ==
                shown.data() + 4) {
            text += static_cast<char>(value);
            shown.remove_prefix(4);
        } else {
            text += shown.front();
            shown.remove_prefix(1);
        }
    }
    return text;
}

bool Exists(const std::string& path) {
    std::error_code unknown;
    return fs::exists(path, unknown);
}

// FILE#N, with or without the title behind it.
std::optional<LevelFile> OneOfMany(const std::string& argument) {
    std::string name = argument;
    const std::size_t quote = name.find(" \"");
    if (quote != std::string::npos && name.back() == '"') {
        // A title may hold anything; the file's name may not hold the number and a quote.
        for (std::size_t at = quote; at != std::string::npos; at = name.find(" \"", at + 2)) {
            const std::size_t mark = name.rfind('#', at);
            if (mark == std::string::npos || mark + 1 == at) continue;
            if (name.find_first_not_of("0123456789", mark + 1) != at) continue;
            name.resize(at);
            break;
        }
    }
    const std::size_t mark = name.rfind('#');
    if (mark == std::string::npos) return std::nullopt;
    std::int64_t number = 0;
    const char* const end = name.data() + name.size();
    const auto [rest, error] = std::from_chars(name.data() + mark + 1, end, number);
    if (error != std::errc() || rest != end || number < 1) return std::nullopt;
    name.resize(mark);
    if (!Exists(name)) name = FromShown(name);
    if (!Exists(name)) return std::nullopt;
    return LevelFile{.Name = name, .Only = number};
}

class Walk {
  public:
    std::vector<LevelFile> Files;

    void Add(const std::string& argument) {
        std::error_code unknown;
        if (argument == "-") {
            Files.push_back({.Origin = LevelFile::Kind::StandardInput, .Name = argument});
        } else if (fs::is_directory(argument, unknown)) {
            const std::size_t before = Files.size();
            passedOver_ = false;
            AddFolder(argument);
            if (Files.size() == before && !passedOver_) {
                Files.push_back({.Origin = LevelFile::Kind::NoLevel,
                                 .Name = argument,
                                 .Reason = "no .xsb, .sok or .txt files in this folder",
                                 .EmptyFolder = true});
            }
        } else {
            LevelFile file{.Name = argument};
            if (!Exists(argument)) {
                if (const auto one = OneOfMany(argument))
                    file = *one;
                else if (Exists(FromShown(argument)))
                    file.Name = FromShown(argument);
            }
            (void)IsNew(file.Name);
            Files.push_back(std::move(file));
        }
    }

  private:
    void AddFolder(const fs::path& folder) {
        std::error_code failed;
        std::vector<std::string> files;
        std::vector<std::string> folders;
        for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
             entry.increment(failed)) {
            const std::string name = entry->path().filename().string();
            std::error_code unknown;
            if (name.front() == '.') continue;
            if (entry->is_directory(unknown)) {
                if (!entry->is_symlink(unknown)) folders.push_back(name);
            } else if (IsLevelFileName(name) && entry->is_regular_file(unknown)) {
                files.push_back(name);
            }
        }
        if (failed) {
            Files.push_back({.Origin = LevelFile::Kind::NoLevel,
                             .Name = folder.string(),
                             .Reason = failed.message()});
            return;
        }
        std::sort(files.begin(), files.end(), NaturalLess);
        std::sort(folders.begin(), folders.end(), NaturalLess);
        for (const std::string& name : files) {
            const std::string path = (folder / name).string();
            if (IsNew(path)) {
                Files.push_back({.Name = path, .FromFolder = true});
            } else {
                passedOver_ = true;
            }
        }
        for (const std::string& name : folders) AddFolder(folder / name);
    }

    static bool IsLevelFileName(const std::string& name) {
        const std::string extension = fs::path(name).extension().string();
        constexpr std::string_view known[] = {".xsb", ".sok", ".txt"};
        return std::any_of(std::begin(known), std::end(known), [&](std::string_view other) {
            return EqualWithoutCase(extension, other);
        });
    }

    // Notes the file by what it is, whatever its name.
    bool IsNew(const std::string& path) {
        struct stat about = {};
        return stat(path.c_str(), &about) != 0 || met_.emplace(about.st_dev, about.st_ino).second;
    }

    std::set<std::pair<dev_t, ino_t>> met_;
    bool passedOver_ = false;
};

}  // namespace

std::vector<LevelFile> ListFiles(const std::vector<std::string>& arguments) {
    Walk walk;
    for (const std::string& argument : arguments) walk.Add(argument);
    return std::move(walk.Files);
}

std::string LevelNameOf(const LevelFile& file) {
    if (file.Origin == LevelFile::Kind::StandardInput) return "standard-input";
    const std::string name = LevelNameOf(fs::path(file.Name).filename().string());
    return name.empty() ? "level" : name;
}

}  // namespace kavit
