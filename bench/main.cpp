// kavit-bench: what the solver costs, measured in one run beside the plain twin.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "moves_table.h"
#include "speed.h"
#include "store_sizes.h"

int main(int argc, char** argv) {
    CLI::App app("Measures the solver. Without an option: speed beside the plain twin.");
    kavit::bench::Folders folders{KAVIT_OWN_LEVELS, KAVIT_TEST_LEVELS};
    std::string only;
    bool noTwin = false;
    bool fingerprint = false;
    bool moves = false;
    bool storeSizes = false;
    std::int64_t largest = 200000000;
    std::int64_t blocks = 20;
    app.add_option("--levels", folders.Tests, "Folder of the levels for tests");
    app.add_option("--only", only, "Only the searches of levels whose name holds this text");
    app.add_flag("--no-twin", noTwin, "Leave the plain twin out");
    app.add_flag("--fingerprint", fingerprint, "One number made of all counts over the examples");
    app.add_flag("--moves", moves, "Table of the man moves at each optimizer level");
    app.add_option("--blocks", blocks, "Box limit of the table");
    app.add_flag("--store-sizes", storeSizes, "What an offer costs by the size of the store");
    app.add_option("--largest", largest, "Most positions of --store-sizes");
    CLI11_PARSE(app, argc, argv);
    try {
        if (storeSizes) return kavit::bench::RunStoreSizes(largest);
        if (fingerprint) return kavit::bench::RunFingerprint(folders);
        if (moves) return kavit::bench::RunMovesTable(folders, blocks);
        return kavit::bench::RunSpeed(folders, only, !noTwin);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
