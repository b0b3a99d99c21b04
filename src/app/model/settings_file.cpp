#include "app/model/settings_file.h"

#include <array>
#include <charconv>
#include <fstream>
#include <sstream>
#include <system_error>
#include <vector>

#include "output/atomic_file.h"
#include "output/number_text.h"

namespace kavit {
namespace {

constexpr std::array<const char*, 6> kNames = {"NumPos",   "Blocks",   "MaxTime",
                                               "OptLevel", "WriteSol", "NoWriteSol"};
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kMostBytes = 4096;  // far more than six numbers need

// Numbers are separated by blanks or by one comma between blanks; two commas leave a number out.
std::vector<std::string_view> Pieces(std::string_view text) {
    std::vector<std::string_view> pieces;
    std::size_t at = text.find_first_not_of(kBlanks);
    while (at != std::string_view::npos) {
        std::size_t end = text.find_first_of(" \t\r\n,", at);
        if (end == std::string_view::npos) end = text.size();
        pieces.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(kBlanks, end);
        if (at != std::string_view::npos && text[at] == ',') {
            at = text.find_first_not_of(kBlanks, at + 1);
        }
    }
    return pieces;
}

// What was found, fit for one line of a message.
std::string Quoted(std::string_view piece) {
    constexpr std::size_t kShown = 20;
    std::string text = "\"";
    for (const char c : piece.substr(0, kShown)) {
        text += c >= ' ' && c <= '~' ? c : '?';
    }
    return text + (piece.size() > kShown ? "...\"" : "\"");
}

std::string Fault(std::size_t index, std::string_view piece, const char* expected) {
    return "number " + std::to_string(index + 1) + " (" + kNames[index] + ") is " + Quoted(piece) +
           ", not " + expected;
}

}  // namespace

std::optional<std::int64_t> ParseNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return std::nullopt;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end != text.data() + text.size()) return std::nullopt;
    if (error == std::errc::result_out_of_range) return text[0] == '-' ? INT64_MIN : INT64_MAX;
    if (error != std::errc()) return std::nullopt;
    return number;
}

std::string SettingsText(const Settings& settings) {
    std::string text;
    for (const std::int64_t number :
         {settings.Fields.NumPos, settings.Fields.Blocks, settings.Fields.MaxTime,
          std::int64_t{settings.OptLevel}, std::int64_t{settings.WriteSol},
          std::int64_t{settings.NoWriteSol}}) {
        text += S(number);
        text += ' ';
    }
    return text + "\r\n";
}

SettingsReply ParseSettings(std::string_view text) {
    SettingsReply reply;
    const std::vector<std::string_view> pieces = Pieces(text);
    if (pieces.size() != kNames.size()) {
        reply.Fault = "six numbers are expected, found " + std::to_string(pieces.size());
        return reply;
    }
    std::array<std::int64_t, 6> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::optional<std::int64_t> number = ParseNumber(pieces[i]);
        const std::int64_t most = i < 3 ? INT64_MAX : i == 3 ? 4 : 1;
        const char* expected = i < 3 ? "a whole number" : i == 3 ? "0, 1, 2, 3 or 4" : "0 or 1";
        if (!number || (i >= 3 && (*number < 0 || *number > most))) {
            reply.Fault = Fault(i, pieces[i], expected);
            return reply;
        }
        numbers[i] = *number;
    }
    reply.Values.Fields = {numbers[0], numbers[1], numbers[2]};
    reply.Values.OptLevel = static_cast<int>(numbers[3]);
    reply.Values.WriteSol = numbers[4] != 0;
    reply.Values.NoWriteSol = numbers[5] != 0;
    if (reply.Values.WriteSol && reply.Values.NoWriteSol) {
        reply.Fault = "numbers 5 (WriteSol) and 6 (NoWriteSol) exclude each other";
    }
    return reply;
}

SettingsReply ReadSettings(const std::filesystem::path& file) {
    SettingsReply reply;
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) return reply;
    const std::string name = "The settings file " + file.string();
    if (!std::filesystem::is_regular_file(status)) {
        reply.Fault = name + " can't be read: " + (error ? error.message() : "it is no plain file");
        return reply;
    }
    std::ifstream stream(file, std::ios::binary);
    std::string text(kMostBytes, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() == kMostBytes) {  // a number may have been cut in two
        reply.Fault = name + " is malformed: it is longer than six numbers need.";
        return reply;
    }
    if (!stream.eof()) {
        reply.Fault =
            name + " can't be read: " + std::error_code(errno, std::generic_category()).message();
        return reply;
    }
    reply = ParseSettings(text);
    if (!reply.Fault.empty()) reply.Fault = name + " is malformed: " + reply.Fault + ".";
    return reply;
}

std::string WriteSettings(const std::filesystem::path& file, const Settings& settings) {
    return WriteWholeFile(file, SettingsText(settings));
}

}  // namespace kavit
