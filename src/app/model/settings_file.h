#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "solver/solver.h"

// Kavit.ini: one line of six numbers in the folder where the program was started.
namespace kavit {

struct Settings {
    Sizes Fields;      // NumPos, Blocks, MaxTime
    int OptLevel = 1;  // 0..4
    bool WriteSol = false;
    bool NoWriteSol = false;

    bool operator==(const Settings&) const = default;
};

struct SettingsReply {
    Settings Values;
    std::string Fault;  // "" when Values hold; otherwise a sentence that says what is wrong
};

// NumPos, Blocks, MaxTime, OptLevel, WriteSol, NoWriteSol; each with a sign position in front and a
// blank behind it, the line ended by CR LF.
[[nodiscard]] std::string SettingsText(const Settings& settings);

// The same six numbers, separated by blanks, commas or line ends. Sizes may have any value here:
// the checks of APPLY judge them.
[[nodiscard]] SettingsReply ParseSettings(std::string_view text);

// No file: the defaults. A fault names the file.
[[nodiscard]] SettingsReply ReadSettings(const std::filesystem::path& file);

// Replaces the whole file or nothing. Returns "" or a sentence that names the file and the reason.
[[nodiscard]] std::string WriteSettings(const std::filesystem::path& file,
                                        const Settings& settings);

// A whole decimal number, blanks around it allowed; nothing when it is none or too long for 64
// bits.
[[nodiscard]] std::optional<std::int64_t> ParseNumber(std::string_view text);

}  // namespace kavit
