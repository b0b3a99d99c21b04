#include "output/closing_block.h"

#include <cstdio>

#include "output/number_text.h"
#include "output/solve_report.h"

namespace kavit {

namespace {

std::string Decimals(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string Percent(std::int64_t part, std::int64_t whole) {
    if (whole <= 0) return "0 %";
    return Decimals(100.0 * static_cast<double>(part) / static_cast<double>(whole), 1) + " %";
}

}  // namespace

std::string ClosingBlock(const SearchCounters& c, std::int64_t numPos) {
    const std::int64_t offered = c.HashCnt;
    const std::int64_t reprobes = c.RHashCnt;
    const std::int64_t slots = c.HashSize + 1;
    std::string text = "layers      " + B(c.SeaSteps) + " (" + B(c.ForwDepth) + " forward, " +
                       B(c.BackDepth) + " backward)\n";
    text += "positions   " + B(c.BucketCnt) + " stored of " + B(numPos) + " (" +
            Percent(c.BucketCnt, numPos) + "), " + B(offered) + " offered\n";
    text += "duplicates  " + B(c.PosChanged) + " improved, " + B(c.PosDiscarded) + " dropped\n";
    text += "hash table  " + std::string(HashName(c.HashCase)) + ", " +
            Percent(c.BucketCnt, slots) + " full, " + B(reprobes) + " re-probes (" +
            Decimals(offered > 0 ? static_cast<double>(reprobes) / static_cast<double>(offered) : 0,
                     2) +
            " an offer)\n";
    if (c.FewestOffers > 0) {
        text +=
            "for moves   " + B(c.FewestPositions) + " stored, " + B(c.FewestOffers) + " offered\n";
    }
    text += "memory      " + Decimals(c.BytesPerPosition, 1) + " bytes a position\n";
    text += "seconds     " + Decimals(c.SearchSeconds, 4) + " search";
    if (c.SeaPhase > 1) {
        text += ", " + Decimals(c.PassSeconds, 4) + " moves pass";
        if (c.ProofSeconds > 0) text += ", " + Decimals(c.ProofSeconds, 4) + " proof";
        if (c.FewestSeconds > 0) text += ", " + Decimals(c.FewestSeconds, 4) + " fewest moves";
    }
    return text + "\n";
}

}  // namespace kavit
