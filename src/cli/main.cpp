#include <exception>
#include <iostream>

#include "cli/exit_status.h"
#include "cli/options.h"
#include "cli/solve_command.h"
#include "cli/standard_streams.h"

namespace {

// Help and version are answers, too: a full disk is no success.
kavit::ExitStatus Print(const kavit::CommandLine& line) {
    if (!line.Wrong.empty()) {
        std::cerr << line.Wrong;
        return kavit::ExitStatus::WrongUsage;
    }
    kavit::AnswerStream answers;
    return answers.Write(line.Text) ? kavit::ExitStatus::Solved : kavit::ExitStatus::NotWritten;
}

}  // namespace

int main(int argc, char** argv) {
    kavit::FillClosedStreams();
    try {
        const kavit::CommandLine line = kavit::ReadCommandLine(argc, argv);
        if (!line.Command) return static_cast<int>(Print(line));
        return static_cast<int>(kavit::SolveCommand(*line.Command).Run());
    } catch (const std::exception& fault) {
        std::cerr << "kavit-solve: " << fault.what() << "\n";
        return static_cast<int>(kavit::ExitStatus::Fault);
    }
}
