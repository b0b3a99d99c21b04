#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kavit {

// A file to read levels from, by the name that answers carry.
//
// Folders are walked by these rules: names in natural order, the files of a folder before its
// folders; .xsb, .sok and .txt, in letters of either case; what begins with a dot is left out; a
// link to a file is taken like the file, a link to a folder is not followed. A file that was met
// before, by whatever name, is not read again. What is named itself is always taken.
struct LevelFile {
    enum class Kind { File, StandardInput, NoLevel };

    Kind Origin = Kind::File;
    std::string Name = {};
    std::string Reason = {};   // NoLevel: why there is none
    bool EmptyFolder = false;  // NoLevel: the folder was read and holds none
    bool FromFolder = false;   // found, not named: a text without any level is no fault
    std::int64_t Only = 0;     // the one level that is meant; 0: all
};

// The files that the arguments name, in their order: "-" is standard input, FILE#N or
// FILE#N "Title" is a level of a collection, as --list prints it. A folder without any file is in
// the list too, so that it is not passed over in silence.
[[nodiscard]] std::vector<LevelFile> ListFiles(const std::vector<std::string>& arguments);

// The level's name in file names: the last part of the path, up to its first ".".
[[nodiscard]] std::string LevelNameOf(const LevelFile& file);

}  // namespace kavit
