#include "support/program.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

namespace {

struct Pipe {
    int Read = -1;
    int Write = -1;
};

Pipe MakePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    return {ends[0], ends[1]};
}

// A terminal: its near end is read, the far end is given to the program.
Pipe MakeTerminal(unsigned short columns) {
    const int near = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (near < 0 || grantpt(near) != 0 || unlockpt(near) != 0) throw std::runtime_error("no pty");
    const int far = open(ptsname(near), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size = {24, columns, 0, 0};
    if (far < 0 || ioctl(far, TIOCSWINSZ, &size) != 0) throw std::runtime_error("no pty");
    return {near, far};
}

void Close(int& file) {
    if (file >= 0) close(file);
    file = -1;
}

// In the child: the streams, then the program. Never returns.
[[noreturn]] void BecomeSolve(const ProgramSetup& setup, const Pipe& in, const Pipe& out,
                              const Pipe& err) {
    dup2(setup.InputFolder ? open("/", O_RDONLY) : in.Read, STDIN_FILENO);
    std::signal(SIGPIPE, SIG_DFL);
    dup2(err.Write, STDERR_FILENO);
    dup2(out.Write, STDOUT_FILENO);
    if (setup.Out == ProgramSetup::Stdout::Full) dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO);
    if (setup.Out == ProgramSetup::Stdout::Closed) close(STDOUT_FILENO);
    if (!setup.Folder.empty() && chdir(setup.Folder.c_str()) != 0) _exit(127);
    std::vector<char*> arguments;
    std::string name = KAVIT_SOLVE_PROGRAM;
    std::vector<std::string> copies = setup.Args;
    arguments.push_back(name.data());
    for (std::string& argument : copies) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    execv(KAVIT_SOLVE_PROGRAM, arguments.data());
    _exit(127);
}

// Takes what is there; closes the file at its end.
void Take(int& file, std::string& text) {
    std::array<char, 4096> buffer{};
    const ssize_t count = read(file, buffer.data(), buffer.size());
    if (count > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    } else {
        Close(file);  // a terminal says EIO when the program has gone
    }
}

}  // namespace

ProgramRun RunSolve(const ProgramSetup& setup) {
    Pipe in = MakePipe();
    Pipe out = MakePipe();
    Pipe err = setup.ErrColumns ? MakeTerminal(*setup.ErrColumns) : MakePipe();
    if (setup.Out == ProgramSetup::Stdout::ClosedReader) Close(out.Read);
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process");
    if (child == 0) BecomeSolve(setup, in, out, err);
    if (setup.OnStart) setup.OnStart(child);
    Close(in.Read);
    Close(out.Write);
    Close(err.Write);
    // Short inputs only: they fit into the pipe. The program may have ended without reading them.
    std::signal(SIGPIPE, SIG_IGN);
    if (write(in.Write, setup.Input.data(), setup.Input.size()) < 0) Close(in.Write);
    if (!setup.HoldInput) Close(in.Write);

    ProgramRun run;
    while (out.Read >= 0 || err.Read >= 0) {
        std::array<pollfd, 2> files = {pollfd{out.Read, POLLIN, 0}, pollfd{err.Read, POLLIN, 0}};
        if (poll(files.data(), files.size(), -1) < 0) continue;
        if (files[0].revents != 0) Take(out.Read, run.Out);
        if (files[1].revents != 0) {
            Take(err.Read, run.Err);
            if (setup.OnErr && err.Read >= 0) setup.OnErr(child, run.Err);
        }
    }
    Close(in.Write);
    int status = 0;
    waitpid(child, &status, 0);
    run.Status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return run;
}
