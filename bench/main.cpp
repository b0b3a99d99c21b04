// kavit-bench: what the solver costs, measured in one run beside the plain twin.

#include <benchmark/benchmark.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "cases.h"
#include "fewest_table.h"
#include "moves_table.h"
#include "speed.h"
#include "store_sizes.h"

int main(int argc, char** argv) {
    CLI::App app(
        "Measures the solver. Without an option: speed with one thread and with all, beside the "
        "plain twin.\nRepetitions, filters and JSON are the library's: --benchmark_repetitions=N "
        "and others.");
    app.allow_extras();
    kavit::bench::SpeedWishes wishes;
    bool noTwin = false;
    bool fingerprint = false;
    bool moves = false;
    bool fewest = false;
    bool storeSizes = false;
    std::int64_t largest = 200000000;
    std::int64_t blocks = 20;
    app.add_option("--levels", wishes.MoreLevels, "Folder with more levels")
        ->check(CLI::ExistingDirectory);
    app.add_option("--threads", wishes.Threads, "Numbers of threads to measure, as in 1,2,4")
        ->delimiter(',')
        ->check(CLI::Range(1, 1024));
    app.add_flag("--no-twin", noTwin, "Leave the plain twin out");
    app.add_flag("--fingerprint", fingerprint, "One number made of all counts over the examples");
    app.add_flag("--moves", moves, "Table of the man moves at each optimizer level");
    app.add_option("--blocks", blocks, "Box limit of that table");
    app.add_flag("--fewest", fewest, "Table of the search for the fewest moves of all");
    app.add_flag("--store-sizes", storeSizes, "What an offer costs by the size of the store");
    app.add_option("--largest", largest, "Most positions of that");
    CLI11_PARSE(app, argc, argv);
    // What is left must be options of the library (--benchmark_...).
    std::vector<std::string> left = app.remaining();
    std::vector<char*> words = {argv[0]};
    for (std::string& word : left) words.push_back(word.data());
    int wordCount = static_cast<int>(words.size());
    words.push_back(nullptr);
    benchmark::Initialize(&wordCount, words.data());
    if (benchmark::ReportUnrecognizedArguments(wordCount, words.data())) return 1;
    wishes.Twin = !noTwin;
    if (wishes.Threads.empty()) {
        wishes.Threads = {1};
        const int cores = static_cast<int>(std::thread::hardware_concurrency());
        if (cores > 1) wishes.Threads.push_back(cores);
    }
    try {
        if (storeSizes) return kavit::bench::RunStoreSizes(largest);
        if (fingerprint) return kavit::bench::PrintFingerprint();
        if (moves) return kavit::bench::RunMovesTable(wishes.MoreLevels, blocks);
        if (fewest) return kavit::bench::RunFewestTable(wishes.MoreLevels, wishes.Threads);
        return kavit::bench::RunSpeed(wishes);
    } catch (const std::exception& error) {
        std::cerr << "kavit-bench: " << error.what() << '\n';
        return 1;
    }
}
