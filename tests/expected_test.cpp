// The counts that every search of the test levels must give, compared with the solver and, where
// they are small, with its plain twin.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "level/level_reader.h"
#include "support/figures.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

struct Row {
    std::string Level;
    Question Asked;
    std::string Columns;       // from "result" on
    std::int64_t HashCnt = 0;  // 0 where there was no search
};

// The rows of the table; empty when the folder is not there.
std::vector<Row> ReadRows() {
    std::vector<Row> rows;
    std::ifstream lines(LevelsFolder() + "/expected.tsv");
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        Row row;
        std::istringstream fields(line);
        fields >> row.Level >> row.Asked.OptLevel >> row.Asked.SeaType >> row.Asked.HashCase >>
            row.Asked.NumPos;
        fields.get();
        std::getline(fields, row.Columns);
        std::istringstream columns(row.Columns);
        std::string column;
        for (int i = 0; i < 8; ++i) columns >> column;
        if (column != "-") row.HashCnt = std::stoll(column);
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string Columns(const Figures& f) {
    std::ostringstream text;
    text << f.Result;
    if (f.Result == 0) {
        text << '\t' << f.SolPushes[1] << '\t' << f.SolMoves[0] << '\t' << f.nSol;
    } else {
        text << "\t-\t-\t-";
    }
    if (f.Result != 0 && f.Result != 4) return text.str() + "\t-\t-\t-\t-\t-\t-\t-\t-";
    text << '\t' << f.BucketCnt << '\t' << f.PosChanged << '\t' << f.PosDiscarded << '\t'
         << f.HashCnt << '\t' << f.RHashCnt << '\t' << f.SeaSteps << '\t' << f.ForwDepth << '\t'
         << f.BackDepth;
    return text.str();
}

template <typename Asker>
void CompareRow(Row row, const Asker& ask) {
    const std::string file = LevelsFolder() + "/" + row.Level + ".xsb";
    Figures figures;
    figures.Result = static_cast<int>(ReadLevelFile(file, row.Asked.Level, {}).Code);
    if (figures.Result == 0) figures = ask(row.Asked);
    EXPECT_EQ(Columns(figures), row.Columns) << row.Level << ", " << row.Asked.Text();
}

// One test for each setting of the table, so that they run side by side.
struct Setting {
    const char* Name;
    int OptLevel, SeaType, HashCase;
    std::int32_t NumPos;
};

class Expected : public testing::TestWithParam<Setting> {
  protected:
    void SetUp() override {
        for (Row& row : ReadRows()) {
            if (row.Asked.OptLevel == GetParam().OptLevel &&
                row.Asked.SeaType == GetParam().SeaType &&
                row.Asked.HashCase == GetParam().HashCase &&
                row.Asked.NumPos == GetParam().NumPos) {
                rows_.push_back(std::move(row));
            }
        }
        if (rows_.empty()) GTEST_SKIP() << "no expected.tsv in " << LevelsFolder();
    }
    std::vector<Row> rows_;
};

TEST_P(Expected, SolverCountsTheSame) {
    Solver solver;
    for (const Row& row : rows_) {
        CompareRow(row, [&](const Question& asked) { return AskWithSizes(solver, asked); });
    }
}

TEST_P(Expected, TwinCountsTheSame) {
    PlainTwin twin(GetParam().NumPos, 8, 1, 0, 0);
    int compared = 0;
    for (const Row& row : rows_) {
        if (row.HashCnt > 20000) continue;
        CompareRow(row, [&](const Question& asked) { return Ask(twin, asked); });
        ++compared;
    }
    EXPECT_GE(compared, 50);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, Expected,
    testing::Values(Setting{"Default", 1, 0, 0, 4000000}, Setting{"OptNone", 0, 0, 0, 4000000},
                    Setting{"HashCase1", 1, 0, 1, 4000000}, Setting{"HashCase2", 1, 0, 2, 4000000},
                    Setting{"Forward", 1, 1, 0, 4000000}, Setting{"Backward", 1, 2, 0, 4000000},
                    Setting{"SmallStore", 1, 0, 0, 500}),
    [](const auto& setting) { return setting.param.Name; });

TEST(ExpectedTable, EveryRowBelongsToATest) {
    const std::size_t rows = ReadRows().size();
    if (rows == 0) GTEST_SKIP() << "no expected.tsv in " << LevelsFolder();
    EXPECT_EQ(rows, 7U * 88U);
}

// Levels that fill the default store, in a larger one, which is hashed Mixed.
TEST(ExpectedTable, LargeLevels) {
    std::ifstream lines(LevelsFolder() + "/large.tsv");
    std::string line;
    if (!std::getline(lines, line)) GTEST_SKIP() << "no large.tsv in " << LevelsFolder();
    Solver solver;
    int rows = 0;
    while (std::getline(lines, line)) {
        Question asked;
        asked.NumPos = 7000000;
        asked.HashCase = kMixed;
        const std::string level = line.substr(0, line.find('\t'));
        const std::string file = LevelsFolder() + "/large/" + level + ".xsb";
        ASSERT_TRUE(ReadLevelFile(file, asked.Level, {}).Loaded()) << level;
        const Figures f = AskWithSizes(solver, asked);
        std::ostringstream text;
        text << level << '\t' << f.BucketCnt << '\t' << f.HashCnt << '\t' << f.PosChanged << '\t'
             << f.PosDiscarded << '\t' << f.nSol << '\t' << f.SeaSteps << '\t' << f.ForwDepth
             << '\t' << f.BackDepth;
        for (const std::size_t k : {0U, 1U})
            text << '\t' << f.SolMoves[k] << '\t' << f.SolPushes[k];
        EXPECT_EQ(text.str(), line);
        ++rows;
    }
    EXPECT_EQ(rows, 2);
}

}  // namespace
}  // namespace kavit::test
