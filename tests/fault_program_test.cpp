// kavit-solve disturbed from outside, at moments that nobody chose: signals, levels that go away.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "support/levels.h"
#include "support/program.h"
#include "support/random_level.h"
#include "support/temp_folder.h"

namespace kavit::test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kLevel = "########\n#@$  . #\n# $  . #\n#  #   #\n########\n";

// Every line is a whole object.
void CheckObjects(const std::string& out, std::size_t most) {
    EXPECT_TRUE(out.empty() || out.back() == '\n') << out;
    std::istringstream lines(out);
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_TRUE(nlohmann::json::accept(line)) << line;
    EXPECT_LE(count, most);
}

// Whatever is there is whole: a solution file ends with its last line, and no other file is left.
void CheckSolutionFiles(const fs::path& folder) {
    if (!fs::exists(folder)) return;
    for (const auto& entry : fs::directory_iterator(folder)) {
        EXPECT_EQ(entry.path().extension(), ".sol") << entry.path();
        const std::string text = ReadWholeFile(entry.path().string());
        EXPECT_NE(text.find("\\RESULT: "), std::string::npos) << entry.path() << "\n" << text;
        EXPECT_TRUE(text.ends_with("\r\n")) << text;
    }
}

// Small levels, and behind them one that no machine is through with: what the signal meets depends
// on the moment alone, and later moments are tried until some came while it worked.
TEST(FaultProgram, SignalsAtAnyMoment) {
    const TempFolder folder;
    constexpr int kLevels = 12;
    constexpr int kMostRounds = 400;
    ProgramSetup setup;
    setup.Args = {"--json", "--sol", "out/", "--blocks", "15"};
    setup.Folder = folder.Path();
    for (int i = 0; i < kLevels; ++i) {
        const std::string name = "level" + std::to_string(i) + ".xsb";
        folder.Write(name, i + 1 < kLevels ? kLevel : kEndless);
        setup.Args.push_back(name);
    }
    Random random(20);
    int stopped = 0;
    for (int round = 0; round < kMostRounds && (round < 30 || stopped < 8); ++round) {
        const int number = round % 2 == 0 ? SIGINT : SIGTERM;
        const auto wait = static_cast<useconds_t>(random.Pick(0, 3000 * (round + 1)));
        std::thread sender;
        setup.OnStart = [&](pid_t program) {
            sender = std::thread([=] {
                usleep(wait);
                kill(program, number);
            });
        };
        const ProgramRun run = RunSolve(setup);
        sender.join();
        // Before it can listen to signals, one ends it as ever.
        EXPECT_TRUE(run.Status == 8 || run.Status == 128 + number) << run.Status;
        stopped += run.Status == 8 ? 1 : 0;
        CheckObjects(run.Out, kLevels);
        CheckSolutionFiles(folder.Path("out"));
        fs::remove_all(folder.Path("out"));
    }
    EXPECT_GE(stopped, 8) << "no signals came while it worked";
}

TEST(FaultProgram, LevelsThatVanishOrChange) {
    const TempFolder folder;
    fs::create_directory(folder.Path("set"));
    for (const char* name : {"set/b.xsb", "set/c.xsb"}) folder.Write(name, kLevel);
    // The first level is a pipe: while the program waits for it, the folder has been listed.
    ASSERT_EQ(mkfifo(folder.Path("set/a.xsb").c_str(), 0600), 0);
    ProgramSetup setup;
    setup.Args = {"--json", "set/a.xsb", "set"};
    setup.Folder = folder.Path();
    std::thread writer;
    setup.OnStart = [&](pid_t) {
        writer = std::thread([&] {
            std::ofstream pipe(folder.Path("set/a.xsb"));  // goes on when the program opens it
            fs::remove(folder.Path("set/b.xsb"));
            folder.Write("set/c.xsb", "no level at all\n");
            pipe << kLevel;
        });
    };
    const ProgramRun run = RunSolve(setup);
    writer.join();
    std::istringstream lines(run.Out);
    std::vector<int> results;
    for (std::string line; std::getline(lines, line);)
        results.push_back(nlohmann::json::parse(line).at("result"));
    EXPECT_EQ(results, std::vector<int>({0, 106, 2})) << run.Out;
    EXPECT_EQ(run.Status, 5);
    EXPECT_NE(run.Err.find("b.xsb: "), std::string::npos) << run.Err;
    EXPECT_NE(run.Err.find("No such file"), std::string::npos) << run.Err;
}

}  // namespace
}  // namespace kavit::test
