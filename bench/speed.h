#pragma once

#include "cases.h"

namespace kavit::bench {

// Runs the list with the solver and with its plain twin, checks that both counted the same, and
// prints seconds, successors offered per second, their ratio, bytes per position and the cost of a
// successor in random reads. Returns the exit status: 1 when a count differs.
int RunSpeed(const Folders& folders, const std::string& only, bool withTwin);

// Prints one number made of all counts of the fingerprint list.
int RunFingerprint(const Folders& folders);

}  // namespace kavit::bench
