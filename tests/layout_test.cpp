#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
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

// "" or what is wrong with a line of a file in a folder. Headers of the standard library have
// neither a capital letter nor, but for those of the system, a folder.
std::string Objection(const std::string& folder, const std::string& line) {
    static const std::regex kInclude(R"(\s*#\s*include\s*([<"])([^>"]*)[>"].*)");
    static const std::regex kStandard("(sys/)?[a-z0-9_.]*");
    std::smatch parts;
    if (!std::regex_match(line, parts, kInclude)) return "";
    const std::string file = parts[2];
    if (parts[1] == "\"") {
        if (file.find('/') == std::string::npos) return "names no folder";
        const std::string other = file.substr(0, file.find('/'));
        return kMayInclude.at(folder).count(other) > 0 ? "" : "against the arrows";
    }
    for (const auto& [start, users] : kForeign)
        if (file.rfind(start, 0) == 0) return users.count(folder) > 0 ? "" : "not known here";
    return std::regex_match(file, kStandard) ? "" : "neither standard nor on the list";
}

TEST(Layout, IncludesFollowTheArrows) {
    int files = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(KAVIT_SOURCE_FOLDER)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        const std::string folder =
            fs::relative(entry.path(), KAVIT_SOURCE_FOLDER).begin()->string();
        ASSERT_EQ(kMayInclude.count(folder), 1U) << entry.path() << " is in no known folder";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);)
            EXPECT_EQ(Objection(folder, line), "") << entry.path() << ": " << line;
        ++files;
    }
    EXPECT_GT(files, 100);
}

TEST(Layout, ObjectsToWhatItShould) {
    const struct {
        const char* Folder;
        const char* Line;
        const char* Objection;
    } cases[] = {
        {"solver", "#include \"level/board.h\"", ""},
        {"level", "#include \"solver/solver.h\"", "against the arrows"},
        {"output", "  # include  \"app/window.h\"  // <x>", "against the arrows"},
        {"output", "// #include \"app/window.h\"", ""},
        {"cli", "#include \"app/window.h\"", "against the arrows"},
        {"level", "#include \"board.h\"", "names no folder"},
        {"app", "#include <QWidget>", ""},
        {"output", "#include <QString>", "not known here"},
        {"cli", "#include <CLI/CLI.hpp>", ""},
        {"solver", "#include <nlohmann/json.hpp>", "not known here"},
        {"solver", "#include <sys/mman.h>", ""},
        {"level", "#include <vector>", ""},
        {"level", "#include <boost/any.hpp>", "neither standard nor on the list"},
    };
    for (const auto& c : cases) EXPECT_EQ(Objection(c.Folder, c.Line), c.Objection) << c.Line;
}

}  // namespace
