// kavit-corpus-tables: writes the two tables of a folder of levels anew, by the plain twin and by
// the exhaustive search over single steps alone. The solver has no part in it.

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "level/level_reader.h"
#include "support/corpus.h"
#include "support/plain_oracle.h"

namespace {

using namespace kavit;
using namespace kavit::test;

struct Item {
    std::string Level;
    Board Cells;
    int Refused = 0;      // the number of the reader's refusal
    bool Solved = false;  // by the twin, with any setting
};

std::vector<Item> ItemsOf(const std::filesystem::path& folder) {
    std::vector<Item> items;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".xsb") continue;
        Item& item = items.emplace_back();
        item.Level = entry.path().stem().string();
        item.Refused = static_cast<int>(ReadLevelFile(entry.path().string(), item.Cells, {}).Code);
    }
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.Level < b.Level; });
    return items;
}

void WriteCounts(std::vector<Item>& items, std::ostream& table) {
    table << kCountTitles << '\n';
    for (Item& item : items) {
        std::cerr << item.Level << std::flush;
        for (const TableSetting& setting : kTableSettings) {
            Figures figures;
            figures.Result = item.Refused;
            if (item.Refused == 0) {
                Question asked;
                asked.Level = item.Cells;
                setting.ApplyTo(asked);
                PlainTwin twin(setting.NumPos, asked.Blocks, 0, 0, 0);
                figures = Ask(twin, asked);
                item.Solved = item.Solved || figures.Result == 0;
            }
            table << item.Level << '\t' << setting.OptLevel << '\t' << setting.SeaType << '\t'
                  << setting.HashCase << '\t' << setting.NumPos << '\t' << CountColumns(figures)
                  << '\n';
            std::cerr << ' ' << setting.Name << std::flush;
        }
        std::cerr << '\n';
    }
}

void WriteMoves(const std::vector<Item>& items, std::size_t states, std::ostream& table) {
    table << kMovesTitles << '\n';
    for (const Item& item : items) {
        if (!item.Solved) continue;
        const OracleAnswer pushes = AskOracle(item.Cells, states, OracleAim::FewestPushes);
        const OracleAnswer moves = AskOracle(item.Cells, states, OracleAim::FewestMoves);
        const auto column = [&table](const OracleAnswer& answer, int number) {
            table << '\t';
            if (answer.Verdict == OracleVerdict::Solvable) {
                table << number;
            } else {
                table << '-';
            }
        };
        table << item.Level;
        column(pushes, pushes.Pushes);
        column(pushes, pushes.Moves);
        column(moves, moves.Moves);
        table << '\n';
        std::cerr << item.Level << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: kavit-corpus-tables FOLDER [STATES]\n"
                     "Writes expected.tsv and moves.tsv into FOLDER for the .xsb files in it; the\n"
                     "exhaustive search gives up beyond STATES (35000000, some 100 bytes each).\n";
        return 1;
    }
    try {
        const std::filesystem::path folder = argv[1];
        std::vector<Item> items = ItemsOf(folder);
        std::ofstream counts(folder / "expected.tsv");
        WriteCounts(items, counts);
        counts.close();
        std::ofstream moves(folder / "moves.tsv");
        WriteMoves(items, argc > 2 ? std::stoul(argv[2]) : 35000000, moves);
        moves.close();
        if (counts && moves) return 0;
        std::cerr << "kavit-corpus-tables: cannot write into " << folder << '\n';
    } catch (const std::exception& fault) {
        std::cerr << "kavit-corpus-tables: " << fault.what() << '\n';
    }
    return 1;
}
