#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "level/board.h"
#include "level/replay.h"
#include "support/levels.h"
#include "support/program.h"
#include "support/temp_folder.h"

// kavit-solve as its users meet it: the real program, its streams and its exit status.

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using Strings = std::vector<std::string>;

constexpr const char* kOnePush = "#####\n#@$.#\n#####\n";
constexpr const char* kThreePushes = "########\n#@ $  .#\n########\n";
constexpr const char* kTwoBoxes = "######\n#@$ .#\n# $ .#\n######\n";

class Cli : public ::testing::Test {
  protected:
    Cli() {
        folder_.Write("one.xsb", kOnePush);
        folder_.Write("three.xsb", kThreePushes);
        folder_.Write("two.xsb", kTwoBoxes);
        folder_.Write("none.xsb", kavit::test::kUnsolvable);
        folder_.Write("solved.xsb", "#####\n#@* #\n#####\n");
        folder_.Write("corner.xsb", "#####\n#$ @#\n# . #\n#####\n");
        folder_.Write("nobox.xsb", "#####\n#@. #\n#####\n");
        folder_.Write("wide.xsb", "####################\n");
        folder_.Write("letter.xsb", "#####\n#@$.#\n#xy##\n#####\n");
        folder_.Write("words.txt", "no level\n");
        folder_.Write("endless.xsb", kavit::test::kEndless);
        fs::create_directory(folder_.Path("empty"));
    }

    ProgramRun Run(Strings args, const std::string& input = "") const {
        return RunSolve({.Args = std::move(args), .Input = input, .Folder = folder_.Path()});
    }

    TempFolder folder_;
};

// Arguments written as in a shell: split at blanks, '' for an empty one.
Strings Words(const std::string& line) {
    Strings words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) words.push_back(word == "''" ? "" : word);
    return words;
}

std::vector<Json> Objects(const std::string& out) {
    std::vector<Json> objects;
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) objects.push_back(Json::parse(line));
    EXPECT_TRUE(out.empty() || out.back() == '\n') << "a torn line";
    return objects;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// With "#" for what differs from machine to machine: the first figure in the lines that measure,
// and the time of the summary.
std::string WithoutFigures(const std::string& text) {
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line); result += line + "\n") {
        line = std::regex_replace(line, std::regex(" levels in [0-9.]+ s:"), " levels in # s:");
        if (line.rfind("seconds ", 0) != 0 && line.rfind("memory ", 0) != 0) continue;
        const std::size_t figure = line.find_first_of("0123456789");
        line.replace(figure, line.find(' ', figure) - figure, "#");
    }
    return result;
}

// The status and, for each level, the number and the words that end its solve.
TEST_F(Cli, StatusAndResult) {
    struct Case {
        const char* Args;
        int Status;
        std::vector<int> Results;
        std::string LastMessage;
    };
    const Case cases[] = {
        {"one.xsb three.xsb", 0, {0, 0}, "Solution:  4/3"},
        {"--opt-level 0 --search forward --hash 2 three.xsb", 0, {0}, "Solution:  4/3"},
        {"--blocks 1 two.xsb", 2, {1}, "This program is limited to  1 boxes"},
        {"nobox.xsb", 2, {2}, "Strange mapping ???"},
        {"--threads 2 --hash default one.xsb", 0, {0}, "Solution:  1/1"},
        {"solved.xsb", 2, {9}, "Problem already solved"},
        {"corner.xsb", 2, {14}, "There is, at least, one frozen block"},
        {"none.xsb", 3, {3}, "There is no solution !"},
        {"--opt-level 4 --max-positions 1 two.xsb", 4, {4}, "Out of memory before a solution"},
        {"--max-time 1 --blocks 15 --max-positions 12000000 endless.xsb", 8, {8}, "Time Out"},
        {"''", 5, {101}, "Nothing to Open"},
        {"empty", 5, {101}, "Nothing to Open"},
        {"wide.xsb", 5, {104}, "Width puzzle exceed the maximum (19)"},
        {"missing.xsb", 5, {106}, "can't open file, try again"},
        {"--strict letter.xsb", 5, {106}, "can't open file, try again"},
        {"letter.xsb", 0, {0}, "Solution:  1/1"},
        {"words.txt", 2, {2}, "Strange mapping ???"},
        // The first level that was not solved decides; all are tried.
        {"one.xsb none.xsb missing.xsb solved.xsb one.xsb", 3, {0, 3, 106, 9, 0}, "Solution:  1/1"},
    };
    for (const Case& c : cases) {
        const ProgramRun run = Run(Words(std::string("--json ") + c.Args));
        SCOPED_TRACE(c.Args + ("\n" + run.Out + run.Err));
        EXPECT_EQ(run.Status, c.Status);
        EXPECT_FALSE(Contains(run.Err, "\x1b")) << "a progress bar for nobody";
        const std::vector<Json> objects = Objects(run.Out);
        std::vector<int> results;
        results.reserve(objects.size());
        for (const Json& object : objects) results.push_back(object.at("result").get<int>());
        EXPECT_EQ(results, c.Results);
        if (!objects.empty()) {
            EXPECT_EQ(objects.back().at("message"), c.LastMessage);
            EXPECT_EQ(objects.back().contains("lowerBound"), c.Status == 4 || c.Status == 8);
        }
    }
}

TEST_F(Cli, TextAnswer) {
    const ProgramRun run = Run({"three.xsb", "corner.xsb", "missing.xsb"});
    EXPECT_EQ(run.Status, 2);
    EXPECT_EQ(WithoutFigures(run.Err),
              "kavit-solve: missing.xsb: can't open file, try again: "
              "No such file or directory\n"
              "kavit-solve: 3 levels in # s: 1 solved, 1 refused (1 frozen box), 1 not readable\n");
    EXPECT_EQ(WithoutFigures(run.Out),
              "three.xsb\n\n########\n#@ $  .#\n########\n\n"
              "Solution:  4/3  on  1 analyzed\n\nrRRR\n\n"
              "layers      3 (0 forward, 3 backward)\n"
              "positions   4 stored of 4000000 (0.0 %), 5 offered\n"
              "duplicates  0 improved, 0 dropped\n"
              "hash table  default, 0.0 % full, 0 re-probes (0.00 an offer)\n"
              "memory      # bytes a position\n"
              "seconds     # search\n\n"
              "corner.xsb\n\n#####\n#$ @#\n# . #\n#####\n\n"
              "There is, at least, one frozen block\n\n");
    EXPECT_TRUE(Contains(Run({"nobox.xsb"}).Err, "kavit-solve: nobox.xsb: no box\n"));
    EXPECT_TRUE(Contains(Run(Words("--max-positions 1 two.xsb")).Out,
                         "\nProved: a solution needs at least 1 pushes\nThe store is full: 1 "));
}

TEST_F(Cli, JsonFields) {
    const std::string strange = "str\xff\n\"nge.xsb";
    folder_.Write(strange, kTwoBoxes);
    const ProgramRun run = Run({"--json", strange, "none.xsb", "wide.xsb"});
    const std::vector<Json> objects = Objects(run.Out);
    ASSERT_EQ(objects.size(), 3U) << run.Out << run.Err;
    EXPECT_EQ(objects[0].at("level"), "str\xef\xbf\xbd\n\"nge.xsb");
    EXPECT_TRUE(Contains(run.Out, "\"str\xef\xbf\xbd\\n")) << run.Out;
    for (const Json& object : objects) {
        const bool solved = object.at("result") == 0;
        for (const char* field : {"SolMoves", "SolPushes", "SolFoundAt", "SolPhase", "SolString"}) {
            SCOPED_TRACE(field);
            ASSERT_EQ(object.at(field).size(), 2U);
            EXPECT_EQ(object.at(field)[0].is_null(), !solved);
            EXPECT_EQ(object.at(field)[1].is_null(), !solved);
        }
        EXPECT_EQ(object.at("movesProved"), false);
    }
    EXPECT_EQ(objects[2].at("reason"), "line 1, column 20");

    const kavit::Board board = kavit::test::BoardOf(kTwoBoxes);
    for (const std::size_t k : {0U, 1U}) {
        const kavit::ReplayOutcome played =
            kavit::Replay(board, objects[0].at("SolString")[k].get<std::string>());
        EXPECT_TRUE(played.Solved);
        EXPECT_EQ(played.Moves, objects[0].at("SolMoves")[k]);
        EXPECT_EQ(played.Pushes, objects[0].at("SolPushes")[k]);
    }
}

// The optimizer's end: done, or the store filled up by it with the solution in hand.
TEST_F(Cli, HowTheOptimizerEnded) {
    struct Case {
        const char* Args;
        int LastMsg;
        bool Proved;
        const char* Message;
        const char* Says;
    };
    const Case cases[] = {
        {"--opt-level 1 02-corner-shop.xsb", 30, false, "Solution:  42/13",
         "Solution:  42/13  on  10 analyzed\n\n"},
        {"--opt-level 2 02-corner-shop.xsb", 29, false, "Solution:  42/13",
         "Best solution   42/13  on  "},
        {"--opt-level 3 02-corner-shop.xsb", 29, true, "Solution:  36/13",
         "\nProved: no solution with 13 pushes has fewer than 36 moves\n"},
        {"--opt-level 3 --max-positions 98 02-corner-shop.xsb", 44, false, "Solution:  42/13",
         "Out of memory but there is a solution   42/13\n\n"},
        {"--opt-level 4 05-crossing.xsb", 29, true, "Solution:  101/38   105/34",
         "\nProved: no solution has fewer than 101 moves\n"
         "Proved: no solution with 34 pushes has fewer than 105 moves\n\n"
         "With the fewest moves:\n"},
        {"--opt-level 2 --special 05-crossing.xsb", 29, false, "Solution:  105/36   107/34",
         "Best solution   105/36   107/34  on  "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Args);
        Strings args = Words(c.Args);
        args.back() = KAVIT_EXAMPLES_FOLDER "/" + args.back();
        const ProgramRun text = Run(args);
        EXPECT_EQ(text.Status, 0);
        EXPECT_TRUE(Contains(text.Out, c.Says)) << text.Out;
        args.insert(args.begin(), "--json");
        const std::vector<Json> objects = Objects(Run(args).Out);
        ASSERT_EQ(objects.size(), 1U);
        EXPECT_EQ(objects[0].at("result"), 0);
        EXPECT_EQ(objects[0].at("LastMsg"), c.LastMsg);
        EXPECT_EQ(objects[0].at("movesProved"), c.Proved);
        EXPECT_EQ(objects[0].at("fewestMovesProved"), args[2] == "4");
        EXPECT_EQ(objects[0].at("message"), c.Message);
        for (const std::string letters : objects[0].at("SolString"))
            EXPECT_TRUE(Contains(text.Out, "\n" + letters + "\n")) << text.Out;
    }
}

TEST_F(Cli, WrongUsage) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "LEVEL"},
        {"- -", "- may be given once"},
        {"--nonsense one.xsb", "--nonsense"},
        {"--search up one.xsb", "--search: 'up'"},
        {"--max-positions 0 one.xsb", "--max-positions: '0' is not"},
        {"--max-positions 2147483648 one.xsb", "from 1 to 2147483647"},
        {"--max-positions 99999999999999999999 one.xsb", "from 1 to 2147483647"},
        {"--max-positions 1e6 one.xsb", "--max-positions: '1e6'"},
        {"--blocks -1 one.xsb", "--blocks: '-1'"},
        {"--blocks 32768 one.xsb", "from 1 to 32767"},
        {"--max-time 86401 one.xsb", "from 1 to 86400"},
        {"--max-time '' one.xsb", "--max-time: ''"},
        {"--opt-level 5 one.xsb", "from 0 to 4"},
        {"--hash 4 one.xsb", "'4' is none of 0 to 3, default, case1, case2, mixed"},
        {"--threads 0 one.xsb", "--threads: '0' is not a whole number from 1 to 1024"},
        {"--threads -1 one.xsb", "'-1'"},
        {"--threads 1025 one.xsb", "from 1 to 1024"},
        {"--threads two one.xsb", "'two'"},
        {"--memory 0 one.xsb", "--memory: '0' is no size of memory, as in 500M, 4G or 50%"},
        {"--memory 0% one.xsb", "'0%'"},
        {"--memory 101% one.xsb", "'101%'"},
        {"--memory 3X one.xsb", "'3X'"},
        {"--memory 1.5G one.xsb", "'1.5G'"},
        {"--memory G one.xsb", "'G'"},
        {"--memory '' one.xsb", "--memory: ''"},
        {"--memory 8388608T one.xsb", "'8388608T'"},
        {"--memory 7 one.xsb", "--memory: 7 bytes have no room for a position"},
        {"--memory 1G --max-positions 9 one.xsb", "--memory excludes --max-positions"},
        {"--level 0 one.xsb", "--level: '0' is no list of level numbers, as in 5-9,12"},
        {"--level 3-2 one.xsb", "'3-2'"},
        {"--level 1, one.xsb", "'1,'"},
        {"--title '' one.xsb", "--title"},
        {"--output all.txt one.xsb", "--output: 'all.txt' ends with neither .sok nor .xsb"},
        {"--output one.xsb two.xsb one.xsb", "--output: one.xsb is one of the files to read"},
        {"--sol '' one.xsb", "--sol"},
        {"--dump-levels '' one.xsb", "--dump-levels"},
        {"--dump-position 0 one.xsb", "from 1 to 2147483647"},
        {"--sol one.xsb two.xsb three.xsb", "--sol: one.xsb"},
    };
    for (const auto& [args, says] : cases) {
        const ProgramRun run = Run(Words(args));
        SCOPED_TRACE(args);
        EXPECT_EQ(run.Status, 1);
        EXPECT_EQ(run.Out, "");
        EXPECT_TRUE(Contains(run.Err, says)) << run.Err;
    }
    for (const auto& [option, says] :
         {std::pair("--help", "this help and end\n"), std::pair("-h", "\nExit status: 0 when "),
          std::pair("--version", "kavit-solve ")}) {
        const ProgramRun run = Run({option, "one.xsb"});
        EXPECT_EQ(run.Status, 0);
        EXPECT_TRUE(Contains(run.Out, says)) << run.Out;
        EXPECT_EQ(run.Err, "");
    }
    EXPECT_EQ(folder_.Read("one.xsb"), kOnePush);
}

// No machine gives that much; it must say so at once and not be killed later.
TEST_F(Cli, SizesThatNoMachineHas) {
    for (const char* args :
         {"--max-positions 2147483647 --blocks 32767 one.xsb", "--memory 8388607T one.xsb"}) {
        const ProgramRun run = Run(Words(args));
        EXPECT_EQ(run.Status, 4) << run.Out;
        EXPECT_TRUE(Contains(run.Err, "Insuficient Memory: ")) << run.Err;
        EXPECT_TRUE(Contains(run.Err, "this machine can give ")) << run.Err;
    }
}

// The store by positions, by bytes and by a share; boxes as given, or as the level needs.
TEST_F(Cli, StoreSizes) {
    folder_.Write("nine.xsb", "############\n#@$.$.$.$.$#\n#.$.$.$.$..#\n############\n");
    struct Case {
        const char* Args;
        std::int64_t MaxPositions;  // 0: some
        int Blocks;
        const char* Says;
    };
    const Case cases[] = {
        {"one.xsb", 4000000, 8, ""},
        {"--max-positions 5 one.xsb", 5, 8, ": 5 positions of up to 8 boxes take "},
        {"--blocks 30 one.xsb", 4000000, 30, ""},
        {"nine.xsb", 4000000, 9, ""},
        {"--blocks 9 nine.xsb", 4000000, 9, ""},
        {"--memory 64K one.xsb", 0, 8, " positions of up to 8 boxes take 6"},
        {"--memory 1% one.xsb", 0, 8, " positions of up to 8 boxes take "},
    };
    for (const Case& c : cases) {
        const ProgramRun run = Run(Words(std::string("--json ") + c.Args));
        SCOPED_TRACE(c.Args + ("\n" + run.Err));
        const std::vector<Json> objects = Objects(run.Out);
        ASSERT_EQ(objects.size(), 1U);
        EXPECT_EQ(objects[0].at("blocks"), c.Blocks);
        const auto positions = objects[0].at("maxPositions").get<std::int64_t>();
        EXPECT_EQ(c.MaxPositions == 0 ? 0 : positions, c.MaxPositions);
        // 65536 bytes, at 20 to 30 a position.
        EXPECT_GT(positions, c.MaxPositions == 5 ? 4 : 65536 / 30);
        if (Contains(c.Args, "64K")) {
            EXPECT_LT(positions, 65536 / 20);
        }
        EXPECT_TRUE(Contains(run.Err, c.Says));
        EXPECT_EQ(Contains(run.Err, "this machine can give"), *c.Says != 0);
    }
}

// Folders in natural order, files first; each file once; links to folders are not followed.
TEST_F(Cli, WhereLevelsComeFrom) {
    for (const char* folder : {"set", "set/folder.xsb", "set/b2", "set/.git", "[a,b]"})
        fs::create_directory(folder_.Path(folder));
    for (const char* name : {"lev10.xsb", "lev9.XSB", "lev010b.xsb", "a.md", ".hidden.xsb", "b.sok",
                             "b2/c.xsb", ".git/d.xsb", "folder.xsb/e.TXT"})
        folder_.Write(std::string("set/") + name, kOnePush);
    folder_.Write("set/about.txt", "Nothing that looks like a level.\n");
    folder_.Write("[a,b]/c.xsb", kOnePush);
    fs::create_directory_symlink(folder_.Path("set"), folder_.Path("set/b2/loop"));
    fs::create_symlink(folder_.Path("three.xsb"), folder_.Path("set/b2/link.xsb"));
    fs::create_symlink(folder_.Path("set/lev10.xsb"), folder_.Path("set/b2/again.xsb"));
    const Strings wanted = {"./[a,b]/c.xsb",   "set/b.sok",           "set/lev9.XSB",
                            "set/lev10.xsb",   "set/lev010b.xsb",     "set/b2/c.xsb",
                            "set/b2/link.xsb", "set/folder.xsb/e.TXT"};
    const ProgramRun run = Run({"--json", "[a,b]", "set/", "-", "empty", "set"}, kThreePushes);
    Strings names;
    for (const Json& object : Objects(run.Out)) names.push_back(object.at("level"));
    Strings all = wanted;
    all.insert(all.end(), {"-", "empty"});
    EXPECT_EQ(names, all);
    EXPECT_EQ(run.Status, 5);
    EXPECT_TRUE(Contains(run.Err, "empty: Nothing to Open: no .xsb, .sok or .txt")) << run.Err;
    EXPECT_FALSE(Contains(run.Err, "set: Nothing to Open")) << "all of it was met before";
    // What is named itself is taken as often as it is named, and what a list prints is a name.
    folder_.Write("a]", kOnePush);
    const std::vector<Json> named = Objects(Run({"--json", "a]", "a]"}).Out);
    ASSERT_EQ(named.size(), 2U);
    EXPECT_EQ(named[0].at("level"), "a]");
    const ProgramRun list = Run({"--list", "[a,b]", "set"});
    Strings listed;
    std::istringstream lines(list.Out);
    for (std::string line; std::getline(lines, line);) listed.push_back(line);
    EXPECT_EQ(listed, wanted);
}

// Every level of a collection, by number, by title, by its own name; a file without levels, one
// that is broken in part, and a level that no file has.
TEST_F(Cli, Collections) {
    const std::string two = "Two \"quoted\" \x1b";
    folder_.Write("album#1.txt", std::string("Title: The album\n\n") + kOnePush + "Title: One\n\n" +
                                     kThreePushes + "Title: " + two + "\nSolution: rRRR\n\n" +
                                     "#####\n#@$?#\n#####\n\n" + kTwoBoxes + "Title: Last one\n" +
                                     "Solution: RRlldRRurDlluuRRldddruulld\n");
    // Names that look like others: as printed, and with what begins a number or a title.
    for (const char* name : {"x\x1b", "12 \"x#y \"z# \"w.txt"}) folder_.Write(name, kOnePush);
    const std::string name2 = "album#1.txt#2 \"Two \"quoted\" \\x1b\"";
    struct Case {
        Strings Args;
        int Status;
        std::vector<int> Indexes;
    };
    const Case cases[] = {
        {{"album#1.txt"}, 0, {1, 2, 3}},
        {{"--level", "2-9,1", "album#1.txt", "one.xsb"}, 0, {1, 2, 3, 1}},
        {{"--level", "3", "album#1.txt", "one.xsb"}, 0, {3}},
        {{"--title", "one", "album#1.txt"}, 0, {1, 3}},
        {{"--title", "O?e", "album#1.txt"}, 0, {1}},
        {{"--title", "*t*", "--level", "3", "album#1.txt"}, 0, {3}},
        {{"album#1.txt#3"}, 0, {3}},
        {{name2}, 0, {2}},
        {{"one.xsb#1"}, 0, {1}},
        {{"--level", "2", "-"}, 0, {2}},
        {{"x\\x1b"}, 0, {1}},
        {{"12 \"x#y \"z# \"w.txt#1 \"t\""}, 0, {1}},
        {{"--level", "2", "one.xsb#1"}, 5, {}},
        {{"one.xsb#2"}, 5, {1}},
        {{"one.xsb#1x"}, 5, {1}},
        {{"album#1.txt#2 \"x"}, 5, {1}},
        {{"album#1.txt#4"}, 5, {1}},
        {{"--title", "nowhere", "album#1.txt"}, 5, {}},
    };
    for (const Case& c : cases) {
        Strings args = c.Args;
        args.insert(args.begin(), "--json");
        const ProgramRun run = Run(args, std::string(kOnePush) + "\n" + kThreePushes);
        SCOPED_TRACE(c.Args.back() + run.Out + run.Err);
        EXPECT_EQ(run.Status, c.Status);
        std::vector<int> indexes;
        for (const Json& object : Objects(run.Out)) indexes.push_back(object.at("index"));
        EXPECT_EQ(indexes, c.Indexes);
    }
    EXPECT_TRUE(Contains(Run({"--level", "9", "album#1.txt"}).Err, "no level has such a number"));
    const ProgramRun list = Run({"--list", "album#1.txt"});
    EXPECT_EQ(list.Status, 0);
    EXPECT_FALSE(Contains(Run({"--list", "album#1.txt#1", "missing.xsb"}).Err, "left out"));
    const ProgramRun wrong = Run({"--list", "missing.xsb", "album#1.txt#9", "wide.xsb"});
    EXPECT_EQ(wrong.Status, 5);
    EXPECT_EQ(wrong.Out, "wide.xsb\n");
    EXPECT_TRUE(Contains(wrong.Err, "missing.xsb: No such file")) << wrong.Err;
    EXPECT_TRUE(Contains(wrong.Err, "album#1.txt#9: the file has no level")) << wrong.Err;
    EXPECT_EQ(list.Out, "album#1.txt#1 \"One\"\n" + name2 + "\nalbum#1.txt#3 \"Last one\"\n");
    EXPECT_TRUE(Contains(list.Err, "album#1.txt: lines 14 to 16 left out: line 15, column 4"))
        << list.Err;

    const std::vector<Json> objects =
        Objects(Run({"--json", "--sol", "s/", "album#1.txt"}, "").Out);
    ASSERT_EQ(objects.size(), 3U);
    EXPECT_EQ(objects[1].at("title"), two);
    EXPECT_EQ(objects[1].at("file"), "album#1.txt");
    EXPECT_EQ(objects[1].at("recorded"),
              Json({{"solves", true}, {"pushes", 3}, {"moves", 4}, {"morePushes", 0}}));
    EXPECT_EQ(objects[2].at("recorded").at("solves"), false);
    EXPECT_FALSE(objects[2].at("recorded").contains("morePushes"));
    EXPECT_FALSE(objects[0].contains("recorded"));
    EXPECT_TRUE(fs::exists(folder_.Path("s/album#1-3.sol")));
    EXPECT_TRUE(
        Contains(Run({"album#1.txt"}).Out, "Recorded solution: 4/3, with the fewest pushes\n"));
}

// Read, solve, write, read: the same levels, with solutions.
TEST_F(Cli, LevelsWrittenAgain) {
    folder_.Write("album.txt", std::string("Author: Us\n\n") + kOnePush + "Title: One\n\n" +
                                   kThreePushes + "Title: Two\nSolution: rRllrrRR\n\n" +
                                   kavit::test::kUnsolvable + "Title: None\n");
    EXPECT_EQ(Run({"--output", "new.sok", "album.txt"}).Status, 3);
    const std::string written = folder_.Read("new.sok");
    EXPECT_TRUE(Contains(written, "Author: Us")) << written;
    const std::vector<Json> before = Objects(Run({"--json", "album.txt"}).Out);
    const std::vector<Json> after = Objects(Run({"--json", "new.sok"}).Out);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        for (const char* field : {"title", "status", "solution", "index", "BucketCnt"})
            EXPECT_EQ(after[i].at(field), before[i].at(field)) << i;
        EXPECT_EQ(after[i].contains("recorded"), i < 2);
    }
    EXPECT_EQ(after[1].at("recorded").at("moves"), 4) << "the longer one was kept";
    const ProgramRun failed = Run({"--output", "no/folder.xsb", "one.xsb"});
    EXPECT_EQ(failed.Status, 7);
    EXPECT_TRUE(Contains(failed.Err, "--output: ")) << failed.Err;
}

TEST_F(Cli, InvalidCharacters) {
    const ProgramRun taken = Run({"letter.xsb"});
    EXPECT_EQ(taken.Status, 0);
    EXPECT_EQ(taken.Err,
              "kavit-solve: letter.xsb: line 3, column 2: Invalid char 'x' in Xsb; Assumed Space\n"
              "kavit-solve: letter.xsb: 1 more of that kind\n");
    folder_.Write("tab.xsb", "#####\n#@$.#\n#\t###\n#####\n");
    EXPECT_FALSE(Contains(Run({"tab.xsb"}).Err, "more"));
    const ProgramRun refused = Run({"--strict", "letter.xsb"});
    EXPECT_EQ(refused.Status, 5);
    EXPECT_TRUE(Contains(refused.Err, "Invalid char 'x' in Xsb, line 3, column 2")) << refused.Err;
    folder_.Write("slip.xsb", "-####\n-#.##\n-#$ #\n-#@ #\nx#x #\n-####\n");
    const ProgramRun slip = Run({"slip.xsb"});
    EXPECT_TRUE(Contains(slip.Out, "Solution:  1/1")) << slip.Out;
    EXPECT_EQ(slip.Err, "kavit-solve: slip.xsb: line 5 has a '#' but is no row; left out\n");
}

TEST_F(Cli, StandardInputThatFails) {
    const ProgramRun run =
        RunSolve({.Args = {"-", "one.xsb"}, .InputFolder = true, .Folder = folder_.Path()});
    EXPECT_EQ(run.Status, 5);
    EXPECT_TRUE(Contains(run.Err, "-: can't open file, try again: reading failed")) << run.Err;
    EXPECT_TRUE(Contains(run.Out, "\nR\n")) << run.Out;
}

// Which files are there afterwards, what goes wrong, and the status.
TEST_F(Cli, SolutionFiles) {
    folder_.Write("pair.txt", std::string(kOnePush) + "\n" + kThreePushes);
    struct Case {
        const char* Args;
        int Status;
        const char* Files;
        std::string Says;
    };
    const Case cases[] = {
        {"--sol x one.xsb", 0, "x", ""},
        {"--sol new/dir/ one.xsb", 0, "new/dir/one.sol", ""},
        {"--sol empty one.xsb none.xsb", 3, "empty/one.sol", ""},
        {"--sol solo pair.txt#1", 0, "solo", ""},
        {"--sol pair pair.txt", 0, "pair/pair-1.sol pair/pair-2.sol", ""},
        {"--sol all one.xsb two.xsb", 0, "all/one.sol all/two.sol", ""},
        {"--sol e/ --expert --hash 2 --opt-level 0 one.xsb", 0, "e/one_none_2.sol", ""},
        {"--sol in/ -", 0, "in/standard-input.sol", ""},
        {"--sol one.xsb one.xsb", 7, "", "one.xsb: this is a level file"},
        {"--sol twice one.xsb ./one.xsb two.xsb", 7, "twice/one.sol twice/two.sol",
         "twice/one.sol: holds the solution of one.xsb"},
        {"--sol missing\033/x one.xsb", 7, "", "missing\\x1b/x\": folder \"missing\\x1b\""},
        {"--sol /proc/nothing/ one.xsb none.xsb", 3, "", "/proc/nothing"},
    };
    for (const Case& c : cases) {
        const ProgramRun run = Run(Words(c.Args), kOnePush);
        SCOPED_TRACE(c.Args + run.Err);
        EXPECT_EQ(run.Status, c.Status);
        EXPECT_TRUE(Contains(run.Out, "\nR\n")) << "the answer itself: " << run.Out;
        EXPECT_TRUE(Contains(run.Err, c.Says));
        EXPECT_EQ(Contains(run.Err, ".xsb: "), !c.Says.empty());
        for (const std::string& file : Words(c.Files)) {
            EXPECT_TRUE(Contains(folder_.Read(file), "\\RESULT: ")) << file;
        }
    }
    EXPECT_EQ(folder_.Read("one.xsb"), kOnePush);
    EXPECT_FALSE(Contains(folder_.Read("x"), "HashCnt"));
    EXPECT_TRUE(Contains(folder_.Read("e/one_none_2.sol"), "\\HashCnt: "));
    EXPECT_TRUE(Contains(folder_.Read("in/standard-input.sol"), "#@$.#\r\n"));
}

TEST_F(Cli, Dumps) {
    const std::string options = "--dump-levels d --dump-position 2 --expert ";
    EXPECT_EQ(Run(Words(options + "three.xsb none.xsb solved.xsb three.xsb")).Status, 3);
    for (const char* base : {"three_some", "none_some"}) {
        const std::string levels = folder_.Read(std::string("d_") + base + ".txt");
        EXPECT_EQ(levels.rfind(std::string(base) + ":  ForwTopEnd", 0), 0U) << levels;
        EXPECT_TRUE(Contains(levels, "SeaCnt = 001"));
    }
    const std::string line = " Bucket: ( 0002)  [ 002 -0001 020 000] [ 25 20]\r\n";
    EXPECT_EQ(folder_.Read("three_some_Dist.txt"), line + line) << "one for each solve";
    EXPECT_FALSE(fs::exists(folder_.Path("d_solved_some.txt"))) << "there was no search";

    for (const char* stored : {"1", "4"})
        EXPECT_EQ(Run({"--dump-position", stored, "three.xsb"}).Status, 0);
    const ProgramRun none = Run({"--dump-position", "99", "three.xsb"});
    EXPECT_EQ(none.Status, 7);
    EXPECT_TRUE(Contains(none.Err, "three.xsb: There is no position 99; 1 to 4 are stored"));
    EXPECT_TRUE(Contains(none.Out, "rRRR"));
}

// A reader that goes away is nothing to talk about; a disk that is full is.
TEST_F(Cli, StandardOutputThatFails) {
    struct Case {
        ProgramSetup::Stdout Out;
        std::string Says;
    };
    const Case cases[] = {
        {ProgramSetup::Stdout::ClosedReader, ""},
        {ProgramSetup::Stdout::Closed, "standard output: Bad file descriptor"},
        {ProgramSetup::Stdout::Full, "standard output: No space left on device"},
    };
    for (const Case& c : cases) {
        const ProgramRun run = RunSolve(
            {.Args = Words("--sol s/ one.xsb two.xsb"), .Out = c.Out, .Folder = folder_.Path()});
        EXPECT_EQ(run.Status, 7);
        EXPECT_TRUE(Contains(run.Err, c.Says)) << run.Err;
        EXPECT_EQ(run.Err.empty(), c.Says.empty()) << run.Err;
        EXPECT_FALSE(Contains(folder_.Read("s/one.sol"), "positions"));
        EXPECT_FALSE(fs::exists(folder_.Path("s/two.sol"))) << "it went on without a reader";
    }
}

// The progress bar shows that the search runs: then the signal comes, once or twice.
TEST_F(Cli, SignalsAndProgress) {
    for (const int number : {SIGINT, SIGTERM}) {
        ProgramSetup setup;
        setup.Args = Words(
            "--json --blocks 15 --max-positions 12000000 --output all.sok one.xsb endless.xsb "
            "two.xsb three.xsb");
        setup.Folder = folder_.Path();
        setup.ErrTerminal = true;
        bool sent = false;
        setup.OnErr = [&](pid_t program, const std::string& err) {
            if (!sent && Contains(err, " positions, ")) kill(program, number);
            sent = sent || Contains(err, " positions, ");
        };
        const ProgramRun run = RunSolve(setup);
        EXPECT_EQ(run.Status, 8);
        EXPECT_TRUE(sent) << "no progress bar: " << run.Err;
        // Each line is shorter than the terminal is wide, or it could not be erased.
        for (std::size_t at = 0; (at = run.Err.find("\x1b[K[", at)) != std::string::npos; ++at)
            EXPECT_LT(run.Err.find('\r', at) - (at + 3), 50U) << run.Err;
        EXPECT_TRUE(Contains(run.Err, "stopped before two.xsb")) << run.Err;
        EXPECT_FALSE(Contains(run.Err, "stopped before three.xsb")) << run.Err;
        EXPECT_TRUE(Contains(run.Err, "slowest: endless.xsb ")) << run.Err;
        EXPECT_EQ(Run({"--list", "all.sok"}).Out, "all.sok#1\nall.sok#2\nall.sok#3\nall.sok#4\n");
        const std::vector<Json> objects = Objects(run.Out);
        ASSERT_EQ(objects.size(), 2U) << run.Out;
        EXPECT_EQ(objects[1].at("result"), 8);
        EXPECT_EQ(objects[1].at("message"), "Interrupted by user !");
        EXPECT_GT(objects[1].at("BucketCnt"), 0);
    }
}

TEST_F(Cli, SecondSignalEndsAtOnce) {
    // Runs until it waits for its input, and then does what is asked, once.
    const auto disturb = [&](const std::function<void(pid_t)>& how) {
        ProgramSetup setup{.Args = Words("one.xsb missing.xsb -"), .HoldInput = true};
        setup.Folder = folder_.Path();
        int times = 0;
        setup.OnErr = [&](pid_t program, const std::string& err) {
            if (Contains(err, "missing.xsb") && times++ == 0) how(program);
        };
        return RunSolve(setup);
    };
    const ProgramRun once = disturb([](pid_t program) { kill(program, SIGINT); });
    // The first one ends the wait for input, as it ends a search; what was known is there.
    EXPECT_EQ(once.Status, 5) << once.Err;
    EXPECT_TRUE(Contains(once.Out, "\nR\n"));
    // One press of a key that reaches the program by two ways.
    for (int round = 0; round < 20; ++round) {
        const ProgramRun both = disturb([&](pid_t program) {
            for (int times = 0; times < 3; ++times, usleep(100)) kill(program, SIGINT);
        });
        EXPECT_EQ(both.Status, 5) << round;
    }
    const ProgramRun twice = disturb([](pid_t program) {
        // Both wait for it, and arrive together.
        for (const int number : {SIGSTOP, SIGINT, SIGTERM, SIGCONT}) kill(program, number);
    });
    EXPECT_GE(twice.Status, 128);
}

// While a solution is written, here to a pipe that nobody reads yet, even a second signal waits.
TEST_F(Cli, SignalsWaitForAWholeFile) {
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    ProgramSetup setup{.Args = Words("--sol pipe one.xsb")};
    setup.Folder = folder_.Path();
    std::thread user;
    int pipe = -1;
    setup.OnStart = [&](pid_t program) {
        user = std::thread([&, program] {
            const std::string status = "/proc/" + std::to_string(program) + "/status";
            const std::regex held("SigBlk:\t[0-9a-f]*[2367abef]\n");  // SIGINT is its second bit
            for (int i = 0; i < 3000; ++i, usleep(1000))
                if (std::regex_search(kavit::test::ReadWholeFile(status), held)) break;
            for (const int number : {SIGINT, SIGTERM}) kill(program, number);
            pipe = open(folder_.Path("pipe").c_str(), O_RDWR | O_NONBLOCK);
        });
    };
    EXPECT_GE(RunSolve(setup).Status, 128);
    user.join();
    std::array<char, 1000> written{};
    EXPECT_GT(read(pipe, written.data(), written.size() - 1), 0);
    close(pipe);
    EXPECT_TRUE(Contains(written.data(), "\\Best Solution between 1 analyzed\r\n"));
}

TEST_F(Cli, LevelsThatVanishOrChange) {
    fs::create_directory(folder_.Path("set"));
    for (const char* name : {"set/b.xsb", "set/c.xsb"}) folder_.Write(name, kOnePush);
    // The first level is a pipe: while the program waits for it, the folder has been listed.
    ASSERT_EQ(mkfifo(folder_.Path("set/a.xsb").c_str(), 0600), 0);
    ProgramSetup setup;
    setup.Args = {"--json", "set/a.xsb", "set"};
    setup.Folder = folder_.Path();
    std::thread writer;
    setup.OnStart = [&](pid_t) {
        writer = std::thread([&] {
            std::ofstream pipe(folder_.Path("set/a.xsb"));  // goes on when the program opens it
            fs::remove(folder_.Path("set/b.xsb"));
            folder_.Write("set/c.xsb", "no level at all\n");
            pipe << kOnePush;
        });
    };
    const ProgramRun run = RunSolve(setup);
    writer.join();
    std::vector<int> results;
    for (const Json& object : Objects(run.Out)) results.push_back(object.at("result"));
    EXPECT_EQ(results, std::vector<int>({0, 106, 2})) << run.Out;
    EXPECT_EQ(run.Status, 5);
    EXPECT_TRUE(Contains(run.Err, "b.xsb: ") && Contains(run.Err, "No such file")) << run.Err;
}

}  // namespace
