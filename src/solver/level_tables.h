#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kavit {

// A run of position indices; Top 0 means that it is empty.
struct LevelRun {
    std::int32_t Top = 0;
    std::int32_t End = 0;

    bool operator==(const LevelRun&) const = default;
};

// Per side and level (from 1, the start level) two runs: slot 1 was stored by the search, slot 2 by
// the optimizer. The tables grow with the search; 250 levels are there from the start.
struct LevelTables {
    using Table = std::vector<std::array<LevelRun, 2>>;  // [level][slot - 1]; level 0 is not used
    Table ForwTopEnd;
    Table BackTopEnd;

    // The run of a level, made when it is not there yet.
    static LevelRun& Run(Table& table, int level, int slot) {
        const auto index = static_cast<std::size_t>(level);
        if (table.size() <= index) table.resize(index + 1);
        return table[index][static_cast<std::size_t>(slot - 1)];
    }
    // The run of a level, empty when the level is not there.
    static LevelRun Get(const Table& table, int level, int slot) {
        const auto index = static_cast<std::size_t>(level);
        return index < table.size() ? table[index][static_cast<std::size_t>(slot - 1)] : LevelRun{};
    }
};

}  // namespace kavit
