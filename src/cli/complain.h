#pragma once

#include <iostream>
#include <string>

namespace kavit {

// A sentence on standard error, in one piece and under the program's name.
inline void Complain(const std::string& sentence) {
    std::cerr << "kavit-solve: " + sentence + "\n";
}

// The same about one level.
inline void Complain(const std::string& level, const std::string& sentence) {
    Complain(level + ": " + sentence);
}

}  // namespace kavit
