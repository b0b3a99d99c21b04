#include "cases.h"

#include <algorithm>

#include "level/level_reader.h"

namespace kavit::bench {

const std::vector<Case>& SpeedCases() {
    static const std::vector<Case> cases = {
        {"microban1_093", {1, 0, 0, false}}, {"microban1_093", {1, 1, 0, false}},
        {"microban1_093", {1, 2, 0, false}}, {"microban1_105", {1, 2, 0, false}},
        {"microban1_139", {1, 0, 0, false}}, {"microban1_139", {1, 1, 0, false}},
        {"microban1_123", {1, 0, 0, false}}, {"07-masterpiece", {1, 0, 0, false}},
    };
    return cases;
}

std::vector<Case> FingerprintCases(const Folders& folders) {
    std::vector<Case> cases;
    for (const std::string& level : LevelsIn(folders.Own)) {
        for (int seaType = 0; seaType < 3; ++seaType)
            for (int hashCase = 0; hashCase < 3; ++hashCase)
                cases.push_back({level, {1, seaType, hashCase, false}, 60000});
        cases.push_back({level, {0, 0, 0, false}, 60000});
        cases.push_back({level, {3, 0, 0, true}, 60000});
        cases.push_back({level, {1, 0, 0, false}, 500});
    }
    return cases;
}

std::optional<Board> LoadLevel(const Folders& folders, const std::string& level) {
    for (const auto& folder : {folders.Own, folders.Tests}) {
        Board board;
        if (ReadLevelFile((folder / (level + ".xsb")).string(), board, {}).Loaded()) return board;
    }
    return std::nullopt;
}

std::vector<std::string> LevelsIn(const std::filesystem::path& folder) {
    std::vector<std::string> levels;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing))
        if (entry.path().extension() == ".xsb") levels.push_back(entry.path().stem().string());
    std::sort(levels.begin(), levels.end());
    return levels;
}

}  // namespace kavit::bench
