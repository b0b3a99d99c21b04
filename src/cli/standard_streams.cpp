#include "cli/standard_streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ios>
#include <system_error>

#include "cli/signals.h"

namespace kavit {

void FillClosedStreams() {
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (fcntl(stream, F_GETFD) != -1) continue;
        // The lowest free number is this one. Opened the wrong way round, so that using it fails.
        (void)open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

AnswerStream::AnswerStream() {
    struct stat about = {};
    toFile_ = fstat(STDOUT_FILENO, &about) == 0 && S_ISREG(about.st_mode);
}

bool AnswerStream::Write(std::string_view text) {
    const SignalHold hold(toFile_);
    while (error_ == 0 && !text.empty()) {
        const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            error_ = errno;
        }
    }
    return error_ == 0;
}

std::string AnswerStream::Reason() const {
    if (error_ == 0 || error_ == EPIPE) return "";
    return std::generic_category().message(error_);
}

InputBuffer::int_type InputBuffer::underflow() {
    while (!session_.StopRequested()) {
        const ssize_t count = read(STDIN_FILENO, buffer_.data(), buffer_.size());
        if (count > 0) {
            setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
            return traits_type::to_int_type(buffer_[0]);
        }
        if (count == 0) break;
        // The stream that reads from here takes an exception as a failed read.
        if (errno != EINTR) {
            throw std::ios_base::failure("standard input",
                                         std::error_code(errno, std::generic_category()));
        }
    }
    return traits_type::eof();
}

}  // namespace kavit
