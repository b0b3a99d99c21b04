// What the machine says it has, read off a folder with the files of one.

#include "solver/store/machine.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <filesystem>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "support/temp_folder.h"

namespace kavit::test {
namespace {

struct File {
    const char* Path;
    std::string Text;
};

void WriteAll(const TempFolder& root, const std::vector<File>& files) {
    for (const File& file : files) {
        std::filesystem::create_directories(
            std::filesystem::path(root.Path(file.Path)).parent_path());
        root.Write(file.Path, file.Text);
    }
}

TEST(Machine, Memory) {
    constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();
    const std::string meminfo = "MemTotal: 9000 kB\nMemFree: 10 kB\nMemAvailable:  1000 kB\n";
    const struct {
        const char* Name;
        std::vector<File> Files;
        std::uint64_t Bytes;
    } cases[] = {
        {"nothing can be read", {}, kAll},
        {"no group", {{"proc/meminfo", meminfo}}, 1024000},
        {"a broken file", {{"proc/meminfo", "MemAvailable: much\n"}}, kAll},
        {"version 2: limit less use, inactive pages given back",
         {{"proc/meminfo", meminfo},
          {"proc/self/cgroup", "0::/a/b\n"},
          {"sys/fs/cgroup/a/b/memory.max", "500000\n"},
          {"sys/fs/cgroup/a/b/memory.current", "200000\n"},
          {"sys/fs/cgroup/a/b/memory.stat", "anon 1\ninactive_file 50000\n"}},
         350000},
        {"version 2: the group above is tighter",
         {{"proc/meminfo", meminfo},
          {"proc/self/cgroup", "0::/a/b\n"},
          {"sys/fs/cgroup/a/b/memory.max", "max\n"},
          {"sys/fs/cgroup/a/memory.max", "300000\n"},
          {"sys/fs/cgroup/a/memory.current", "100000\n"}},
         200000},
        {"version 2: seen from inside, the limit is at the root",
         {{"proc/meminfo", meminfo},
          {"proc/self/cgroup", "0::/\n"},
          {"sys/fs/cgroup/memory.max", "400000\n"},
          {"sys/fs/cgroup/memory.current", "500000\n"}},
         0},
        {"version 1",
         {{"proc/meminfo", meminfo},
          {"proc/self/cgroup", "no line\n7:cpu,cpuacct:/x\n4:memory:/job\n"},
          {"sys/fs/cgroup/memory/job/memory.limit_in_bytes", "600000\n"},
          {"sys/fs/cgroup/memory/job/memory.usage_in_bytes", "100000\n"},
          {"sys/fs/cgroup/memory/job/memory.stat", "total_inactive_file 30000\n"},
          {"sys/fs/cgroup/memory/memory.limit_in_bytes", "9223372036854771712\n"}},
         530000},
        {"a limit above what the machine has",
         {{"proc/meminfo", meminfo},
          {"proc/self/cgroup", "0::/a\n"},
          {"sys/fs/cgroup/a/memory.max", "999999999\n"}},
         1024000},
    };
    for (const auto& c : cases) {
        const TempFolder root;
        WriteAll(root, c.Files);
        EXPECT_EQ(AvailableMemory(root.Path()), c.Bytes) << c.Name;
    }
}

TEST(Machine, Threads) {
    const std::string inGroups = "0::/a/b\n";
    const struct {
        const char* Name;
        std::vector<File> Files;
        int Affinity, Threads;
    } cases[] = {
        {"nothing can be read", {}, 6, 6},
        {"no processor", {}, 0, 1},
        {"version 2: a quota of two",
         {{"proc/self/cgroup", inGroups}, {"sys/fs/cgroup/a/b/cpu.max", "200000 100000\n"}},
         6,
         2},
        {"version 2: half a processor more",
         {{"proc/self/cgroup", inGroups}, {"sys/fs/cgroup/a/b/cpu.max", "250000 100000\n"}},
         6,
         3},
        {"version 2: a tenth of one",
         {{"proc/self/cgroup", inGroups}, {"sys/fs/cgroup/a/b/cpu.max", "10000 100000\n"}},
         6,
         1},
        {"version 2: the group above is tighter",
         {{"proc/self/cgroup", inGroups},
          {"sys/fs/cgroup/a/b/cpu.max", "max 100000\n"},
          {"sys/fs/cgroup/a/cpu.max", "400000 100000\n"},
          {"sys/fs/cgroup/cpu.max", "500000 100000\n"}},
         6,
         4},
        {"a quota above what the process may run on",
         {{"proc/self/cgroup", inGroups}, {"sys/fs/cgroup/a/b/cpu.max", "800000 100000\n"}},
         6,
         6},
        {"broken files",
         {{"proc/self/cgroup", "0::/a\nx\n1:cpu\n"}, {"sys/fs/cgroup/a/cpu.max", "200000 0\n"}},
         6,
         6},
        {"version 1",
         {{"proc/self/cgroup", "3:cpuset:/c\n7:cpu,cpuacct:/x\n"},
          {"sys/fs/cgroup/cpu/x/cpu.cfs_quota_us", "300000\n"},
          {"sys/fs/cgroup/cpu/x/cpu.cfs_period_us", "100000\n"},
          {"sys/fs/cgroup/cpu/cpu.cfs_quota_us", "-1\n"},
          {"sys/fs/cgroup/cpu/cpu.cfs_period_us", "100000\n"},
          {"sys/fs/cgroup/cpu/c/cpu.cfs_quota_us", "100000\n"},
          {"sys/fs/cgroup/cpu/c/cpu.cfs_period_us", "100000\n"}},
         6,
         3},
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
    WriteAll(root, {{"proc/self/statm", "900 7 3 1 0 2 0\n"}});
    EXPECT_EQ(ResidentMemory(root.Path()) % 7, 0U);
    EXPECT_GE(ResidentMemory(root.Path()), 7U * 4096);
    EXPECT_LT(ResidentMemory(root.Path()), 8U * 65536);
}

}  // namespace
}  // namespace kavit::test
