// The hash tables: what is in the Mixed one is found, and a look costs few lines; no answer depends
// on the table.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "solver/store/mixed_table.h"
#include "solver/store/slot_table.h"
#include "solver/store/store_size.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

// A table for numPos positions; where a position is found it must be the one with this mix.
class Filled {
  public:
    explicit Filled(std::int64_t numPos)
        : Lines(MixedTable::LinesFor(numPos)), Table(Lines.data(), Lines.size()) {}

    // The position with exactly this mix, 0 when there is none; the offer is left where it stands.
    std::int32_t Find(Offer& offer) const {
        for (;;) {
            const std::int32_t pos = Table.Candidate(offer);
            if (pos == 0 || mixes_[static_cast<std::size_t>(pos) - 1] == offer.Mix) return pos;
            Table.Pass(offer);
        }
    }
    Offer At(std::uint64_t mix) const {
        Offer offer;
        offer.Mix = mix;
        Table.Home(offer, nullptr);
        return offer;
    }
    std::int32_t Find(std::uint64_t mix) const {
        Offer offer = At(mix);
        return Find(offer);
    }
    // Stores one more, whether or not it is there.
    void Store(std::uint64_t mix) {
        Offer offer = At(mix);
        while (Find(offer) != 0) Table.Pass(offer);
        mixes_.push_back(mix);
        Table.Insert(offer, static_cast<std::int32_t>(mixes_.size()));
    }
    std::int32_t Count() const { return static_cast<std::int32_t>(mixes_.size()); }

    std::vector<MixedTable::Line> Lines;
    MixedTable Table;

  private:
    std::vector<std::uint64_t> mixes_;
};

TEST(MixedTable, ALookTakesFewLines) {
    constexpr std::int32_t numPos = 960000;
    Filled filled(numPos);
    std::mt19937_64 random(1);
    for (int i = 0; i < numPos; ++i) filled.Store(random());
    EXPECT_NEAR(static_cast<double>(numPos) / static_cast<double>(filled.Table.Places()), 0.8,
                1e-4);
    std::int64_t extra = 0;
    std::mt19937_64 again(1);
    for (std::int32_t pos = 1; pos <= numPos; ++pos) {
        Offer offer = filled.At(again());
        ASSERT_EQ(filled.Find(offer), pos);
        extra += offer.Reprobes;
    }
    EXPECT_LE(static_cast<double>(extra) / numPos, 0.10);
    extra = 0;
    for (int i = 0; i < numPos; ++i) {
        Offer offer = filled.At(again());
        ASSERT_EQ(filled.Find(offer), 0);
        extra += offer.Reprobes;
    }
    EXPECT_LE(static_cast<double>(extra) / numPos, 0.06);
}

// As full as it may get, with keys that all want the same line, the same fingerprint or the same
// bit, and with every key stored twice.
TEST(MixedTable, FullTablesFindAll) {
    const struct {
        const char* Name;
        std::uint64_t Factor, Added;
        int Copies;
    } cases[] = {
        {"first line", 1, 0, 1},
        {"last line, from where paths go on at the first", 1, std::uint64_t{0xffffffff} << 32, 1},
        {"one fingerprint", 0x100, 0, 1},
        {"one line and one fingerprint, twice", 0x10000, 0x7700, 2},
        {"spread", 0x9e3779b97f4a7c15U, 1, 1},
        {"spread, twice", 0x9e3779b97f4a7c15U, 1, 2},
    };
    for (const auto& c : cases) {
        for (std::int32_t numPos = 2; numPos <= 60; numPos += 2) {
            SCOPED_TRACE(std::string(c.Name) + " " + std::to_string(numPos));
            Filled filled(numPos);
            const auto mix = [&](int key) {
                return static_cast<std::uint64_t>(key) * c.Factor + c.Added;
            };
            const int keys = numPos / c.Copies;
            for (int copy = 0; copy < c.Copies; ++copy)
                for (int key = 0; key < keys; ++key) filled.Store(mix(key));
            for (int key = 0; key < keys; ++key) {
                Offer offer = filled.At(mix(key));
                for (int copy = 0; copy < c.Copies; ++copy) {
                    EXPECT_EQ(filled.Find(offer), copy * keys + key + 1);
                    filled.Table.Pass(offer);
                }
                EXPECT_EQ(filled.Find(offer), 0);
            }
            EXPECT_EQ(filled.Find(mix(keys)), 0);
            std::int32_t taken = 0;
            for (std::int64_t place = 0; place < filled.Table.Places(); ++place)
                taken += filled.Table.PlaceAt(place) > 0 ? 1 : 0;
            EXPECT_EQ(taken, filled.Count());
        }
    }
}

// An offer that has been peeked sees what is stored before its turn, in a full line, too.
TEST(MixedTable, WhatIsStoredMeanwhileIsSeen) {
    for (const int before : {0, 5, 11, 12, 13, 24}) {
        Filled filled(60);
        for (int i = 0; i < before; ++i) filled.Store(static_cast<std::uint64_t>(i) * 0x101);
        Offer offer = filled.At(0x101 * 100);
        EXPECT_EQ(filled.Find(offer), 0);
        filled.Store(0x101 * 100);
        EXPECT_EQ(filled.Find(offer), before + 1) << before;
    }
}

TEST(MixedTable, ComparesAllPlacesOfALine) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 1000; ++i) {
        MixedTable::Line line{};
        for (std::uint8_t& print : line.Print) print = static_cast<std::uint8_t>(random() % 4);
        line.Passed = 0x02020202;  // lies behind the fingerprints
        for (std::uint8_t print = 0; print < 4; ++print)
            ASSERT_EQ(MixedTable::PlacesWith(line, print),
                      MixedTable::PlacesWithOneByOne(line, print));
    }
}

// The optimizer and its strings, too: all that the user gets is the same with either table.
TEST(HashTables, MixedGivesWhatDefaultGives) {
    Solver solver;
    FuzzSolve solve;
    bool special = true;
    for (const char* name : {"02-corner-shop", "03-two-rooms", "04-warehouse", "05-crossing"}) {
        solve.Ask.Level = BoardOfFile(KAVIT_EXAMPLES_FOLDER "/" + std::string(name) + ".xsb");
        solve.Ask.OptSpecial = special = !special;
        for (solve.Ask.OptLevel = 0; solve.Ask.OptLevel < 4; ++solve.Ask.OptLevel) {
            solve.Ask.HashCase = 0;
            const std::string plain = WithoutTable(SolveText(solver, solve));
            solve.Ask.HashCase = kMixed;
            EXPECT_EQ(WithoutTable(SolveText(solver, solve)), plain) << solve.Ask.Text();
        }
    }
}

// Which table answers where none is asked for, and that one asked for is obeyed at any size.
TEST(HashTables, TableByTheSizeOfTheStore) {
    const struct {
        std::int64_t NumPos;
        std::optional<HashCase> Asked;
        HashCase InForce;
        std::int64_t HashSize;
        double Bytes;
    } cases[] = {
        {100, std::nullopt, HashCase::Default, 127, 18.12},
        {100, HashCase::Mixed, HashCase::Mixed, 131, 20.04},
        {8000000, std::nullopt, HashCase::Default, 9600037, 17.8},
        {8000001, std::nullopt, HashCase::Mixed, 10000007, 19.67},
        {8000001, HashCase::Case2, HashCase::Case2, 9600037, 17.8},
    };
    for (const auto& c : cases) {
        Solver solver;
        ASSERT_TRUE(solver.ApplySizes({c.NumPos, 4, 300}).Ok);
        SearchLevel(solver, BoardOf(kEasy), {.HashCase = c.Asked});
        EXPECT_EQ(solver.Counters().HashCase, c.InForce) << c.NumPos;
        EXPECT_EQ(solver.Counters().HashSize, c.HashSize) << c.NumPos;
        EXPECT_NEAR(solver.Counters().BytesPerPosition, c.Bytes, 0.01) << c.NumPos;
    }
}

// The described tables end where their prime test does; Mixed goes on.
TEST(HashTables, DescribedTablesHaveAnEnd) {
    PrimeTable primes;
    EXPECT_EQ(SlotTable::SizeFor(SlotTable::kMostPositions, primes), 1073676287);
    EXPECT_THROW((void)SlotTable::SizeFor(SlotTable::kMostPositions + 1, primes), SolverFault);
}

TEST(StoreSize, BytesAndPositions) {
    const struct {
        std::int64_t NumPos, Blocks;
        double BytesEach;
    } cases[] = {
        {1, 8, 114},           {10, 8, 33.1},          {4000000, 8, 23.67},
        {200000000, 8, 23.67}, {2147483647, 8, 23.67}, {4000000, 20, 35.67},
    };
    for (const auto& c : cases) {
        const std::uint64_t bytes = BytesFor(c.NumPos, c.Blocks);
        EXPECT_NEAR(static_cast<double>(bytes) / static_cast<double>(c.NumPos), c.BytesEach, 0.01);
        EXPECT_EQ(PositionsFor(bytes, c.Blocks), c.NumPos);
        EXPECT_EQ(PositionsFor(bytes - 1, c.Blocks), c.NumPos - 1);
    }
    EXPECT_EQ(PositionsFor(std::uint64_t{1} << 50, 8), 2147483647);
    constexpr std::uint64_t kMib = std::uint64_t{1} << 20;
    for (const auto& [available, most] : std::vector<std::pair<std::uint64_t, std::uint64_t>>{
             {0, 0}, {64, 64}, {100, 64}, {128, 64}, {129, 65}, {1000, 936}})
        EXPECT_EQ(MostStoreBytes(available * kMib), most * kMib) << available;
}

}  // namespace
}  // namespace kavit::test
