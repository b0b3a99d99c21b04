#pragma once

#include <iostream>
#include <string>

namespace kavit {

// A sentence on standard error, in one piece and under the program's name.
inline void Complain(const std::string& sentence) {
    std::cerr << "kavit-solve: " + sentence + "\n";
}

}  // namespace kavit
