#pragma once

#include <string>
#include <vector>

namespace kavit {

// A level to solve, by the name that the answer carries.
struct LevelSource {
    enum class Kind { File, StandardInput, NoLevel };

    Kind Origin = Kind::File;
    std::string Name;
    std::string Reason;        // NoLevel: why there is none
    bool EmptyFolder = false;  // NoLevel: the folder was read and holds none
};

// The levels that the arguments name, in their order: a file stands for itself, "-" for standard
// input, a folder for its .xsb files in natural order. A folder without any is in the list too, so
// that it is not passed over in silence.
[[nodiscard]] std::vector<LevelSource> ListLevels(const std::vector<std::string>& arguments);

// The level's name in file names: the last part of the path, up to its first ".".
[[nodiscard]] std::string LevelNameOf(const LevelSource& source);

}  // namespace kavit
