#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Writes a file whole or not at all.
//
// The content goes to a new file in the same folder, is forced to the disk, and then takes the
// place of the old file in one step. Whatever happens on the way - a full disk, a kill, a power
// cut - either the old or the new file is there, never a half of one. The price is that the folder
// must be writable, and that the name is a new file afterwards: its permissions are carried over,
// hard links to the old one keep the old content.
namespace kavit {

// Returns "" or a sentence that names the file and the reason. A symbolic link stays a link: the
// file that it names is the one replaced. What is no plain file (a terminal, a pipe) is written to
// directly.
[[nodiscard]] std::string WriteWholeFile(const std::filesystem::path& path,
                                         std::string_view content);

// Adds to the end of a file, which is made when it is not there. Returns as above.
[[nodiscard]] std::string AppendToFile(const std::filesystem::path& path, std::string_view content);

}  // namespace kavit
