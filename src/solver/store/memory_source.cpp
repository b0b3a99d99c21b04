#include "solver/store/memory_source.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <sstream>

namespace kavit {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kMapFrom = std::size_t{1} << 18;  // smaller blocks come from the heap

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
    return a > b ? a - b : 0;
}

constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

struct GroupFiles {
    const char* Limit;
    const char* Used;
    const char* Reclaimable;  // word in memory.stat
};

std::uint64_t RoomInGroup(const std::string& folder, const GroupFiles& files) {
    const std::uint64_t limit = NumberIn(folder + files.Limit, kUnlimited);
    if (limit == kUnlimited) return kUnlimited;
    const std::uint64_t used = NumberIn(folder + files.Used, 0);
    const std::uint64_t reclaimable = NumberBehind(folder + "/memory.stat", files.Reclaimable, 0);
    return Less(limit, Less(used, reclaimable));
}

// The least room in the group and all groups above it.
std::uint64_t RoomUpwards(const std::string& mount, std::string group, const GroupFiles& files) {
    std::uint64_t room = kUnlimited;
    for (;;) {
        room = std::min(room, RoomInGroup(mount + group, files));
        const std::size_t slash = group.rfind('/');
        if (group.empty() || slash == std::string::npos) return room;
        group.resize(slash);
    }
}

class Machine final : public MemorySource {
  public:
    void* Take(std::size_t bytes) override {
        if (bytes < kMapFrom) return std::calloc(1, std::max<std::size_t>(bytes, 1));
        // Huge pages need their own alignment: map more and cut off both ends.
        if (bytes > std::numeric_limits<std::size_t>::max() - 2 * kHugePage) return nullptr;
        const std::size_t length = (bytes + kHugePage - 1) / kHugePage * kHugePage;
        void* raw = mmap(nullptr, length + kHugePage, PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (raw == MAP_FAILED) return nullptr;
        auto* begin = static_cast<std::byte*>(raw);
        const auto misplaced = reinterpret_cast<std::uintptr_t>(begin) % kHugePage;
        const std::size_t head = misplaced == 0 ? 0 : kHugePage - misplaced;
        if (head > 0) munmap(begin, head);
        munmap(begin + head + length, kHugePage - head);
        madvise(begin + head, length, MADV_HUGEPAGE);  // a wish; failure changes nothing
        return begin + head;
    }
    void Give(void* memory, std::size_t bytes) override {
        if (bytes < kMapFrom) {
            std::free(memory);
        } else {
            munmap(memory, Mapped(bytes));
        }
    }
    void Clear(void* memory, std::size_t bytes) override {
        // The kernel drops the pages that were touched and gives zeroed ones on the next touch.
        if (bytes < kMapFrom || madvise(memory, Mapped(bytes), MADV_DONTNEED) != 0)
            std::memset(memory, 0, bytes);
    }
    std::uint64_t Available() override { return AvailableMemory(""); }

  private:
    static std::size_t Mapped(std::size_t bytes) {
        return (bytes + kHugePage - 1) / kHugePage * kHugePage;
    }
};

}  // namespace

MemorySource& MachineMemory() {
    static Machine machine;  // no state: it only names the kernel
    return machine;
}

std::uint64_t AvailableMemory(const std::string& root) {
    const std::uint64_t kib = NumberBehind(root + "/proc/meminfo", "MemAvailable:", kUnlimited);
    std::uint64_t room = kib == kUnlimited ? kUnlimited : kib * 1024;
    std::ifstream groups(root + "/proc/self/cgroup");
    std::string line;
    while (std::getline(groups, line)) {
        const std::size_t first = line.find(':');
        const std::size_t second = line.find(':', first + 1);
        if (first == std::string::npos || second == std::string::npos) continue;
        const std::string kinds = line.substr(first + 1, second - first - 1);
        const std::string group = line.substr(second + 1);
        if (kinds.empty()) {
            room = std::min(room, RoomUpwards(root + "/sys/fs/cgroup", group,
                                              {"/memory.max", "/memory.current", "inactive_file"}));
        } else if (kinds.find("memory") != std::string::npos) {
            room = std::min(room, RoomUpwards(root + "/sys/fs/cgroup/memory", group,
                                              {"/memory.limit_in_bytes", "/memory.usage_in_bytes",
                                               "total_inactive_file"}));
        }
    }
    return room;
}

bool MemoryBlock::Take(MemorySource& source, std::size_t bytes) {
    Release();
    void* memory = source.Take(bytes);
    if (memory == nullptr) return false;
    source_ = &source;
    memory_ = memory;
    bytes_ = bytes;
    return true;
}

void MemoryBlock::Release() {
    if (memory_ != nullptr) source_->Give(memory_, bytes_);
    memory_ = nullptr;
    bytes_ = 0;
}

}  // namespace kavit
