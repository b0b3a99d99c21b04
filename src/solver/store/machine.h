#pragma once

#include <cstdint>
#include <string>

// What the machine lets this process use. `root` is "" for this machine; a test gives a folder that
// holds the same files. Limits of control groups hold for a group and for all groups below it, so
// each is looked for in the process's own group and in every one above.

namespace kavit {

// Bytes that can be taken and really used: the least of MemAvailable and, for every control group,
// its limit less its use (inactive file pages do not count as used). The largest number where
// nothing can be read.
[[nodiscard]] std::uint64_t AvailableMemory(const std::string& root);

// Bytes of this process that are in memory now; 0 where it cannot be read.
[[nodiscard]] std::uint64_t ResidentMemory(const std::string& root);

// The processors that the calling thread may run on.
[[nodiscard]] int AffinityCount();

// How many threads are worth starting: `affinity`, less where a control group gives the process
// less processor time; a part of a processor counts as one. At least 1.
[[nodiscard]] int AvailableThreads(const std::string& root, int affinity = AffinityCount());

}  // namespace kavit
