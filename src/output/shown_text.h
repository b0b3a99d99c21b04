#pragma once

#include <string>
#include <string_view>

// Text that came from outside (names of files and levels, faults that quote them), made fit for the
// place where it is shown. Nothing else in the program escapes anything.
namespace kavit {

// For a line of text: control characters are shown by their number, as in "\x0a", so that a name
// can neither break a line nor drive a terminal.
[[nodiscard]] std::string ShownText(std::string_view text);

// For a place that understands markup: the same, and &, <, > and quotes stand for themselves.
[[nodiscard]] std::string MarkupText(std::string_view text);

}  // namespace kavit
