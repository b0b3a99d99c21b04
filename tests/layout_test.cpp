#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>

// The folders know each other in one direction only, and only the window knows its toolkit.

namespace {

namespace fs = std::filesystem;

const std::map<std::string, std::set<std::string>> kMayInclude = {
    {"level", {"level"}},
    {"solver", {"level", "solver"}},
    {"output", {"level", "solver", "output"}},
    {"cli", {"level", "solver", "output", "cli"}},
    {"app", {"level", "solver", "output", "app"}},
};

// What comes from elsewhere, by the start of its name, and who may use it.
const std::map<std::string, std::set<std::string>> kForeign = {
    {"Q", {"app"}},
    {"CLI/", {"cli"}},
    {"nlohmann/", {"cli"}},
};

// "" or what is wrong with one include of a folder. Headers of the standard library have neither a
// capital letter nor, but for those of the system, a folder.
std::string Objection(const std::string& folder, const std::string& file, bool quoted) {
    if (quoted) {
        const std::string other = file.substr(0, file.find('/'));
        if (file.find('/') == std::string::npos) return "names no folder";
        return kMayInclude.at(folder).count(other) > 0 ? "" : "against the arrows";
    }
    for (const auto& [start, users] : kForeign) {
        if (file.rfind(start, 0) == 0) return users.count(folder) > 0 ? "" : "not known here";
    }
    const std::string name = file.rfind("sys/", 0) == 0 ? file.substr(4) : file;
    const bool standard =
        name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_.") == std::string::npos;
    return standard ? "" : "neither standard nor on the list";
}

struct Include {
    std::string File;  // "" for a line that is none
    bool Quoted = false;
};

Include ReadInclude(const std::string& line) {
    const std::string word = "include";
    const std::size_t hash = line.find_first_not_of(" \t");
    if (hash == std::string::npos || line[hash] != '#') return {};
    const std::size_t at = line.find_first_not_of(" \t", hash + 1);
    if (at == std::string::npos || line.compare(at, word.size(), word) != 0) return {};
    const std::size_t open = line.find_first_of("<\"", at);
    if (open == std::string::npos) return {};
    const std::size_t close = line.find_first_of(">\"", open + 1);
    return {line.substr(open + 1, close - open - 1), line[open] == '"'};
}

TEST(Layout, IncludesFollowTheArrows) {
    int seen = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(KAVIT_SOURCE_FOLDER)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        const std::string folder =
            fs::relative(entry.path(), KAVIT_SOURCE_FOLDER).begin()->string();
        ASSERT_EQ(kMayInclude.count(folder), 1U) << entry.path() << " is in no known folder";
        std::ifstream file(entry.path());
        int number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            const Include include = ReadInclude(line);
            if (include.File.empty()) continue;
            ++seen;
            EXPECT_EQ(Objection(folder, include.File, include.Quoted), "")
                << entry.path() << ":" << number << ": " << line;
        }
    }
    EXPECT_GT(seen, 100);
}

TEST(Layout, ObjectsToWhatItShould) {
    EXPECT_EQ(ReadInclude("  # include  <sys/mman.h>  // \"x\"").File, "sys/mman.h");
    EXPECT_EQ(ReadInclude("#include \"level/board.h\"").File, "level/board.h");
    EXPECT_EQ(ReadInclude("// #include <vector>").File, "");

    struct Case {
        const char* Folder;
        const char* File;
        bool Quoted;
        bool Allowed;
    };
    const Case cases[] = {
        {"solver", "level/board.h", true, true},
        {"level", "solver/solver.h", true, false},
        {"output", "app/window.h", true, false},
        {"cli", "app/window.h", true, false},
        {"level", "board.h", true, false},
        {"app", "QWidget", false, true},
        {"output", "QString", false, false},
        {"cli", "CLI/CLI.hpp", false, true},
        {"solver", "nlohmann/json.hpp", false, false},
        {"solver", "sys/mman.h", false, true},
        {"level", "vector", false, true},
        {"level", "boost/any.hpp", false, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Objection(c.Folder, c.File, c.Quoted).empty(), c.Allowed) << c.File;
    }
}

}  // namespace
