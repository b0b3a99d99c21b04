#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

// What became of a program that was run.
struct ProgramRun {
    int Status = -1;  // as a shell would say it: 128 + the number of a signal that killed it
    std::string Out;
    std::string Err;
};

// How it is run. Streams are pipes unless something else is asked for.
struct ProgramSetup {
    enum class Stdout { Read, ClosedReader, Closed, Full };

    std::vector<std::string> Args = {};
    std::string Input = {};
    bool HoldInput = false;    // standard input stays open and silent
    bool InputFolder = false;  // standard input is a folder, which can't be read
    // Standard error is a terminal with so many columns; 0: one that does not tell.
    std::optional<unsigned short> ErrColumns = {};
    Stdout Out = Stdout::Read;
    std::string Folder = {};                  // to run in
    std::function<void(pid_t)> OnStart = {};  // called when it has been started
    // Called whenever something came from its standard error, with all of it so far.
    std::function<void(pid_t, const std::string&)> OnErr = {};
};

// Runs kavit-solve to its end.
[[nodiscard]] ProgramRun RunSolve(const ProgramSetup& setup);
