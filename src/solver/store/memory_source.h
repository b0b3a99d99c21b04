#pragma once

#include <cstddef>
#include <cstdint>

namespace kavit {

// Where the store's memory comes from: the machine, or a test that lets an allocation fail.
class MemorySource {
  public:
    virtual ~MemorySource() = default;
    // Zeroed memory that begins at a multiple of 64, or nullptr.
    [[nodiscard]] virtual void* Take(std::size_t bytes) = 0;
    virtual void Give(void* memory, std::size_t bytes) = 0;
    // Makes the bytes zero again; costs what was used of them, not what was reserved.
    virtual void Clear(void* memory, std::size_t bytes) = 0;
    // Bytes that can be taken and really used without the kernel ending the process.
    [[nodiscard]] virtual std::uint64_t Available() = 0;
    // Bytes that this process really uses.
    [[nodiscard]] virtual std::uint64_t Resident() = 0;
};

// The machine's memory. Large blocks ask for huge pages, which spare most of the address
// translation misses of random reads; where there are none they work all the same.
[[nodiscard]] MemorySource& MachineMemory();

// A block that goes back to its source by itself.
class MemoryBlock {
  public:
    MemoryBlock() = default;
    ~MemoryBlock() { Release(); }
    MemoryBlock(const MemoryBlock&) = delete;
    MemoryBlock& operator=(const MemoryBlock&) = delete;

    // Releases what it holds and takes zeroed memory. False: nothing is held now.
    [[nodiscard]] bool Take(MemorySource& source, std::size_t bytes);
    void Release();
    void Clear() {
        if (memory_ != nullptr) source_->Clear(memory_, bytes_);
    }
    [[nodiscard]] std::byte* Data() const { return static_cast<std::byte*>(memory_); }
    [[nodiscard]] std::size_t Bytes() const { return bytes_; }

  private:
    MemorySource* source_ = nullptr;
    void* memory_ = nullptr;
    std::size_t bytes_ = 0;
};

}  // namespace kavit
