// What the machine says it has, read off a folder with the files of one.

#include "solver/store/machine.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string>
#include <thread>

#include "support/temp_folder.h"

namespace kavit::test {
namespace {

// "FILE TEXT;FILE TEXT": "@" stands for the folder of the groups, "|" for a line end in a file.
void WriteAll(const TempFolder& root, const std::string& files) {
    std::istringstream lines(files);
    for (std::string name, text; lines >> name && std::getline(lines >> std::ws, text, ';');) {
        std::replace(text.begin(), text.end(), '|', '\n');
        if (name[0] == '@') name.replace(0, 1, "sys/fs/cgroup");
        std::filesystem::create_directories(std::filesystem::path(root.Path(name)).parent_path());
        root.Write(name, text + "\n");
    }
}

TEST(Machine, Memory) {
    constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();
    const std::string meminfo =
        "proc/meminfo MemTotal: 9000 kB|MemFree: 10 kB|MemAvailable:  1000 kB;";
    const std::string inGroups = meminfo + "proc/self/cgroup 0::/a/b;";
    const struct {
        const char* Name;
        std::string Files;
        std::uint64_t Bytes;
    } cases[] = {
        {"nothing can be read", "", kAll},
        {"no group", meminfo, 1024000},
        {"a broken file", "proc/meminfo MemAvailable: much", kAll},
        {"version 2: limit less use, inactive pages given back",
         inGroups + "@/a/b/memory.max 500000;@/a/b/memory.current 200000;"
                    "@/a/b/memory.stat anon 1|inactive_file 50000",
         350000},
        {"version 2: the group above is tighter",
         inGroups + "@/a/b/memory.max max;@/a/memory.max 300000;@/a/memory.current 100000", 200000},
        {"version 2: seen from inside, the limit is at the root",
         meminfo + "proc/self/cgroup 0::/;@/memory.max 400000;@/memory.current 500000", 0},
        {"version 1",
         meminfo + "proc/self/cgroup no line|7:cpu,cpuacct:/x|4:memory:/job;"
                   "@/memory/job/memory.limit_in_bytes 600000;"
                   "@/memory/job/memory.usage_in_bytes 100000;"
                   "@/memory/job/memory.stat total_inactive_file 30000;"
                   "@/memory/memory.limit_in_bytes 9223372036854771712",
         530000},
        {"a limit above what the machine has", inGroups + "@/a/memory.max 999999999", 1024000},
    };
    for (const auto& c : cases) {
        const TempFolder root;
        WriteAll(root, c.Files);
        EXPECT_EQ(AvailableMemory(root.Path()), c.Bytes) << c.Name;
    }
}

TEST(Machine, Threads) {
    const std::string inGroups = "proc/self/cgroup 0::/a/b;";
    const struct {
        const char* Name;
        std::string Files;
        int Affinity, Threads;
    } cases[] = {
        {"nothing can be read", "", 6, 6},
        {"no processor", "", 0, 1},
        {"version 2: a quota of two", inGroups + "@/a/b/cpu.max 200000 100000", 6, 2},
        {"version 2: half a processor more", inGroups + "@/a/b/cpu.max 250000 100000", 6, 3},
        {"version 2: a tenth of one", inGroups + "@/a/b/cpu.max 10000 100000", 6, 1},
        {"version 2: the group above is tighter",
         inGroups + "@/a/b/cpu.max max 100000;@/a/cpu.max 400000 100000;@/cpu.max 500000 100000", 6,
         4},
        {"a quota above what the process may run on", inGroups + "@/a/b/cpu.max 800000 100000", 6,
         6},
        {"broken files", "proc/self/cgroup 0::/a|x|1:cpu;@/a/cpu.max 200000 0", 6, 6},
        {"version 1",
         "proc/self/cgroup 3:cpuset:/c|7:cpu,cpuacct:/x;"
         "@/cpu/x/cpu.cfs_quota_us 300000;@/cpu/x/cpu.cfs_period_us 100000;"
         "@/cpu/cpu.cfs_quota_us -1;@/cpu/cpu.cfs_period_us 100000;"
         "@/cpu/c/cpu.cfs_quota_us 100000;@/cpu/c/cpu.cfs_period_us 100000",
         6, 3},
    };
    for (const auto& c : cases) {
        const TempFolder root;
        WriteAll(root, c.Files);
        EXPECT_EQ(AvailableThreads(root.Path(), c.Affinity), c.Threads) << c.Name;
    }
}

// On one processor only, this thread counts one, whatever the machine has.
TEST(Machine, AffinityOfTheThread) {
    const int all = AffinityCount();
    EXPECT_GE(all, 1);
    int alone = 0;
    std::thread([&alone] {
        cpu_set_t one;
        CPU_ZERO(&one);
        CPU_SET(static_cast<std::size_t>(sched_getcpu()), &one);
        alone = sched_setaffinity(0, sizeof one, &one) == 0 ? AffinityCount() : -1;
    }).join();
    EXPECT_EQ(alone, 1);
    EXPECT_EQ(AffinityCount(), all);
}

TEST(Machine, Resident) {
    const TempFolder root;
    EXPECT_EQ(ResidentMemory(root.Path()), 0U);
    WriteAll(root, "proc/self/statm 900 7 3 1 0 2 0");
    EXPECT_EQ(ResidentMemory(root.Path()) % 7, 0U);
    EXPECT_GE(ResidentMemory(root.Path()), 7U * 4096);
    EXPECT_LT(ResidentMemory(root.Path()), 8U * 65536);
}

}  // namespace
}  // namespace kavit::test
