#include "solver/store/memory_source.h"

#include <sys/mman.h>

#include <cassert>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "solver/store/machine.h"

namespace kavit {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kLine = 64;
constexpr std::size_t kMapFrom = std::size_t{1} << 18;  // smaller blocks come from the heap

class Machine final : public MemorySource {
  public:
    void* Take(std::size_t bytes) override {
        assert(bytes > 0);
        if (FromHeap(bytes)) {
            const std::size_t whole = (bytes + kLine) / kLine * kLine;
            void* memory = std::aligned_alloc(kLine, whole);
            return memory == nullptr ? nullptr : std::memset(memory, 0, whole);
        }
        // Huge pages need their own alignment: map more and cut off both ends.
        assert(bytes <= std::numeric_limits<std::size_t>::max() - 2 * kHugePage);
        const std::size_t length = Mapped(bytes);
        void* raw = mmap(nullptr, length + kHugePage, PROT_READ | PROT_WRITE,
                         MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (raw == MAP_FAILED) return nullptr;
        auto* begin = static_cast<std::byte*>(raw);
        const auto misplaced = reinterpret_cast<std::uintptr_t>(begin) % kHugePage;
        const std::size_t head = (kHugePage - misplaced) % kHugePage;
        assert(head < kHugePage);  // something is left to cut off behind
        if (head > 0) munmap(begin, head);
        munmap(begin + head + length, kHugePage - head);
        assert(reinterpret_cast<std::uintptr_t>(begin + head) % kHugePage == 0);
        madvise(begin + head, length, MADV_HUGEPAGE);  // a wish; failure changes nothing
        return begin + head;
    }
    void Give(void* memory, std::size_t bytes) override {
        assert(memory != nullptr);
        if (FromHeap(bytes)) {
            std::free(memory);
        } else {
            munmap(memory, Mapped(bytes));
        }
    }
    void Clear(void* memory, std::size_t bytes) override {
        // The kernel drops the pages that were touched and gives zeroed ones on the next touch.
        if (FromHeap(bytes) || madvise(memory, Mapped(bytes), MADV_DONTNEED) != 0)
            std::memset(memory, 0, bytes);
    }
    std::uint64_t Available() override { return AvailableMemory(""); }
    std::uint64_t Resident() override { return ResidentMemory(""); }

  private:
    static bool FromHeap(std::size_t bytes) { return bytes < kMapFrom; }
    static std::size_t Mapped(std::size_t bytes) {
        return (bytes + kHugePage - 1) / kHugePage * kHugePage;
    }
};

}  // namespace

MemorySource& MachineMemory() {
    static Machine machine;  // no state: it only names the kernel
    return machine;
}

bool MemoryBlock::Take(MemorySource& source, std::size_t bytes) {
    assert(memory_ == nullptr);
    void* memory = source.Take(bytes);
    if (memory == nullptr) return false;
    assert(reinterpret_cast<std::uintptr_t>(memory) % kLine == 0);
    source_ = &source;
    memory_ = memory;
    bytes_ = bytes;
    return true;
}

void MemoryBlock::Release() {
    assert((memory_ == nullptr) == (bytes_ == 0));
    if (memory_ != nullptr) source_->Give(memory_, bytes_);
    memory_ = nullptr;
    bytes_ = 0;
}

}  // namespace kavit
