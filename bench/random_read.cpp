#include "random_read.h"

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <random>
#include <utility>

#include "solver/store/memory_source.h"

namespace kavit::bench {

double RandomReadNs(std::size_t bytes) {
    constexpr std::size_t kLine = 64;
    constexpr int kReads = 4000000;
    MemoryBlock block;
    if (!block.Take(MachineMemory(), bytes)) return 0;
    const std::size_t lines = bytes / kLine;
    const auto next = [&](std::size_t line) -> std::uint64_t& {
        return *reinterpret_cast<std::uint64_t*>(block.Data() + line * kLine);
    };
    // One cycle through all lines in random order (Sattolo's shuffle).
    std::mt19937_64 random(1);
    for (std::size_t i = 0; i < lines; ++i) next(i) = i;
    for (std::size_t i = lines - 1; i > 0; --i) std::swap(next(i), next(random() % i));
    std::uint64_t at = 0;
    const std::clock_t begin = std::clock();  // processor time, as for the searches
    for (int i = 0; i < kReads; ++i) at = next(at);
    const double spent = static_cast<double>(std::clock() - begin) * 1e9 / CLOCKS_PER_SEC;
    if (at > lines) std::puts("");  // never: keeps the reads alive
    return spent / kReads;
}

}  // namespace kavit::bench
