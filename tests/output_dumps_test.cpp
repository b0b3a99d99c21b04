#include <gtest/gtest.h>

#include "output/closing_block.h"
#include "output/dumps.h"
#include "output/number_text.h"

namespace kavit {
namespace {

TEST(Dumps, Levels) {
    LayerTables levels;
    LayerTables::Run(levels.ForwTopEnd, 1, 1) = {1, 1};
    LayerTables::Run(levels.ForwTopEnd, 2, 1) = {4, 12345678};
    LayerTables::Run(levels.ForwTopEnd, 2, 2) = {30, 31};
    LayerTables::Run(levels.ForwTopEnd, 3, 2) = {40, 41};  // by the optimizer alone
    LayerTables::Run(levels.ForwTopEnd, 5, 1) = {50, 51};  // behind the first empty level
    LayerTables::Run(levels.BackTopEnd, 1, 1) = {2, 3};
    SearchCounters counters;
    counters.LastSide = 2;
    counters.OptimumPushes = 97;
    counters.ForwDepth = 40;
    counters.BackDepth = 57;
    counters.BucketCnt = 4321;
    EXPECT_EQ(LevelsText("abc_more", levels, counters),
              "abc_more:  ForwTopEnd  LastSea: 2  OptimumPushes: 97  Sea1: 40  Sea2: 57\r\n"
              "\r\n"
              "SeaCnt = 001  Top1 = 0000001  End1 = 0000001\r\n"
              "SeaCnt = 002  Top1 = 0000004  End1 = 12345678  Top2 = 0000030  End2 = 0000031\r\n"
              "SeaCnt = 003  Top1 = 0000000  End1 = 0000000  Top2 = 0000040  End2 = 0000041\r\n"
              "\r\n"
              "\r\n"
              "abc_more:  BackTopEnd\r\n"
              "\r\n"
              "SeaCnt = 001  Top1 = 0000002  End1 = 0000003\r\n"
              "\r\n"
              "Last BucketCnt: 4321\r\n");
    EXPECT_EQ(LevelsText("", LayerTables{}, SearchCounters{}),
              ":  ForwTopEnd  LastSea: 0  OptimumPushes: 0  Sea1: 0  Sea2: 0\r\n\r\n\r\n\r\n"
              ":  BackTopEnd\r\n\r\n\r\nLast BucketCnt: 0\r\n");
}

TEST(Dumps, Position) {
    EXPECT_EQ(PositionText(7, {11, 3, 6, 45, {24, 45, 123}, 5}),
              " Bucket: ( 0007)  [ 011 0003 045 006] [ 24 45 123 05]\r\n");
    EXPECT_EQ(PositionText(1234567, {1, -1, 12345, 200, {}, 20}),
              " Bucket: ( 1234567)  [ 001 -0001 200 12345] [ 20]\r\n");
}

TEST(Dumps, ClosingBlock) {
    const SearchCounters counters{.BucketCnt = 1, .SeaPhase = 2, .HashSize = 1};
    EXPECT_EQ(ClosingBlock(counters, 0),
              "layers      0 (0 forward, 0 backward)\n"
              "positions   1 stored of 0 (0 %), 0 offered\n"
              "duplicates  0 improved, 0 dropped\n"
              "hash table  default, 50.0 % full, 0 re-probes (0.00 an offer)\n"
              "memory      0.0 bytes a position\n"
              "seconds     0.0000 search, 0.0000 moves pass\n");
    EXPECT_EQ(BytesText(1024) + BytesText(10240), "1.0 KB10 KB");
    EXPECT_EQ(BytesText(std::uint64_t{1} << 60), "1048576 TB");
}

TEST(Dumps, FileNames) {
    EXPECT_EQ(LevelsFileName("out/run", "abc"), "out/run_abc.txt");
    EXPECT_EQ(PositionFileName("abc", 12), "abc_Dist.txt");
    EXPECT_EQ(PositionFileName("abc", 11), "abc.txt");
}

}  // namespace
}  // namespace kavit
