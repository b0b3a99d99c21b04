#include "output/shown_text.h"

#include <cstdio>

namespace kavit {

std::string ShownText(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7f) {
            shown += c;
            continue;
        }
        char number[8];
        std::snprintf(number, sizeof number, "\\x%02x", static_cast<unsigned>(byte));
        shown += number;
    }
    return shown;
}

}  // namespace kavit
