#include "level/level_text.h"

#include <algorithm>
#include <cstring>

namespace kavit {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// How many bytes a sequence has and where its second byte lies, which keeps out overlong forms,
// surrogates and code points beyond the last one. Length 1: not the first byte of a sequence.
struct Lead {
    std::size_t Length;
    unsigned char SecondMin;
    unsigned char SecondMax;
};

Lead LeadOf(unsigned char byte) {
    if (byte < 0xC2 || byte > 0xF4) return {1, 0, 0};
    if (byte < 0xE0) return {2, 0x80, 0xBF};
    if (byte < 0xF0) {
        return {3, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    }
    return {4, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
}

bool IsContinuation(const Lead& lead, std::size_t index, char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (index == 1) return byte >= lead.SecondMin && byte <= lead.SecondMax;
    return (byte & 0xC0U) == 0x80U;
}

bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}

}  // namespace

// Makes sure that `count` bytes stand in the buffer; false when the text ends before.
bool LevelText::Need(std::size_t count) {
    while (end_ - begin_ < count) {
        if (begin_ > 0) {
            std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
            end_ -= begin_;
            begin_ = 0;
        }
        // peek() waits for one byte at most, and readsome() takes only what is there without
        // waiting; some streams don't know what is there and say 0.
        if (stream_.peek() == std::istream::traits_type::eof()) return false;
        const auto room = static_cast<std::streamsize>(buffer_.size() - end_);
        std::streamsize got = stream_.readsome(buffer_.data() + end_, room);
        if (got <= 0) {
            stream_.read(buffer_.data() + end_, 1);
            got = stream_.gcount();
        }
        if (got <= 0) return false;
        end_ += static_cast<std::size_t>(got);
    }
    return true;
}

// The length of the character at begin_. Asks for one byte after the other, because a sequence that
// is already broken must not wait for more input.
std::size_t LevelText::SequenceLength() {
    const Lead lead = LeadOf(static_cast<unsigned char>(buffer_[begin_]));
    for (std::size_t i = 1; i < lead.Length; ++i) {
        if (!Need(i + 1) || !IsContinuation(lead, i, buffer_[begin_ + i])) return 1;
    }
    return lead.Length;
}

void LevelText::TakeLineEnd() {
    pendingLf_ = buffer_[begin_] == '\r';
    ++begin_;
    ++line_;
    column_ = 0;
}

void LevelText::DropPendingLf() {
    if (!pendingLf_ || !Need(1)) return;
    pendingLf_ = false;
    if (buffer_[begin_] == '\n') ++begin_;
}

void LevelText::SkipByteOrderMark() {
    for (std::size_t i = 0; i < kByteOrderMark.size(); ++i) {
        if (!Need(i + 1) || buffer_[begin_ + i] != kByteOrderMark[i]) return;
    }
    begin_ += kByteOrderMark.size();
}

bool LevelText::AtEnd() {
    DropPendingLf();
    return !Need(1);
}

std::string_view LevelText::Next() {
    DropPendingLf();
    if (!Need(1)) return {};
    if (IsLineEnd(buffer_[begin_])) {
        TakeLineEnd();
        return {};
    }
    const std::size_t length = SequenceLength();
    const std::string_view character(buffer_.data() + begin_, length);
    begin_ += length;
    ++column_;
    return character;
}

bool LevelText::SkipLine() {
    DropPendingLf();
    bool wall = false;
    while (Need(1)) {
        const auto first = buffer_.begin() + static_cast<std::ptrdiff_t>(begin_);
        const auto last = buffer_.begin() + static_cast<std::ptrdiff_t>(end_);
        const auto lineEnd = std::find_if(first, last, IsLineEnd);
        wall = wall || std::find(first, lineEnd, '#') != lineEnd;
        begin_ += static_cast<std::size_t>(lineEnd - first);
        if (lineEnd == last) continue;
        TakeLineEnd();
        break;
    }
    return wall;
}

}  // namespace kavit
