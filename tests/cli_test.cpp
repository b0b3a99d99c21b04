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
#include <set>
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
        folder_.Write("noman.xsb", "#####\n# $.#\n#####\n");
        folder_.Write("men.xsb", "#####\n#@$.#\n#@  #\n#####\n");
        folder_.Write("open.xsb", "#####\n#@$.\n#####\n");
        folder_.Write("apart.xsb", "########\n#@$.#$.#\n########\n");
        folder_.Write("wide.xsb", "####################\n");
        folder_.Write("letter.xsb", "#####\n#@$.#\n#xy##\n#####\n");
        folder_.Write("tab.xsb", "#####\n#@$.#\n#\t###\n#####\n");
        folder_.Write("slip.xsb", "-####\n-#.##\n-#$ #\n-#@ #\nx#x #\n-####\n");
        folder_.Write("nine.xsb", "############\n#@$.$.$.$.$#\n#.$.$.$.$..#\n############\n");
        folder_.Write("pair.txt", std::string(kOnePush) + "Title: One\n\n" + kThreePushes);
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

// With "#" for what differs from machine to machine and from run to run, and each line behind
// `sign`.
std::string Lines(const std::string& sign, std::string text) {
    for (const char* figure :
         {R"-((s in )[0-9.]+( s:))-",
          R"-(()[0-9.]+( (?:search|moves pass|fewest moves|proof|bytes a position)))-",
          R"-(((?:seconds|[a-z]+Seconds|bytesPerPosition|threads)":)[0-9.e-]+())-",
          R"-((this machine can give )[0-9.]+ .?B())-", R"-((\\Time: +)[0-9.]+())-"})
        text = std::regex_replace(text, std::regex(figure), "$1#$2");
    std::string result;
    std::istringstream lines(std::regex_replace(text, std::regex("\r"), "\\r"));
    for (std::string line; std::getline(lines, line);)
        if (!Contains(line, "slowest: ")) result += sign + line + "\n";  // on a slow machine
    return result;
}

// All that runs say and write. "$" is in front of the arguments, "<" of what standard input holds,
// "!" of lines to standard error, ">" of files, "=" of the status. What changes on purpose is taken
// over from the file that is left where the test ran.
TEST_F(Cli, SaysAndWritesAsWritten) {
    fs::copy(KAVIT_EXAMPLES_FOLDER, folder_.Path("levels"));
    const auto files = [this] {
        std::set<fs::path> all;
        for (const auto& entry : fs::recursive_directory_iterator(folder_.Path()))
            if (entry.is_regular_file()) all.insert(entry.path());
        return all;
    };
    const std::set<fs::path> before = files();
    std::istringstream script(kavit::test::ReadWholeFile(KAVIT_TESTS_FOLDER "/cli.txt"));
    std::ofstream left("cli.txt");
    std::string seen;
    std::string wanted;
    for (std::string line; std::getline(script, line);) {
        wanted += line + "\n";
        if (line[0] != '$') {
            if (line.rfind("= ", 0) != 0) continue;
            EXPECT_EQ(seen, wanted);
            left << seen;
            seen = wanted = "";
            continue;
        }
        const std::size_t input = line.find(" < ");
        const ProgramRun run =
            Run(Words(line.substr(1, input - 1)),
                input == std::string::npos ? "" : folder_.Read(line.substr(input + 3)));
        seen += wanted + Lines("", run.Out) + Lines("! ", run.Err);
        for (const fs::path& file : files()) {
            if (before.count(file) != 0) continue;
            const std::string name = file.lexically_relative(folder_.Path());
            seen += "> " + name + "\n" + Lines("> ", folder_.Read(name));
            fs::remove(file);
        }
        seen += "= " + std::to_string(run.Status) + "\n";
    }
}

// Long enough for a progress bar, which is for nobody here.
TEST_F(Cli, TimeOut) {
    const ProgramRun run =
        Run(Words("--json --max-time 1 --blocks 15 --max-positions 12000000 endless.xsb"));
    EXPECT_EQ(run.Status, 8);
    EXPECT_FALSE(Contains(run.Err, "\x1b"));
    const std::vector<Json> objects = Objects(run.Out);
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_EQ(objects[0].at("message"), "Time Out");
    EXPECT_GT(objects[0].at("lowerBound"), 1);
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

// The store by positions, by bytes and by a share; boxes as given, or as the level needs.
TEST_F(Cli, StoreSizes) {
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
    folder_.Write(
        "album.txt",
        std::string("Author: Us\n\n") + kOnePush + "Title: One\n\n" + kThreePushes +
            "Title: Two\nSolution: rRllrrRR\n\n#######\n#.$@$.#\n#######\nSolution: RlL\n\n" +
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
        EXPECT_EQ(after[i].contains("recorded"), i < 3);
    }
    EXPECT_EQ(after[1].at("recorded").at("moves"), 4) << "the longer one was kept";
    const ProgramRun failed = Run({"--output", "no/folder.xsb", "one.xsb"});
    EXPECT_EQ(failed.Status, 7);
    EXPECT_TRUE(Contains(failed.Err, "--output: ")) << failed.Err;
}

TEST_F(Cli, StandardInputThatFails) {
    const ProgramRun run =
        RunSolve({.Args = {"-", "one.xsb"}, .InputFolder = true, .Folder = folder_.Path()});
    EXPECT_EQ(run.Status, 5);
    EXPECT_TRUE(Contains(run.Err, "-: can't open file, try again: reading failed")) << run.Err;
    EXPECT_TRUE(Contains(run.Out, "\nR\n")) << run.Out;
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
        const ProgramRun list =
            RunSolve({.Args = {"--list", "one.xsb"}, .Out = c.Out, .Folder = folder_.Path()});
        EXPECT_EQ(list.Status, 7);
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
        const unsigned room = number == SIGINT ? 70 : 80;  // what is not told is taken for 80
        setup.ErrColumns = number == SIGINT ? 70 : 0;
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
            EXPECT_LT(run.Err.find('\r', at) - (at + 3), room) << run.Err;
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

// What the bar says of each part of a solve; ended when the last has been seen.
TEST_F(Cli, ProgressOfEachPart) {
    const std::regex parts[] = {
        std::regex(R"(\[#{0,3}\.+\] [0-9]+k positions, [0-9]+ s, at least [0-9]+ pushes)"
                   R"(( \(room for [0-9]+\))?, layers [0-9]+\+[0-9]+, now [0-9]+k?, [0-9.]+[kM] )"
                   R"(offers/s, [0-9.]+ MB)"),
        std::regex(
            R"(1113k positions, [0-9]+ s, improving moves, layers [0-9]+\+[0-9]+, [0-9.]+[kM] )"
            R"(offers/s, 23 MB)"),
        std::regex(R"([0-9]+k positions, [0-9]+ s, at least 1[0-9][0-9] moves, [0-9.]+[kM] )"
                   R"(offers/s, [0-9.]+ MB)")};
    ProgramSetup setup;
    setup.Args = {"--opt-level", "4", KAVIT_OWN_LEVELS "/big_yard.xsb"};
    setup.ErrColumns = 200;
    setup.OnErr = [&](pid_t program, const std::string& err) {
        if (std::regex_search(err, parts[2])) kill(program, SIGTERM);
    };
    const ProgramRun run = RunSolve(setup);
    for (const std::regex& part : parts)
        EXPECT_TRUE(std::regex_search(run.Err, part)) << &part - parts << '\n' << run.Err;
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
    bool blocked = false;
    int pipe = -1;
    setup.OnStart = [&](pid_t program) {
        user = std::thread([&, program] {
            const std::string status = "/proc/" + std::to_string(program) + "/status";
            const std::regex held("SigBlk:\t[0-9a-f]*[4567cdef]..[2367abef]\n");  // bits 2 and 15
            for (int i = 0; i < 3000 && !blocked; ++i, usleep(1000))
                blocked = std::regex_search(kavit::test::ReadWholeFile(status), held);
            for (const int number : {SIGINT, SIGTERM}) kill(program, number);
            pipe = open(folder_.Path("pipe").c_str(), O_RDWR | O_NONBLOCK);
        });
    };
    EXPECT_GE(RunSolve(setup).Status, 128);
    user.join();
    EXPECT_TRUE(blocked);
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
