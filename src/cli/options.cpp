#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace kavit {

namespace {

constexpr const char* kDescription =
    "Solves Sokoban levels with the fewest pushes.\n"
    "Answers go to standard output, progress and errors to standard error.\n";

constexpr const char* kFooter = R"(Examples:
  kavit-solve levels/01-first-steps.xsb
  kavit-solve --json --max-time 60 levels/ > answers.jsonl
  kavit-solve --opt-level 3 --memory 50% --sol answers/ levels/*.xsb
  kavit-solve --level 5-9,12 --output solved.sok album.txt
  kavit-solve - < level.xsb

Exit status: 0 when all levels were solved, otherwise that of the first level that was not:
  2  refused: solved already, frozen, open, too many boxes, or boxes and goals that do not fit
  3  no solution, proved by an exhausted search
  4  out of memory, before a solution or for the sizes asked for
  5  not readable
  6  internal error
  8  stopped by the time limit, SIGINT or SIGTERM
and 1 for wrong usage, 7 when all were solved but an answer could not be written.)";

// An option with a value, of which the last one given holds. What `take` throws becomes the
// message, under the option's name.
CLI::Option* AddValue(CLI::App& app, const std::string& name, const std::string& type,
                      const std::string& help,
                      const std::function<void(const std::string&)>& take) {
    const auto checked = [name, take](const std::string& value) {
        try {
            take(value);
        } catch (const std::invalid_argument& wrong) {
            throw CLI::ValidationError(name, wrong.what());
        }
    };
    return app.add_option_function<std::string>(name, checked, help)
        ->type_name(type)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

// One that must not be empty.
CLI::Option* AddText(CLI::App& app, const std::string& name, const std::string& type,
                     const std::string& help, std::string& field) {
    return AddValue(app, name, type, help, [&field](const std::string& value) {
        if (value.empty()) throw std::invalid_argument("the name is empty");
        field = value;
    });
}

template <typename Number>
CLI::Option* AddNumber(CLI::App& app, const std::string& name, const std::string& type,
                       const std::string& help, Number& field, std::int64_t least,
                       std::int64_t most) {
    return AddValue(app, name, type, help, [&field, least, most](const std::string& value) {
        field = static_cast<Number>(WholeNumber(value, least, most));
    });
}

void AddLevels(CLI::App& app, Options& options) {
    app.add_option("LEVEL", options.Levels,
                   "Level files and collections, FILE#N for one level of a collection, folders, or "
                   "- for standard input")
        ->type_name("");
    AddValue(app, "--level", "N-M,K", "Only the levels with these numbers in their file",
             [&](const std::string& value) { options.Chosen.Numbers = LevelNumbers(value); });
    AddText(app, "--title", "PATTERN", "Only levels with such a title (* and ? as in a shell)",
            options.Chosen.Title);
    app.add_flag("--list", options.List, "Print the names of the levels and end");
    app.add_flag("--strict", options.Strict, "Refuse a level with an invalid character");
}

void AddSizes(CLI::App& app, Options& options) {
    CLI::Option* const memory =
        AddValue(app, "--memory", "SIZE",
                 "Memory for positions: 500M, 4G, or 50% of what is free to the program",
                 [&](const std::string& value) { options.Memory = MemoryOf(value); });
    AddNumber(app, "--max-positions", "N",
              "Positions that may be stored, at some 24 bytes each, one more for each box over 8 "
              "[4000000]",
              options.MaxPositions, 1, 2147483647)
        ->excludes(memory);
    AddNumber(app, "--blocks", "N", "Most boxes a level may have [what each level needs]",
              options.Blocks, 1, 32767);
    AddNumber(app, "--max-time", "S", "Seconds for each level [300]", options.MaxTime, 1, 86400);
}

void AddSearch(CLI::App& app, Options& options) {
    AddValue(app, "--opt-level", "N",
             "Moves optimizer: 0 none, 1 something, 2 something more, 3 something plus, 4 fewest "
             "moves of all [1]",
             [&](const std::string& value) {
                 options.Solver.OptLevel = static_cast<OptLevel>(WholeNumber(value, 0, 4));
             });
    app.add_flag("--special", options.Solver.OptSpecial,
                 "Optimize across both sides (counts from level 2 on)");
    AddValue(app, "--search", "SIDE", "Side to search from: both, forward or backward [both]",
             [&](const std::string& value) { options.Solver.SeaType = SeaTypeOf(value); });
    AddValue(app, "--hash", "CASE",
             "Hash table: default, case1, case2, mixed, or 0 to 3 [default up to 8000000 "
             "positions, mixed above]",
             [&](const std::string& value) { options.Solver.HashCase = HashCaseOf(value); });
    AddNumber(app, "--threads", "N", "Threads that search [all that the program may use]",
              options.Solver.Threads, 1, 1024);
}

void AddAnswers(CLI::App& app, Options& options) {
    AddText(app, "--sol", "FILE|DIR",
            "Write the solution file; a folder when it is one, ends with /, or there are several "
            "levels",
            options.SolTarget);
    AddText(app, "--output", "FILE", "Write the levels again with solutions, as .sok or .xsb",
            options.Output);
    app.add_flag("--expert", options.Expert, "Full report, and file names that tell the settings");
    app.add_flag("--json", options.Json, "Print one JSON object a line for each level");
    AddText(app, "--dump-levels", "PREFIX",
            "Write the layers of the search to PREFIX_NAME.txt (for debugging)",
            options.DumpPrefix);
    AddNumber(app, "--dump-position", "N", "Add a line on stored position N to NAME_Dist.txt",
              options.DumpPosition, 1, 2147483647);
}

// What the parser reads, from the last to the first. It would take a folder [a,b] for a list of two
// names, but for a path before it.
std::vector<std::string> Arguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    std::reverse(arguments.begin(), arguments.end());
    for (std::string& argument : arguments) {
        if (!argument.empty() && argument.front() == '[' && argument.back() == ']') {
            argument.insert(0, "./");
        }
    }
    return arguments;
}

void Check(const Options& options) {
    if (options.Levels.empty()) throw CLI::RequiredError("LEVEL: a file, a folder or -");
    if (std::count(options.Levels.begin(), options.Levels.end(), "-") > 1)
        throw CLI::ValidationError("LEVEL", "- may be given once");
    const std::string ending = std::filesystem::path(options.Output).extension().string();
    if (!options.Output.empty() && ending != ".sok" && ending != ".xsb") {
        throw CLI::ValidationError("--output",
                                   "'" + options.Output + "' ends with neither .sok nor .xsb");
    }
}

}  // namespace

CommandLine ReadCommandLine(int argc, const char* const* argv) {
    CLI::App app(kDescription, "kavit-solve");
    app.footer(kFooter);
    app.set_version_flag("--version", "kavit-solve " KAVIT_VERSION, "Print the version and end");
    app.set_help_flag("--help,-h", "Print this help and end");

    Options options;
    AddLevels(app, options);
    AddSizes(app, options);
    AddSearch(app, options);
    AddAnswers(app, options);
    CommandLine line;
    try {
        app.parse(Arguments(argc, argv));
        Check(options);
        line.Command = std::move(options);
    } catch (const CLI::ParseError& ended) {
        std::ostringstream out;
        std::ostringstream err;
        app.exit(ended, out, err);
        line.Text = out.str();
        line.Wrong = err.str();
    }
    return line;
}

}  // namespace kavit
