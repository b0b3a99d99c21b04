#include "cases.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace kavit::bench {

namespace {

const std::string kCorpus = KAVIT_CORPUS_LEVELS "/";
const std::string kExamples = KAVIT_EXAMPLES_FOLDER "/";

// The level files of a folder, in order.
std::vector<std::string> LevelsIn(const std::string& folder) {
    std::vector<std::string> levels;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".xsb") levels.push_back(entry.path().string());
    if (levels.empty()) throw std::runtime_error("no .xsb files in " + folder);
    std::sort(levels.begin(), levels.end());
    return levels;
}

}  // namespace

std::string Case::Name() const {
    constexpr const char* kSides[] = {"both", "forward", "backward"};
    return std::filesystem::path(File).stem().string() + "/" +
           kSides[static_cast<std::size_t>(Options.SeaType)];
}

std::vector<Case> SpeedCases(const std::string& moreLevels) {
    const SolverOptions forward{.SeaType = SeaType::Forward};
    const SolverOptions backward{.SeaType = SeaType::Backward};
    std::vector<Case> cases = {
        {kCorpus + "boxes_row.xsb", {}},        {kCorpus + "yard_corner.xsb", {}},
        {kCorpus + "maze_store.xsb", {}},       {kCorpus + "nosol_depot.xsb", {}},
        {kExamples + "07-masterpiece.xsb", {}}, {kCorpus + "yard_corner.xsb", backward},
        {kCorpus + "nosol_yard.xsb", forward},  {kCorpus + "yard_corner.xsb", forward},
        {kCorpus + "big_yard.xsb", {}},         {kCorpus + "maze_store.xsb", backward},
        {kCorpus + "maze_store.xsb", forward},
    };
    if (!moreLevels.empty())
        for (std::string& file : LevelsIn(moreLevels)) cases.push_back({std::move(file), {}});
    return cases;
}

std::vector<Case> FingerprintCases() {
    std::vector<Case> cases;
    for (const std::string& file : LevelsIn(kExamples)) {
        for (const SeaType side : {SeaType::Both, SeaType::Forward, SeaType::Backward})
            for (const HashCase hash : {HashCase::Default, HashCase::Case1, HashCase::Case2})
                cases.push_back({file, {.SeaType = side, .HashCase = hash}, 60000});
        cases.push_back({file, {.OptLevel = OptLevel::None}, 60000});
        cases.push_back({file, {.OptLevel = OptLevel::SomethingPlus, .OptSpecial = true}, 60000});
        cases.push_back({file, {}, 500});
    }
    return cases;
}

}  // namespace kavit::bench
