#pragma once

#include <string>
#include <string_view>

// Text that came from outside (names of files and levels, faults that quote them), made fit to be
// shown. Places that understand markup are told that it is plain text.
namespace kavit {

// For a line of text: control characters are shown by their number, as in "\x0a", so that a name
// can neither break a line nor drive a terminal.
[[nodiscard]] std::string ShownText(std::string_view text);

// A byte by its number, as in "\x0a".
[[nodiscard]] std::string ByteNumber(char c);

}  // namespace kavit
