#pragma once

#include <functional>

#include "fuzz/fuzz_case.h"

namespace kavit::test {

// A smaller case for which `fails` still holds: solves left out, settings made plain, boxes and
// goals taken away, floor walled up, one at a time, until nothing more can go or `most` cases have
// been tried.
FuzzCase Shrink(const FuzzCase& fuzzCase, const std::function<bool(const FuzzCase&)>& fails,
                int most = 4000);

}  // namespace kavit::test
