#include "support/corpus.h"

#include <fstream>
#include <map>
#include <sstream>
#include <utility>

namespace kavit::test {

namespace {

// The fields of each row after the titles; none when the file is not there.
std::vector<std::vector<std::string>> ReadTable(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream lines(path);
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::vector<std::string>& row = rows.emplace_back();
        for (std::string field; std::getline(fields, field, '\t');) row.push_back(field);
    }
    return rows;
}

std::optional<int> Number(const std::vector<std::string>& row, std::size_t column) {
    if (column >= row.size()) return std::nullopt;
    const std::string& field = row[column];
    if (field.empty() || field.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::stoi(field);
}

}  // namespace

std::string OwnLevels() {
    return KAVIT_OWN_LEVELS;
}

std::string MoreLevels() {
    return KAVIT_MORE_LEVELS;
}

std::vector<std::string> LevelFolders() {
    std::vector<std::string> folders{OwnLevels()};
    if (!MoreLevels().empty()) folders.push_back(MoreLevels());
    return folders;
}

void TableSetting::ApplyTo(Question& question) const {
    question.OptLevel = OptLevel;
    question.SeaType = SeaType;
    question.HashCase = HashCase;
    question.NumPos = NumPos;
}

std::vector<CountRow> ReadCounts(const std::string& folder) {
    constexpr std::size_t kResult = 5;
    constexpr std::size_t kHashCnt = 12;
    std::vector<CountRow> rows;
    for (const auto& fields : ReadTable(folder + "/expected.tsv")) {
        CountRow& row = rows.emplace_back();
        row.Folder = folder;
        row.Level = fields.at(0);
        row.Setting = {"", std::stoi(fields.at(1)), std::stoi(fields.at(2)),
                       std::stoi(fields.at(3)), std::stoi(fields.at(4))};
        if (fields.at(kHashCnt) != "-") row.HashCnt = std::stoll(fields.at(kHashCnt));
        row.Columns = fields.at(kResult);
        for (std::size_t i = kResult + 1; i < fields.size(); ++i) row.Columns += '\t' + fields[i];
    }
    return rows;
}

std::string CountColumns(const Figures& f) {
    const bool searched = f.Result == 0 || f.Result == 3 || f.Result == 4;
    std::string text = std::to_string(f.Result);
    const auto add = [&](bool known, std::initializer_list<const char*> names) {
        for (const char* name : names) text += known ? '\t' + std::to_string(f[name]) : "\t-";
    };
    add(f.Result == 0, {"SolPushes1", "SolMoves0", "nSol"});
    add(searched, {"BucketCnt", "PosChanged", "PosDiscarded", "HashCnt", "RHashCnt", "SeaSteps",
                   "ForwDepth", "BackDepth"});
    return text;
}

std::vector<MovesRow> ReadMoves(const std::string& folder) {
    std::map<std::string, MovesRow> rows;
    for (const char* table : {"/moves.tsv", "/best_moves.tsv", "/fewest_moves.tsv"}) {
        for (const auto& fields : ReadTable(folder + table)) {
            MovesRow& row = rows[fields.at(0)];
            row = {folder, fields.at(0), Number(fields, 1), Number(fields, 2), Number(fields, 3)};
        }
    }
    std::vector<MovesRow> list;
    for (auto& [level, row] : rows) list.push_back(std::move(row));
    return list;
}

}  // namespace kavit::test
