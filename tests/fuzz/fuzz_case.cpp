#include "fuzz/fuzz_case.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "support/levels.h"
#include "support/random_level.h"

namespace kavit::test {

namespace {

FuzzSolve ParseSolve(const std::string& text) {
    FuzzSolve solve;
    std::istringstream in(text);
    for (int* number : NumbersOf(solve)) {
        char comma = 0;
        if (!(in >> *number >> comma) || comma != ',')
            throw std::runtime_error("no replay line: " + text);
    }
    std::string codes;
    in >> codes;
    Board& level = solve.Ask.Level;
    if (codes.size() > level.Cell.size() ||
        codes.find_first_not_of("0123456789") != std::string::npos)
        throw std::runtime_error("no level: " + text);
    std::transform(codes.begin(), codes.end(), level.Cell.begin(),
                   [](char code) { return static_cast<std::uint8_t>(code - '0'); });
    SetExtent(level);
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
    ask.OptSpecial = random.Percent(30) ? 1 : 0;
    ask.SeaType = random.Percent(60) ? 0 : random.Pick(1, 2);
    ask.HashCase = random.Percent(50) ? 0 : random.Pick(1, kMixed);
    if (random.Percent(10)) ask.StopAfter = random.Percent(15) ? -1 : random.Pick(1, 60);
    if (random.Percent(15)) solve.StopPassAfter = random.Percent(15) ? -1 : random.Pick(1, 60);
    return solve;
}

}  // namespace

std::array<int*, 8> NumbersOf(FuzzSolve& solve) {
    Question& ask = solve.Ask;
    return {&ask.NumPos,  &ask.Blocks,   &ask.OptLevel,  &ask.OptSpecial,
            &ask.SeaType, &ask.HashCase, &ask.StopAfter, &solve.StopPassAfter};
}

FuzzCase RandomCase(std::uint64_t seed, int scale) {
    Random random(seed * 7919 + 29);
    FuzzCase fuzzCase;
    const int solves = random.Percent(70) ? 1 : random.Pick(2, 3);
    for (int i = 0; i < solves; ++i) {
        FuzzSolve solve = RandomSolve(random);
        solve.Ask.Level = RandomLevel(seed * 4 + static_cast<std::uint64_t>(i), scale);
        if (i > 0 && random.Percent(50)) {  // the same store, so that nothing may be left in it
            solve.Ask.NumPos = fuzzCase.Solves[0].Ask.NumPos;
            solve.Ask.Blocks = fuzzCase.Solves[0].Ask.Blocks;
        }
        if (i > 0 && random.Percent(40)) solve.Ask.Level = fuzzCase.Solves[0].Ask.Level;
        fuzzCase.Solves.push_back(solve);
    }
    return fuzzCase;
}

std::string ReplayLine(FuzzCase fuzzCase) {
    std::string line;
    for (FuzzSolve& solve : fuzzCase.Solves) {
        if (!line.empty()) line += ';';
        for (const int* number : NumbersOf(solve)) line += std::to_string(*number) + ',';
        for (const std::uint8_t code : solve.Ask.Level.Cell) line += static_cast<char>('0' + code);
        line.erase(line.find_last_not_of('0') + 1);
    }
    return line;
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
