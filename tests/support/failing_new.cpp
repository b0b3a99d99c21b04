#include "support/failing_new.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int callsLeft = 0;  // 0: never fails

}  // namespace

void* operator new(std::size_t bytes) {
    if (callsLeft > 0 && --callsLeft == 0) throw std::bad_alloc();
    void* memory = std::malloc(bytes > 0 ? bytes : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kavit::test {

FailingNew::FailingNew(int at) {
    callsLeft = at;
}

FailingNew::~FailingNew() {
    callsLeft = 0;
}

bool FailingNew::Failed() const {
    return callsLeft == 0;
}

}  // namespace kavit::test
