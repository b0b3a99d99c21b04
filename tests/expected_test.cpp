// The counts that every search of a level must give, as the tables beside the levels say: the
// solver compared with all of them, and its plain twin, which made the repository's own table, with
// those that are small.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <ostream>

#include "level/level_reader.h"
#include "support/corpus.h"

namespace kavit::test {

// In the names of the tests.
void PrintTo(const TableSetting& setting, std::ostream* out) {
    *out << setting.Name;
}

namespace {

// Searches that offer more positions than this are for the released build alone.
#if defined(NDEBUG)
constexpr std::int64_t kMostOffered = INT64_MAX;
#else
constexpr std::int64_t kMostOffered = 200000;
#endif

bool Same(const TableSetting& a, const TableSetting& b) {
    return a.OptLevel == b.OptLevel && a.SeaType == b.SeaType && a.HashCase == b.HashCase &&
           a.NumPos == b.NumPos;
}

// The rows of every folder.
std::vector<CountRow> AllRows() {
    std::vector<CountRow> rows;
    for (const std::string& folder : LevelFolders())
        for (CountRow& row : ReadCounts(folder)) rows.push_back(std::move(row));
    return rows;
}

// One test for each setting of the table, so that they run side by side.
class Expected : public testing::TestWithParam<TableSetting> {
  protected:
    template <typename Asker>
    void Compare(std::int64_t mostOffered, const Asker& ask) {
        int compared = 0;
        for (const CountRow& row : AllRows()) {
            if (!Same(row.Setting, GetParam()) || row.HashCnt > mostOffered) continue;
            Question asked;
            row.Setting.ApplyTo(asked);
            const std::string file = row.Folder + "/" + row.Level + ".xsb";
            Figures figures;
            figures.Result = static_cast<int>(ReadLevelFile(file, asked.Level, {}).Code);
            if (figures.Result == 0) figures = ask(asked);
            EXPECT_EQ(CountColumns(figures), row.Columns) << row.Level << ", " << asked.Text();
            ++compared;
        }
        EXPECT_GE(compared, 30);
    }
};

TEST_P(Expected, SolverCountsTheSame) {
    Solver solver;
    Compare(kMostOffered, [&](const Question& asked) { return AskWithSizes(solver, asked); });
}

TEST_P(Expected, TwinCountsTheSame) {
    PlainTwin twin(GetParam().NumPos, 8, 1, 0, 0);
    Compare(20000, [&](const Question& asked) { return Ask(twin, asked); });
}

INSTANTIATE_TEST_SUITE_P(Settings, Expected, testing::ValuesIn(kTableSettings),
                         [](const auto& setting) { return setting.param.Name; });

TEST(ExpectedTable, EveryRowBelongsToATest) {
    for (const CountRow& row : AllRows()) {
        const auto isRows = [&row](const TableSetting& setting) {
            return Same(setting, row.Setting);
        };
        EXPECT_TRUE(std::any_of(kTableSettings.begin(), kTableSettings.end(), isRows))
            << row.Level << " " << row.Columns;
    }
}

// Levels that fill the default store, in a larger one, which is hashed Mixed.
TEST(ExpectedTable, LargeLevels) {
    std::ifstream lines(MoreLevels() + "/large.tsv");
    std::string line;
    if (!std::getline(lines, line)) GTEST_SKIP() << "no large.tsv in " << MoreLevels();
    Solver solver;
    int rows = 0;
    while (std::getline(lines, line)) {
        Question asked;
        asked.NumPos = 7000000;
        asked.HashCase = kMixed;
        const std::string level = line.substr(0, line.find('\t'));
        const std::string file = MoreLevels() + "/large/" + level + ".xsb";
        ASSERT_TRUE(ReadLevelFile(file, asked.Level, {}).Loaded()) << level;
        const Figures f = AskWithSizes(solver, asked);
        std::string text = level;
        for (const char* name :
             {"BucketCnt", "HashCnt", "PosChanged", "PosDiscarded", "nSol", "SeaSteps", "ForwDepth",
              "BackDepth", "SolMoves0", "SolPushes0", "SolMoves1", "SolPushes1"})
            text += '\t' + std::to_string(f[name]);
        EXPECT_EQ(text, line);
        ++rows;
    }
    EXPECT_GT(rows, 0);
}

}  // namespace
}  // namespace kavit::test
