#pragma once

namespace kavit {

// The Examples menu: entries 1 to 3 and 5 to 8 (4 and 9 are separators), read from the folder of
// the current level. 10 is "Other" and 11 "Next".
struct Example {
    int Index;
    const char* Caption;
    const char* File;
};

inline constexpr Example kExamples[] = {
    {1, "&First steps", "01-first-steps.xsb"}, {2, "&Corner shop", "02-corner-shop.xsb"},
    {3, "&Two rooms", "03-two-rooms.xsb"},     {5, "&Warehouse", "04-warehouse.xsb"},
    {6, "C&rossing", "05-crossing.xsb"},       {7, "&Long way", "06-long-way.xsb"},
    {8, "&Masterpiece", "07-masterpiece.xsb"},
};
inline constexpr int kExampleOther = 10;
inline constexpr int kExampleNext = 11;

}  // namespace kavit
