#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

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
    {"CLI/", {"app", "cli"}},
    {"nlohmann/", {"cli"}},
};

// The rooms of the solver, each knows those before it. Files that lie in none: the plain values and
// the hooks are the ground floor, the facade is the roof.
const std::vector<std::string> kRooms = {"types",  "hooks", "board",  "store",
                                         "search", "moves", "solver", "board_hints"};

// The place in kRooms of a path below solver/: its first part, without an extension.
std::size_t RoomOf(const std::string& path) {
    const auto room =
        std::find(kRooms.begin(), kRooms.end(), path.substr(0, path.find_first_of("/.")));
    return static_cast<std::size_t>(room - kRooms.begin());
}

// What a file says of the solver: the rooms know each other upwards, and who is outside knows the
// roof, the ground floor and what the store says of the machine.
bool SolverAllows(const std::string& includer, const std::string& included) {
    const std::string solver = "solver/";
    const std::string room = included.substr(solver.size());
    if (includer.rfind(solver, 0) == 0)
        return RoomOf(room) <= RoomOf(includer.substr(solver.size()));
    return room.find('/') == std::string::npos || RoomOf(room) == RoomOf("store");
}

// "" or what is wrong with a line of a file, named from src. Headers of the standard library have
// neither a capital letter nor, but for those of the system, a folder.
std::string Objection(const std::string& includer, const std::string& line) {
    const std::string folder = includer.substr(0, includer.find('/'));
    static const std::regex kInclude(R"(\s*#\s*include\s*([<"])([^>"]*)[>"].*)");
    static const std::regex kStandard("(sys/)?[a-z0-9_.]*");
    std::smatch parts;
    if (!std::regex_match(line, parts, kInclude)) return "";
    const std::string file = parts[2];
    if (parts[1] == "\"") {
        if (file.find('/') == std::string::npos) return "names no folder";
        const std::string other = file.substr(0, file.find('/'));
        const bool allowed = kMayInclude.at(folder).count(other) > 0 &&
                             (other != "solver" || SolverAllows(includer, file));
        return allowed ? "" : "against the arrows";
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
        const fs::path path = fs::relative(entry.path(), KAVIT_SOURCE_FOLDER);
        const std::string folder = path.begin()->string();
        ASSERT_EQ(kMayInclude.count(folder), 1U) << path << " is in no known folder";
        if (folder == "solver") {
            ASSERT_LT(RoomOf(path.string().substr(7)), kRooms.size()) << path << " is in no room";
        }
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);)
            EXPECT_EQ(Objection(path.string(), line), "") << path << ": " << line;
        ++files;
    }
    EXPECT_GT(files, 100);
}

TEST(Layout, ObjectsToWhatItShould) {
    const struct {
        const char* File;
        const char* Line;
        const char* Objection;
    } cases[] = {
        {"solver/types.h", "#include \"solver/hooks.h\"", "against the arrows"},
        {"solver/store/offer.h", "#include \"solver/types.h\"", ""},
        {"solver/board/grid.h", "#include \"solver/store/primes.h\"", "against the arrows"},
        {"solver/solver.cpp", "#include \"solver/moves/pass.h\"", ""},
        {"cli/main.cpp", "#include \"solver/solver.h\"", ""},
        {"cli/main.cpp", "#include \"solver/search/search.h\"", "against the arrows"},
        {"output/x.h", "  # include  \"app/window.h\"  // <x>", "against the arrows"},
        {"output/x.h", "// #include \"app/window.h\"", ""},
        {"level/x.h", "#include \"board.h\"", "names no folder"},
        {"app/x.h", "#include <QWidget>", ""},
        {"output/x.h", "#include <QString>", "not known here"},
        {"solver/x.h", "#include <sys/mman.h>", ""},
        {"level/x.h", "#include <boost/any.hpp>", "neither standard nor on the list"},
    };
    for (const auto& c : cases) EXPECT_EQ(Objection(c.File, c.Line), c.Objection) << c.Line;
}

}  // namespace
