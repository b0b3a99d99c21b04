// One program for each target: KAVIT_FUZZ_TARGET is the target's name.

#include <cstddef>
#include <cstdint>

#include "fuzz/reader_targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kavit::test::KAVIT_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
    return 0;
}
