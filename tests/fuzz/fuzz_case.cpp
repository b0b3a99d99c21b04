#include "fuzz/fuzz_case.h"

#include <sstream>
#include <stdexcept>

#include "support/levels.h"
#include "support/random_level.h"

namespace kavit::test {

namespace {

constexpr std::string_view kCodes = "-.$*#@678+";  // one character for each cell code 0..9

std::string Rows(const Board& board) {
    std::string rows;
    for (int row = 0; row < Maxrow; ++row) {
        std::string line;
        for (int col = 0; col < Maxcol; ++col) {
            const std::uint8_t code = board.Cell[static_cast<std::size_t>(row * Maxcol + col)];
            line += kCodes.at(code);
        }
        line.erase(line.find_last_not_of('-') + 1);
        rows += line + "/";
    }
    rows.erase(rows.find_last_not_of('/') + 1);
    return rows;
}

Board ParseRows(std::string_view rows) {
    Board board;
    std::size_t row = 0;
    std::size_t col = 0;
    for (const char c : rows) {
        if (c == '/') {
            ++row;
            col = 0;
            continue;
        }
        const std::size_t code = kCodes.find(c);
        if (code == std::string_view::npos || row >= Maxrow || col >= Maxcol)
            throw std::runtime_error("no level: " + std::string(rows));
        board.Cell[row * Maxcol + col++] = static_cast<std::uint8_t>(code);
    }
    SetExtent(board);
    return board;
}

FuzzSolve ParseSolve(const std::string& text) {
    FuzzSolve solve;
    Question& ask = solve.Ask;
    std::istringstream in(text);
    int* const numbers[] = {&ask.Blocks,         &ask.OptLevel, nullptr,
                            &ask.SeaType,        &ask.HashCase, &ask.StopAfter,
                            &solve.StopPassAfter};
    char comma = ',';
    in >> ask.NumPos;
    for (int* number : numbers) {
        int value = 0;
        if (!(in >> comma >> value) || comma != ',')
            throw std::runtime_error("no replay line: " + text);
        if (number == nullptr)
            ask.OptSpecial = value != 0;
        else
            *number = value;
    }
    std::string rows;
    if (!(in >> comma >> rows) || comma != ',') throw std::runtime_error("no level: " + text);
    ask.Level = ParseRows(rows);
    return solve;
}

FuzzSolve RandomSolve(Random& random) {
    constexpr std::int32_t kStores[] = {1,   2,   3,    5,    10,   11,    20,    50,
                                        100, 300, 1000, 4000, 4000, 50000, 50000, 50000};
    FuzzSolve solve;
    Question& ask = solve.Ask;
    ask.NumPos = kStores[random.Pick(0, std::size(kStores) - 1)];
    ask.Blocks = random.Percent(90) ? 8 : random.Pick(1, 5);
    ask.OptLevel = random.Percent(40) ? 4 : random.Pick(0, 4);
    ask.OptSpecial = random.Percent(30);
    ask.SeaType = random.Percent(60) ? 0 : random.Pick(1, 2);
    ask.HashCase = random.Percent(50) ? 0 : random.Pick(1, kMixed);
    if (random.Percent(10)) ask.StopAfter = random.Percent(15) ? -1 : random.Pick(1, 60);
    if (random.Percent(15)) solve.StopPassAfter = random.Percent(15) ? -1 : random.Pick(1, 60);
    return solve;
}

}  // namespace

bool FuzzSolve::operator==(const FuzzSolve& other) const {
    return ReplayLine({{*this}}) == ReplayLine({{other}});
}

FuzzCase RandomCase(std::uint64_t seed) {
    Random random(seed * 7919 + 29);
    FuzzCase fuzzCase;
    const int solves = random.Percent(70) ? 1 : random.Pick(2, 3);
    for (int i = 0; i < solves; ++i) {
        FuzzSolve solve = RandomSolve(random);
        solve.Ask.Level = RandomLevel(seed * 4 + static_cast<std::uint64_t>(i));
        if (i > 0 && random.Percent(50)) {  // the same store, so that nothing may be left in it
            solve.Ask.NumPos = fuzzCase.Solves[0].Ask.NumPos;
            solve.Ask.Blocks = fuzzCase.Solves[0].Ask.Blocks;
        }
        if (i > 0 && random.Percent(40)) solve.Ask.Level = fuzzCase.Solves[0].Ask.Level;
        fuzzCase.Solves.push_back(solve);
    }
    return fuzzCase;
}

std::string ReplayLine(const FuzzCase& fuzzCase) {
    std::ostringstream line;
    for (const FuzzSolve& solve : fuzzCase.Solves) {
        const Question& ask = solve.Ask;
        line << (line.tellp() > 0 ? ";" : "") << ask.NumPos << ',' << ask.Blocks << ','
             << ask.OptLevel << ',' << ask.OptSpecial << ',' << ask.SeaType << ',' << ask.HashCase
             << ',' << ask.StopAfter << ',' << solve.StopPassAfter << ',' << Rows(ask.Level);
    }
    return line.str();
}

FuzzCase ParseReplayLine(std::string_view line) {
    FuzzCase fuzzCase;
    std::istringstream solves{std::string(line)};
    for (std::string solve; std::getline(solves, solve, ';');)
        fuzzCase.Solves.push_back(ParseSolve(solve));
    if (fuzzCase.Solves.empty()) throw std::runtime_error("the replay line is empty");
    return fuzzCase;
}

}  // namespace kavit::test
