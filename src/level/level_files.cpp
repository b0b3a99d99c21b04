#include "level/level_files.h"

#include <algorithm>
#include <system_error>

namespace kavit {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kDefaultExtension = ".xsb";

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualInUpperCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Upper(x) == Upper(y); });
}

// Takes the digits that `text` starts with, without leading zeros.
std::string_view TakeNumber(std::string_view& text) {
    const auto isZero = [](char c) { return c == '0'; };
    const auto* const digits = std::find_if_not(text.begin(), text.end(), isZero);
    const auto* const end = std::find_if_not(digits, text.end(), IsDigit);
    const std::string_view number(digits, static_cast<std::size_t>(end - digits));
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return number;
}

// -1, 0 or 1 in natural order.
int NaturalCompare(std::string_view a, std::string_view b) {
    while (!a.empty() && !b.empty()) {
        if (IsDigit(a[0]) && IsDigit(b[0])) {
            const std::string_view x = TakeNumber(a);
            const std::string_view y = TakeNumber(b);
            if (x.size() != y.size()) return x.size() < y.size() ? -1 : 1;
            if (const int order = x.compare(y); order != 0) return order < 0 ? -1 : 1;
            continue;
        }
        const auto x = static_cast<unsigned char>(Upper(a[0]));
        const auto y = static_cast<unsigned char>(Upper(b[0]));
        if (x != y) return x < y ? -1 : 1;
        a.remove_prefix(1);
        b.remove_prefix(1);
    }
    if (a.empty() && b.empty()) return 0;
    return a.empty() ? -1 : 1;
}

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

// A pipe or a device may be opened by its name; whoever goes through a folder does not mean it.
bool IsListed(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

}  // namespace

bool NaturalLess(std::string_view a, std::string_view b) {
    const int order = NaturalCompare(a, b);
    return order != 0 ? order < 0 : a < b;
}

std::vector<std::string> ListLevelFiles(const fs::path& folder, std::string_view extension) {
    const std::string ending = "." + std::string(extension);
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.size() <= ending.size() || name[0] == '.') continue;
        const std::string_view end = std::string_view(name).substr(name.size() - ending.size());
        if (EqualInUpperCase(end, ending) && IsListed(entry->path())) names.push_back(name);
    }
    std::sort(names.begin(), names.end(), NaturalLess);
    return names;
}

std::string LevelNameOf(std::string_view fileName) {
    return std::string(fileName.substr(0, fileName.find('.')));
}

std::string NextNumberedName(std::string_view name) {
    const auto* const first = std::find_if(name.begin(), name.end(), IsDigit);
    const auto* const last = std::find_if_not(first, name.end(), IsDigit);
    if (first == last) return std::string(name);
    std::string digits(first, last);
    auto digit = digits.rbegin();
    for (; digit != digits.rend() && *digit == '9'; ++digit) *digit = '0';
    if (digit == digits.rend()) {
        digits.insert(digits.begin(), '1');
    } else {
        ++*digit;
    }
    return std::string(name.begin(), first) + digits + std::string(last, name.end());
}

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
    FindInList();
    return "";
}

// Names that differ in case only are different files here, so the very name goes first.
void LevelFolder::FindInList() {
    auto found = std::find(list_.begin(), list_.end(), levelFile_);
    if (found == list_.end()) {
        found = std::find_if(list_.begin(), list_.end(), [this](const std::string& name) {
            return EqualInUpperCase(name, levelFile_);
        });
    }
    levelIdx_ = static_cast<int>(found - list_.begin()) + (found == list_.end() ? 1 : 0);
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
    if (levelIdx_ <= 0 || list_.empty()) return "No previous levels";
    return StepTo(std::min(levelIdx_ - 1, static_cast<int>(list_.size()) - 1));
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
