#include "level/shown_text.h"

namespace kavit {

std::string ShownText(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7f) {
            shown += c;
        } else {
            shown += ByteNumber(c);
        }
    }
    return shown;
}

std::string ByteNumber(char c) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    return {'\\', 'x', kDigits[byte / 16], kDigits[byte % 16]};
}

}  // namespace kavit
