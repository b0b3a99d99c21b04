#include "cases.h"

#include <algorithm>

#include "level/level_reader.h"

namespace kavit::bench {

const std::vector<Case>& SpeedCases() {
    static const std::vector<Case> cases = {
        {"microban1_093", {.SeaType = SeaType::Both}},
        {"microban1_093", {.SeaType = SeaType::Forward}},
        {"microban1_093", {.SeaType = SeaType::Backward}},
        {"microban1_105", {.SeaType = SeaType::Backward}},
        {"microban1_139", {.SeaType = SeaType::Both}},
        {"microban1_139", {.SeaType = SeaType::Forward}},
        {"microban1_123", {.SeaType = SeaType::Both}},
        {"07-masterpiece", {.SeaType = SeaType::Both}},
    };
    return cases;
}

std::vector<Case> FingerprintCases(const Folders& folders) {
    std::vector<Case> cases;
    for (const std::string& level : LevelsIn(folders.Own)) {
        for (const SeaType seaType : {SeaType::Both, SeaType::Forward, SeaType::Backward})
            for (const HashCase hashCase : {HashCase::Default, HashCase::Case1, HashCase::Case2})
                cases.push_back({level, {.SeaType = seaType, .HashCase = hashCase}, 60000});
        cases.push_back({level, {.OptLevel = OptLevel::None}, 60000});
        cases.push_back({level, {.OptLevel = OptLevel::SomethingPlus, .OptSpecial = true}, 60000});
        cases.push_back({level, {}, 500});
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
