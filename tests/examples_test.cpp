#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <vector>

#include "support/levels.h"

// The example levels that ship, against the table in their README: it is what users are told, so
// the test reads that very table.

namespace {

using namespace kavit;

const std::filesystem::path kExamples = KAVIT_EXAMPLES_FOLDER;

struct Row {
    std::string File;
    int Boxes = 0;
    int Pushes = 0;
    int Moves = 0;
    int Positions = 0;
};

std::vector<Row> Table() {
    static const std::regex kRow(R"(\| (\S+\.xsb) \| (\d+) \| (\d+) \| (\d+) \| (\d+) \|)");
    std::vector<Row> rows;
    std::ifstream readme(kExamples / "README.md");
    std::smatch cells;
    for (std::string line; std::getline(readme, line);)
        if (std::regex_match(line, cells, kRow))
            rows.push_back({cells[1], std::stoi(cells[2]), std::stoi(cells[3]), std::stoi(cells[4]),
                            std::stoi(cells[5])});
    return rows;
}

TEST(Examples, TheTableListsEveryFile) {
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kExamples))
        if (entry.path().extension() == ".xsb") ++files;
    EXPECT_EQ(files, 7U);
    EXPECT_EQ(Table().size(), files);
}

void Solve(Solver& solver, const Board& board, const SolverOptions& options) {
    test::SearchLevel(solver, board, options);
    SolverHooks hooks;
    ASSERT_EQ(solver.OptimizeMoves(hooks), Result::GoOn);
    solver.BuildSolutions();
    EXPECT_EQ(test::KeptFault(solver, board), "");
}

TEST(Examples, EachIsSolvedAsTheTableSays) {
    Solver solver;
    ASSERT_TRUE(solver.ApplySizes({}).Ok);
    for (const Row& row : Table()) {
        SCOPED_TRACE(row.File);
        const Board board = test::BoardOfFile((kExamples / row.File).string());
        ASSERT_NO_FATAL_FAILURE(Solve(solver, board, {}));
        EXPECT_EQ(solver.Counters().NumBoxes, row.Boxes);
        EXPECT_EQ(solver.Counters().BucketCnt, row.Positions);
        EXPECT_EQ(solver.Kept(1)->SolPushes, row.Pushes);

        ASSERT_NO_FATAL_FAILURE(Solve(solver, board, {.OptLevel = OptLevel::SomethingPlus}));
        EXPECT_TRUE(solver.Counters().MovesProved);
        EXPECT_EQ(solver.Kept(1)->SolPushes, row.Pushes);
        EXPECT_EQ(solver.Kept(1)->SolMoves, row.Moves);
    }
}

}  // namespace
