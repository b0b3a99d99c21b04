#pragma once

#include <array>
#include <streambuf>
#include <string>
#include <string_view>

#include "output/solve_session.h"

namespace kavit {

// A program may be started with its standard streams closed. The next file that it opens would then
// take their number, and an answer could end up in a user's file. This fills the gaps with what
// neither reads nor writes.
void FillClosedStreams();

// Standard output. A text goes out in one call as far as the system takes it at once, and into a
// file with signals held back, so that a report is not torn by an end that comes in between. A
// terminal or a pipe may keep the program waiting; there a signal must get through.
class AnswerStream {
  public:
    AnswerStream();
    // False when it could not be written; every later call then fails too.
    bool Write(std::string_view text);
    [[nodiscard]] bool Failed() const { return error_ != 0; }
    // Why, or "" for a reader that went away, which is nothing to complain about.
    [[nodiscard]] std::string Reason() const;

  private:
    bool toFile_ = false;
    int error_ = 0;
};

// Standard input, which ends early when the session was asked to stop.
class InputBuffer : public std::streambuf {
  public:
    explicit InputBuffer(const SolveSession& session) : session_(session) {}

  protected:
    int_type underflow() override;

  private:
    const SolveSession& session_;
    std::array<char, 4096> buffer_{};
};

}  // namespace kavit
