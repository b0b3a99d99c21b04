#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <sstream>
#include <utility>

namespace kavit {

namespace {

constexpr const char* kDescription =
    "Solves Sokoban levels with the fewest pushes.\n"
    "Answers go to standard output, progress and errors to standard error.\n";

constexpr const char* kFooter = R"(Examples:
  kavit-solve levels/01-first-steps.xsb
  kavit-solve --json --max-time 60 levels/ > answers.jsonl
  kavit-solve --opt-level 3 --blocks 12 --sol answers/ levels/*.xsb
  kavit-solve - < level.xsb

Exit status: 0 when all levels were solved, otherwise that of the first level that was not:
  2  refused: solved already, frozen, open, too many boxes, or boxes and goals that do not fit
  3  no solution, proved by an exhausted search
  4  out of memory, before a solution or for the sizes asked for
  5  not readable
  6  internal error
  8  stopped by the time limit, SIGINT or SIGTERM
and 1 for wrong usage, 7 when all were solved but an answer could not be written.)";

// Digits only: no sign, no blanks, no hexadecimal, nothing cut off.
template <typename Number>
Number WholeNumber(const std::string& text, std::int64_t least, std::int64_t most) {
    std::int64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end || value < least || value > most) {
        throw CLI::ValidationError("'" + text + "' is not a whole number from " +
                                   std::to_string(least) + " to " + std::to_string(most));
    }
    return static_cast<Number>(value);
}

template <typename Number>
void AddNumber(CLI::App& app, const std::string& name, Number& field, std::int64_t least,
               std::int64_t most, const std::string& help, const std::string& type = "N") {
    // A default that is out of range is none.
    const auto standard = static_cast<std::int64_t>(field);
    const std::string text = standard < least ? help : help + " [" + std::to_string(standard) + "]";
    app.add_option_function<std::string>(
           name,
           [name, &field, least, most](const std::string& value) {
               try {
                   field = WholeNumber<Number>(value, least, most);
               } catch (const CLI::ValidationError& wrong) {
                   throw CLI::ValidationError(name, wrong.what());
               }
           },
           text)
        ->type_name(type)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

// What the solver has names for.
struct Named {
    std::string Search = "both";
    int Hash = -1;  // not given
};

void AddOptions(CLI::App& app, Options& options, Named& named) {
    app.add_option("LEVEL", options.Levels,
                   "Level files, folders of .xsb files, or - for standard input")
        ->type_name("");
    AddNumber(app, "--max-positions", options.Fields.NumPos, 1, 2147483647,
              "Positions that may be stored");
    AddNumber(app, "--blocks", options.Fields.Blocks, 1, 32767, "Most boxes a level may have");
    AddNumber(app, "--max-time", options.Fields.MaxTime, 1, 86400, "Seconds for each level", "S");
    AddNumber(app, "--opt-level", options.Solver.OptLevel, 0, 3,
              "Moves optimizer: 0 none, 1 something, 2 something more, 3 something plus");
    app.add_flag("--special", options.Solver.OptSpecial,
                 "Optimize across both sides (counts at levels 2 and 3)");
    app.add_option("--search", named.Search,
                   "Side to search from: both, forward or backward [both]")
        ->type_name("SIDE")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    AddNumber(app, "--hash", named.Hash, 0, 2, "Way to probe the hash table");
    app.add_option("--sol", options.SolTarget,
                   "Write the solution file; a folder when it is one, ends with /, or there are "
                   "several levels")
        ->type_name("FILE|DIR")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    app.add_flag("--expert", options.Expert, "Full report, and file names that tell the settings");
    app.add_flag("--json", options.Json, "Print one JSON object a line for each level");
    app.add_flag("--strict", options.Strict, "Refuse a level with an invalid character");
    app.add_option("--dump-levels", options.DumpPrefix,
                   "Write the levels of the search to PREFIX_NAME.txt, for who works on the solver")
        ->type_name("PREFIX")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    AddNumber(app, "--dump-position", options.DumpPosition, 1, 2147483647,
              "Add a line on stored position N to NAME_Dist.txt");
}

SeaType SeaTypeOf(const std::string& search) {
    constexpr const char* kNames[] = {"both", "forward", "backward"};
    const auto* const found = std::find(std::begin(kNames), std::end(kNames), search);
    if (found == std::end(kNames)) {
        throw CLI::ValidationError("--search",
                                   "'" + search + "' is none of both, forward, backward");
    }
    return static_cast<SeaType>(found - std::begin(kNames));
}

// What the parser reads, from the last to the first. It would take a folder [a,b] for a list of two
// names, but for a path before it.
std::vector<std::string> Arguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    std::reverse(arguments.begin(), arguments.end());
    for (std::string& argument : arguments) {
        if (argument.size() > 1 && argument.front() == '[' && argument.back() == ']') {
            argument.insert(0, "./");
        }
    }
    return arguments;
}

void Check(const CLI::App& app, const Options& options) {
    if (options.Levels.empty()) throw CLI::RequiredError("LEVEL: a file, a folder or -");
    if (std::count(options.Levels.begin(), options.Levels.end(), "-") > 1) {
        throw CLI::ValidationError("LEVEL", "- may be given once");
    }
    for (const auto& [name, value] :
         {std::pair("--sol", options.SolTarget), std::pair("--dump-levels", options.DumpPrefix)}) {
        if (app.count(name) > 0 && value.empty()) {
            throw CLI::ValidationError(name, "the name is empty");
        }
    }
}

}  // namespace

CommandLine ReadCommandLine(int argc, const char* const* argv) {
    CLI::App app(kDescription, "kavit-solve");
    app.footer(kFooter);
    app.set_version_flag("--version", "kavit-solve " KAVIT_VERSION, "Print the version and end");
    app.set_help_flag("--help,-h", "Print this help and end");

    Options options;
    Named named;
    AddOptions(app, options, named);
    CommandLine line;
    try {
        app.parse(Arguments(argc, argv));
        options.Solver.SeaType = SeaTypeOf(named.Search);
        if (named.Hash >= 0) options.Solver.HashCase = static_cast<HashCase>(named.Hash);
        Check(app, options);
        line.Command = std::move(options);
    } catch (const CLI::ParseError& ended) {
        std::ostringstream out;
        std::ostringstream err;
        line.Wrong = app.exit(ended, out, err) != 0;
        line.Text = line.Wrong ? err.str() : out.str();
    }
    return line;
}

}  // namespace kavit
