#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The names of level files: their order, which of them a folder has, and which comes next.

namespace kavit {

// Names in the order in which a reader expects them: runs of digits by their value, letters without
// regard to case, so that lev2 comes before lev10.
[[nodiscard]] bool NaturalLess(std::string_view a, std::string_view b);

// The names of the files in `folder` that end with "." and `extension`, letters compared without
// regard to case, in natural order. Hidden files are left out. Empty when the folder can't be read.
[[nodiscard]] std::vector<std::string> ListLevelFiles(const std::filesystem::path& folder,
                                                      std::string_view extension);

// Where `name` is among `names`: the very name, or else one that differs in the case of letters
// only.
[[nodiscard]] std::optional<std::size_t> FindLevelFile(const std::vector<std::string>& names,
                                                       std::string_view name);

// A file name up to its first ".".
[[nodiscard]] std::string LevelNameOf(std::string_view fileName);

// The name with its first run of digits counted up by one. The run keeps its width and its zeros
// and grows when it must: lev009 gives lev010, lev99 gives lev100. The run may have any length,
// since it is never made a number. A name without digits stays.
[[nodiscard]] std::string NextNumberedName(std::string_view name);

}  // namespace kavit
