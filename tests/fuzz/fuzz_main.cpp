// kavit-fuzz: solves random small levels with random settings and checks every answer against the
// plain twin and an exhaustive search. A case that fails is made as small as it goes, and printed
// with a line for --replay.

#include <CLI/CLI.hpp>
#include <iostream>

#include "fuzz/fuzz_check.h"
#include "fuzz/shrink.h"

namespace {

using kavit::test::FuzzCase;
using kavit::test::FuzzFailure;
using kavit::test::FuzzTally;

void Print(const FuzzFailure& failure, const FuzzCase& fuzzCase) {
    std::cout << "FAILED: " << failure.What << "\n" << failure.Detail << "\n";
    for (const auto& solve : fuzzCase.Solves) std::cout << kavit::BoardText(solve.Ask.Level, "\n");
    std::cout << "kavit-fuzz --replay '" << kavit::test::ReplayLine(fuzzCase) << "'" << std::endl;
}

void ShrinkAndPrint(const FuzzCase& found, const FuzzFailure& failure) {
    FuzzTally ignored;
    const FuzzCase small = kavit::test::Shrink(found, [&](const FuzzCase& candidate) {
        return kavit::test::CheckCase(candidate, ignored).What == failure.What;
    });
    Print(kavit::test::CheckCase(small, ignored), small);
}

int Replay(const std::string& line) {
    FuzzTally tally;
    const FuzzCase fuzzCase = kavit::test::ParseReplayLine(line);
    const FuzzFailure failure = kavit::test::CheckCase(fuzzCase, tally);
    if (failure.Failed()) Print(failure, fuzzCase);
    std::cout << tally.Text() << std::endl;
    return failure.Failed() ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Solves random levels and checks every answer.", "kavit-fuzz");
    std::uint64_t seed = 1;
    std::int64_t cases = 1000;
    int most = 5;
    std::string line;
    app.add_option("--seed", seed, "seed of the first case; the next one has the next seed");
    app.add_option("--cases", cases, "number of cases")->check(CLI::NonNegativeNumber);
    app.add_option("--failures", most, "stop after so many failures");
    app.add_option("--replay", line, "check one case, as a failure printed it");
    CLI11_PARSE(app, argc, argv);
    try {
        if (!line.empty()) return Replay(line);
        FuzzTally tally;
        int failures = 0;
        for (std::int64_t i = 0; i < cases && failures < most; ++i) {
            const std::uint64_t at = seed + static_cast<std::uint64_t>(i);
            const FuzzCase fuzzCase = kavit::test::RandomCase(at);
            const FuzzFailure failure = kavit::test::CheckCase(fuzzCase, tally);
            if ((i + 1) % 10000 == 0) std::cout << tally.Text() << std::endl;
            if (!failure.Failed()) continue;
            ++failures;
            std::cout << "seed " << at << ": " << failure.What << std::endl;
            ShrinkAndPrint(fuzzCase, failure);
        }
        std::cout << "kavit-fuzz: " << tally.Text() << "; " << failures << " failed" << std::endl;
        return failures > 0 ? 1 : 0;
    } catch (const std::exception& fault) {
        std::cerr << "kavit-fuzz: " << fault.what() << "\n";
        return 2;
    }
}
