#pragma once

#include <string>
#include <vector>

namespace kavit::bench {

// Prints, for every level whose fewest moves are known (our own, and those of a folder), what the
// search for the fewest moves of all takes: positions, offers, seconds with each number of threads,
// and how many times as long as the push search it is with the first. Returns the exit status: 1
// when an answer differs from the known one.
int RunFewestTable(const std::string& moreLevels, const std::vector<int>& threads);

}  // namespace kavit::bench
