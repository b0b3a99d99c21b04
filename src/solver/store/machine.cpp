#include "solver/store/machine.h"

#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <sstream>
#include <vector>

namespace kavit {

namespace {

constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

// The number in a file, or `otherwise` ("max" and unreadable files among them).
std::uint64_t NumberIn(const std::string& path, std::uint64_t otherwise) {
    std::ifstream file(path);
    std::uint64_t number = 0;
    return file >> number ? number : otherwise;
}

// The number behind a word in a file of "word number" lines.
std::uint64_t NumberBehind(const std::string& path, const std::string& word,
                           std::uint64_t otherwise) {
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string first;
        std::uint64_t number = 0;
        if (words >> first >> number && first == word) return number;
    }
    return otherwise;
}

std::uint64_t Less(std::uint64_t a, std::uint64_t b) {
    return a - std::min(a, b);
}

// The folders of the group that this process is in for a kind of resource, and of all groups above
// it. Version 2 has one tree for all kinds, version 1 one for each.
struct GroupFolders {
    std::vector<std::string> Version1;
    std::vector<std::string> Version2;
};

GroupFolders FoldersFor(const std::string& root, const std::string& kind) {
    GroupFolders folders;
    std::ifstream groups(root + "/proc/self/cgroup");  // lines of number:kinds:group
    std::string line;
    while (std::getline(groups, line)) {
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (second == std::string::npos) continue;
        const std::string kinds = "," + line.substr(first + 1, second - first - 1) + ",";
        const bool version2 = kinds == ",,";
        if (!version2 && kinds.find("," + kind + ",") == std::string::npos) continue;
        const std::string mount = root + "/sys/fs/cgroup" + (version2 ? "" : "/" + kind);
        std::vector<std::string>& list = version2 ? folders.Version2 : folders.Version1;
        std::string group = line.substr(second + 1);
        for (;;) {
            list.push_back(mount + group);
            const std::size_t slash = group.rfind('/');
            if (slash == std::string::npos) break;
            group.resize(slash);
        }
    }
    return folders;
}

struct MemoryFiles {
    const char* Limit;
    const char* Used;
    const char* Reclaimable;  // word in memory.stat
};

std::uint64_t RoomInGroup(const std::string& folder, const MemoryFiles& files) {
    const std::uint64_t limit = NumberIn(folder + files.Limit, kUnlimited);
    if (limit == kUnlimited) return kUnlimited;
    const std::uint64_t used = NumberIn(folder + files.Used, 0);
    const std::uint64_t reclaimable = NumberBehind(folder + "/memory.stat", files.Reclaimable, 0);
    return Less(limit, Less(used, reclaimable));
}

// Processors' worth of time that a quota gives in each period, rounded up.
std::uint64_t Processors(std::uint64_t quota, std::uint64_t period) {
    if (quota == kUnlimited || period == 0) return kUnlimited;
    return quota / period + (quota % period == 0 ? 0 : 1);
}

std::uint64_t ProcessorsOfGroup2(const std::string& folder) {
    std::ifstream file(folder + "/cpu.max");  // "max period" or "quota period"
    std::uint64_t quota = 0;
    std::uint64_t period = 0;
    return file >> quota >> period ? Processors(quota, period) : kUnlimited;
}

std::uint64_t ProcessorsOfGroup1(const std::string& folder) {
    // Where there is no limit it says -1, which is the largest number when read as one without
    // sign.
    return Processors(NumberIn(folder + "/cpu.cfs_quota_us", kUnlimited),
                      NumberIn(folder + "/cpu.cfs_period_us", 0));
}

}  // namespace

std::uint64_t AvailableMemory(const std::string& root) {
    const std::uint64_t kib = NumberBehind(root + "/proc/meminfo", "MemAvailable:", kUnlimited);
    std::uint64_t room = kib == kUnlimited ? kUnlimited : kib * 1024;
    const GroupFolders folders = FoldersFor(root, "memory");
    for (const std::string& folder : folders.Version2)
        room = std::min(room,
                        RoomInGroup(folder, {"/memory.max", "/memory.current", "inactive_file"}));
    for (const std::string& folder : folders.Version1)
        room =
            std::min(room, RoomInGroup(folder, {"/memory.limit_in_bytes", "/memory.usage_in_bytes",
                                                "total_inactive_file"}));
    return room;
}

std::uint64_t ResidentMemory(const std::string& root) {
    std::ifstream file(root + "/proc/self/statm");  // in pages: size, resident, ...
    std::uint64_t size = 0;
    std::uint64_t resident = 0;
    if (!(file >> size >> resident)) return 0;
    return resident * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

int AffinityCount() {
    // A machine with more processors than the set holds refuses it; then a larger one is tried.
    for (std::size_t most = CPU_SETSIZE; most <= std::size_t{1} << 20; most *= 2) {
        std::vector<cpu_set_t> set(most / CPU_SETSIZE);
        const std::size_t bytes = set.size() * sizeof(cpu_set_t);
        if (sched_getaffinity(0, bytes, set.data()) == 0)
            return std::max(CPU_COUNT_S(bytes, set.data()), 1);
    }
    return 1;
}

int AvailableThreads(const std::string& root, int affinity) {
    auto threads = static_cast<std::uint64_t>(std::max(affinity, 1));
    const GroupFolders folders = FoldersFor(root, "cpu");
    for (const std::string& folder : folders.Version2)
        threads = std::min(threads, ProcessorsOfGroup2(folder));
    for (const std::string& folder : folders.Version1)
        threads = std::min(threads, ProcessorsOfGroup1(folder));
    return static_cast<int>(std::max<std::uint64_t>(threads, 1));
}

}  // namespace kavit
