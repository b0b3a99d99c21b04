#pragma once

#include <string>
#include <string_view>

namespace kavit {

// What the help window shows, as UTF-8, by HelpTopic: 1 Spanish, 2 French and 3 English help, 4 the
// current level, 5 about. Any other topic has no caption and no text.
[[nodiscard]] std::string_view HelpCaption(int helpTopic);
[[nodiscard]] std::string HelpText(int helpTopic, std::string_view levelName);

}  // namespace kavit
