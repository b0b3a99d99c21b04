#include "app/shell/shell.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>

#include "support/failing_new.h"
#include "support/fake_view.h"
#include "support/levels.h"
#include "support/temp_folder.h"

namespace kavit {
namespace {

using test::kEasy;
using test::kLong;
using test::kUnsolvable;
using C = Control;

class ShellTest : public testing::Test {
  protected:
    void SetUp() override {
        Settings small;
        small.Fields = {200000, 8, 300};
        small.NoWriteSol = true;
        folder.Write("Kavit.ini", SettingsText(small));
        Begin();
    }
    bool Begin() {
        shell = std::make_unique<Shell>(view, clock, "kavit", folder.Path());
        return shell->FormLoad();
    }
    void Load(const std::string& name, const std::string& text) {
        shell->OpenGiven(folder.Write(name, text));
    }
    void AskForSolutionFiles() {
        view.SetChecked(C::chkNoWriteSol, false);
        shell->NoWriteSolClicked();
    }
    void Solve(const std::string& text = kEasy) {
        Load("level.xsb", text);
        shell->SolveClicked();
    }
    void Animate(int ticks) {
        for (int i = 0; i < ticks; ++i) shell->AnimTick();
    }

    TempFolder folder;
    FakeView view;
    FakeClock clock;
    std::unique_ptr<Shell> shell;
};

TEST_F(ShellTest, StartUp) {
    EXPECT_EQ(view.Buttons(), "-SOLVE -ANIM -CLEAR");
    EXPECT_EQ(view.Lines(),
              "You can edit or import your board (File Menu)|or read it from a file (.xsb)");
    EXPECT_EQ(view.Title, "kavit");
    EXPECT_EQ(view.Text(C::lblTimer), "/300");
    EXPECT_EQ(view.Text(C::lblOpt), "S");
    EXPECT_EQ(view.Text(C::lblSize), "200000/8");
    EXPECT_EQ(view.ProgressMost, 200000);
    for (const C hidden : {C::mnuExample, C::mnuSearch, C::mnuHasher, C::mnuOpt0, C::mnuOpt3,
                           C::mnuOptSpec, C::frmSizes, C::frmCommands, C::rtxtImport})
        EXPECT_FALSE(view.Shown(hidden)) << kControlNames[static_cast<std::size_t>(hidden)];
    for (const C checked : {C::mnuSea3, C::mnuHash0, C::mnuOpt1})
        EXPECT_TRUE(view.Checked(checked));
}

// The captions row by row.
TEST_F(ShellTest, CaptionsOfTheSolveButton) {
    Load("bad.xsb", "#####\n#@$ #\n#####\n");
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    shell->CopySolution();
    EXPECT_EQ(view.Text(C::txtRight), "Nothing to Show");
    shell->SolveClicked();  // the board check fails
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    EXPECT_EQ(view.Lines(), "Strange mapping ???|");
    EXPECT_EQ(view.Title, "Solving bad");

    std::string during;
    view.OnEvents = [&] {
        if (shell->Solving() && during.empty()) during = view.Buttons();
    };
    Solve(kUnsolvable);
    EXPECT_EQ(during, "STOP -ANIM -CLEAR");
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    EXPECT_EQ(view.Text(C::txtLeft), "There is no solution !");

    Solve();
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
    EXPECT_EQ(view.Lines(), "Solution:  3/2|solution remained in Clipboard and 'TEXT'");
    EXPECT_EQ(view.Clip, "rRR");
    EXPECT_FALSE(view.On(C::TimerWatch));
    shell->CopyBoard();
    EXPECT_EQ(view.Clip, "#######\n#@ $ .#\n#######\n");
    shell->CopySolution();
    EXPECT_EQ(view.Clip, "rRR");

    shell->SolveClicked();
    EXPECT_EQ(view.Buttons(), "RETURN -ANIM CLEAR");
    EXPECT_TRUE(view.Shown(C::rtxtImport));
    EXPECT_TRUE(view.ReadOnly);
    EXPECT_NE(view.Text(C::rtxtImport).find("RESULT:  3/ 2"), std::string::npos);

    shell->SolveClicked();
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
    EXPECT_FALSE(view.Shown(C::rtxtImport));

    shell->ImportBoard();
    EXPECT_EQ(view.Buttons(), "RETURN -ANIM CLEAR");
    shell->SolveClicked();  // nothing was typed: the solution is still there
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");

    shell->LevelCommand(1);
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    EXPECT_EQ(view.Lines(), "You can edit this board (Menu File)|");
    shell->SolveClicked();
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
    shell->HashClicked(2);
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    EXPECT_TRUE(view.Checked(C::mnuHash2));
}

TEST_F(ShellTest, OutOfMemoryKeepsTheCaptionUntilRestart) {
    view.SetText(C::cmbMemory, "50");
    shell->ApplyClicked();
    Solve(kLong);
    EXPECT_EQ(view.Buttons(), "STOP -ANIM -CLEAR");
    EXPECT_EQ(view.Text(C::txtLeft), "Out of memory before a solution");
    EXPECT_FALSE(shell->Solving());
    shell->SolveClicked();
    EXPECT_EQ(view.Buttons(), "STOP -ANIM -CLEAR");
    shell->LevelCommand(0);  // cancelled
    EXPECT_EQ(view.Buttons(), "STOP -ANIM -CLEAR");
    shell->LevelCommand(1);
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
}

TEST_F(ShellTest, StopAndTimeOut) {
    const auto tickAt = [this](double seconds) {
        clock.Seconds = seconds;
        shell->WatchTick();
    };
    const struct {
        const char* How;
        double Begun;
        std::function<void()> Do;
        const char* Left;
    } cases[] = {
        {"button", 1000, [&] { shell->SolveClicked(); }, "Interrupted by user !"},
        {"Escape", 1000, [&] { shell->EscapePressed(); }, "Interrupted by user !"},
        {"limit", 1000, [&] { tickAt(1300); }, "Time Out"},
        {"limit past midnight", 86300, [&] { tickAt(200); }, "Time Out"},
    };
    for (const auto& row : cases) {
        clock.Seconds = row.Begun;
        int yields = 0;
        view.OnEvents = [&] {
            if (shell->Solving() && ++yields == 20) row.Do();
        };
        Solve(kLong);
        EXPECT_EQ(view.Text(C::txtLeft), row.Left) << row.How;
        EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR") << row.How;
        EXPECT_FALSE(shell->Solving());
        EXPECT_LT(yields, 40) << row.How;
    }
    EXPECT_EQ(view.Text(C::lblTimer), "300/300");
    // The same window solves again.
    view.OnEvents = nullptr;
    Solve();
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
}

// The search's solution is kept and shown.
TEST_F(ShellTest, OptimizerThatEndsEarly) {
    shell->OptClicked(3);
    view.OnEvents = [&] {
        if (view.Text(C::txtLeft).starts_with("Improving")) shell->EscapePressed();
    };
    for (const char* left :
         {"Interrupted by user but there is a solution", "Out of memory but there is a solution"}) {
        shell->OpenGiven(KAVIT_EXAMPLES_FOLDER "/02-corner-shop.xsb");
        shell->SolveClicked();
        EXPECT_EQ(view.Lines(), std::string(left) + "| 42/13");
        EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
        view.OnEvents = nullptr;
        view.SetText(C::cmbMemory, "98");
        shell->ApplyClicked();
    }
}

// Wherever memory runs out in a solve, the window says so and works on.
TEST_F(ShellTest, NoMemoryInTheMiddle) {
    int failures = 0;
    bool failed = true;
    for (int at = 1; failed && at < 1000; ++at) {
        Load("level.xsb", kEasy);
        try {
            const test::FailingNew failing(at);
            shell->SolveClicked();
            failed = failing.Failed();
        } catch (const std::bad_alloc&) {
            continue;  // before or behind the solve
        }
        if (view.TakeBox() != "Insuficient Memory") continue;
        ++failures;
        EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR") << at;
        EXPECT_FALSE(shell->Solving() || view.On(C::TimerWatch)) << at;
    }
    EXPECT_GE(failures, 10);
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
}

// Escape leaves the innermost thing that goes on.
TEST_F(ShellTest, Escape) {
    for (const auto leave : {&Shell::EscapePressed, &Shell::SolveClicked}) {
        shell->ImportBoard();
        (*shell.*leave)();
        EXPECT_FALSE(view.Shown(C::rtxtImport));
        EXPECT_EQ(view.Buttons(), "SOLVE -ANIM -CLEAR");
    }
    Solve();
    shell->ConfigureClicked();
    shell->AnimMouseUp(true);
    shell->EscapePressed();
    Animate(1);
    EXPECT_EQ(view.Text(C::btnANIM), "CONT< >REPEAT");
    EXPECT_TRUE(view.Shown(C::frmSizes));
    shell->EscapePressed();
    EXPECT_FALSE(view.Shown(C::frmSizes));
}

// What a command answers while the solver, the animation or the editor is at work: "" where it goes
// ahead, nothing where that would end the test.
struct GuardCase {
    const char* Command;
    std::function<void(Shell&)> Do;
    const char* Solving = "Solver is running";
    const char* Animating = "Stop Animation first";
    const char* Editing = "You are editing";
};

constexpr const char* kCantChange = "Can't change; Solver is running";
const GuardCase kGuards[] = {
    {"Open", [](Shell& s) { s.LevelCommand(0); }},
    {"Restart", [](Shell& s) { s.LevelCommand(1); }},
    {"Next", [](Shell& s) { s.LevelCommand(2); }},
    {"Previous", [](Shell& s) { s.LevelCommand(3); }},
    {"drop", [](Shell& s) { s.OpenGiven("x.xsb"); }},
    {"Import", [](Shell& s) { s.ImportBoard(); }},
    {"paste", [](Shell& s) { s.PasteLevel(); }},
    {.Command = "Edit", .Do = [](Shell& s) { s.EditBoard(); }, .Editing = ""},
    {.Command = "Hash", .Do = [](Shell& s) { s.HashClicked(1); }, .Editing = ""},
    {.Command = "Example", .Do = [](Shell& s) { s.ExampleCommand(1); }, .Editing = nullptr},
    {"Optimizer", [](Shell& s) { s.OptClicked(2); }, kCantChange},
    {"Search", [](Shell& s) { s.SeaClicked(1); }, kCantChange, "", ""},
    {"Special", [](Shell& s) { s.OptSpecClicked(); }, kCantChange, "", ""},
    {"Configure", [](Shell& s) { s.ConfigureClicked(); }, kCantChange, "", ""},
    {"Exit", [](Shell& s) { s.ExitClicked(); }, "Solver is running", nullptr, nullptr},
};

TEST_F(ShellTest, Guards) {
    std::size_t next = 0;
    view.OnEvents = [&] {
        if (!shell->Solving() || next == std::size(kGuards)) return;
        const GuardCase& row = kGuards[next++];
        row.Do(*shell);
        EXPECT_EQ(view.TakeBox(), row.Solving) << row.Command;
        EXPECT_EQ(view.Buttons(), "STOP -ANIM -CLEAR") << row.Command;
        EXPECT_EQ(view.Quits, 0);
        if (next == std::size(kGuards)) shell->SolveClicked();
    };
    Solve(kLong);
    EXPECT_EQ(next, std::size(kGuards));
    EXPECT_TRUE(view.Checked(C::mnuSea3) && view.Checked(C::mnuOpt1) && view.Checked(C::mnuHash0));
    view.OnEvents = nullptr;

    Solve();
    shell->AnimMouseUp(true);
    for (const GuardCase& row : kGuards) {
        if (row.Animating == nullptr) continue;
        row.Do(*shell);
        EXPECT_EQ(view.TakeBox(), row.Animating) << row.Command;
        EXPECT_EQ(view.Text(C::btnANIM), "STOP") << row.Command;
    }
    shell->SolveClicked();  // TEXT
    EXPECT_EQ(view.TakeBox(), "Stop Animation first");
    shell->AnimMouseUp(true);
    shell->AnimTick();

    shell->SolveClicked();
    shell->EditBoard();
    EXPECT_EQ(view.TakeBox(), "You are seeing TEXT");
    shell->SolveClicked();
    shell->EditBoard();
    for (const GuardCase& row : kGuards) {
        if (row.Editing == nullptr) continue;
        row.Do(*shell);
        EXPECT_EQ(view.TakeBox(), row.Editing) << row.Command;
        EXPECT_EQ(view.Text(C::btnANIM), "DONE") << row.Command;
    }
}

TEST_F(ShellTest, ExpertMenus) {
    for (const int tool : {2, 3, 1, 0}) shell->SelectTool(tool);  // a wrong code
    shell->OptLabelDoubleClicked();
    EXPECT_EQ(view.TakeBox(), "");
    EXPECT_FALSE(view.Shown(C::mnuSearch));
    for (const int tool : {9, 2, 3, 1}) shell->SelectTool(tool);
    shell->OptLabelDoubleClicked();
    EXPECT_EQ(view.TakeBox(),
              "You found an EsterEgg\r\n\r\nLook at Search, Optimizer and Hash menus");
    for (const C menu : {C::mnuSearch, C::mnuOptSpec, C::mnuHasher, C::mnuOpt0, C::mnuOpt3}) {
        EXPECT_TRUE(view.Shown(menu));
    }
    EXPECT_FALSE(view.Shown(C::mnuExample));
    shell->OptLabelDoubleClicked();
    EXPECT_EQ(view.TakeBox(), "");

    // From now on file names tell how the level was solved.
    AskForSolutionFiles();
    shell->OptClicked(2);
    shell->OptSpecClicked();
    EXPECT_TRUE(view.Underlined(C::lblOpt));
    shell->HashClicked(1);
    Load("abc.xsb", kEasy);
    shell->SolveClicked();
    EXPECT_EQ(view.AskedName, "abc_more_sp_1.sol");
    shell->OptClicked(1);
    EXPECT_FALSE(view.Underlined(C::lblOpt));
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    shell->OptClicked(3);
    EXPECT_EQ(view.Text(C::lblOpt), "P");
    shell->SolveClicked();
    EXPECT_EQ(view.AskedName, "abc_plus_1.sol");
    EXPECT_EQ(view.Text(C::txtLeft), "Best solution   3/2");
}

TEST_F(ShellTest, FolderOfLevels) {
    shell->LevelCommand(2);
    EXPECT_EQ(view.TakeBox(), "Must Open First");
    folder.Write("lev2.xsb", kEasy);
    folder.Write("lev10.xsb", "#####\n#x$.#\n#####\n");
    view.File = folder.Path("lev2.xsb");
    shell->LevelCommand(0);
    EXPECT_EQ(view.Title, "kavit lev2");
    shell->LevelCommand(3);
    EXPECT_EQ(view.TakeBox(), "No previous levels");
    EXPECT_EQ(view.Title, "kavit lev2");
    shell->LevelCommand(2);
    EXPECT_EQ(view.Title, "kavit lev10");
    EXPECT_EQ(view.TakeBox(), "Invalid char 'x' in Xsb; Assumed Space");
    EXPECT_EQ(view.Quits, 0);
    shell->LevelCommand(2);
    EXPECT_EQ(view.TakeBox(), "No more levels");
    view.Answers = {false};
    shell->LevelCommand(3);
    shell->LevelCommand(2);
    EXPECT_EQ(view.Quits, 1) << "Cancel on an invalid character ends the program";
}

TEST_F(ShellTest, ExamplesOtherAndNext) {
    shell->ExampleCommand(11);
    EXPECT_EQ(view.TakeBox(), "No previus name");
    shell->ExampleCommand(1);
    EXPECT_EQ(view.TakeBox(), "file 01-first-steps.xsb Not found");
    folder.Write("01-first-steps.xsb", kEasy);
    shell->ExampleCommand(1);
    EXPECT_EQ(view.Title, "kavit 01-first-steps");
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    folder.Write("lev09.xsb", kEasy);
    folder.Write("lev10.xsb", kEasy);
    view.Typed = "lev09";
    shell->ExampleCommand(10);
    EXPECT_EQ(view.Title, "kavit lev09");
    shell->ExampleCommand(11);
    EXPECT_EQ(view.Title, "kavit lev10");
    EXPECT_EQ(view.TakeBox(), "");
}

TEST_F(ShellTest, LevelThatFailsAfterAGoodOne) {
    Solve();
    Load("wide.xsb", "#####################\n");
    EXPECT_EQ(view.Text(C::txtLeft), "Width puzzle exceed the maximum (19)");
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    const std::string lines = view.Lines();
    shell->SolveClicked();
    EXPECT_EQ(view.Lines(), lines) << "SOLVE does nothing on a level that failed";
    EXPECT_EQ(view.TakeBox(), "");
    shell->OpenGiven(folder.Path("nothere.xsb"));
    EXPECT_EQ(view.Text(C::txtLeft), "can't open file, try again");
    shell->OpenGiven(folder.Write("noextension", kEasy));
    EXPECT_NE(view.TakeBox().find("noextension"), std::string::npos);
    ASSERT_EQ(mkfifo(folder.Path("pipe.xsb").c_str(), 0600), 0);
    shell->OpenGiven(folder.Path("pipe.xsb"));
    EXPECT_EQ(view.Text(C::lblDebug), "it is a pipe");
    Solve();
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
}

TEST_F(ShellTest, CancelledOpenKeepsTheSolution) {
    Solve();
    for (int text = 0; text < 2; ++text) {
        shell->LevelCommand(0);
        EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
        EXPECT_FALSE(view.Shown(C::rtxtImport));
        shell->SolveClicked();
    }
}

TEST_F(ShellTest, SettingsPanelAndFile) {
    std::string longText = "<";
    for (int i = 0; i < 10000; ++i) longText += "\u00e9";
    const std::string longBox =
        "Max Positions: \"" + longText.substr(0, 39) + "...\" is not a whole number";
    const struct {
        const char *Memory, *Blocks, *Time, *Box, *BlocksAfter;
    } rows[] = {
        {"200000", "20", "86401", "MaxTime can't exceed 86400 secs.", "8"},
        {"200000", "0", "300", "Blocks can't be zero or negative", "0"},
        {"-1", "8", "300", "Max number of positions can't be zero or negative", "8"},
        {"100", "8", "0", "Max elapsed time can't be zero or negative", "8"},
        {"200000", "8", "0", "Max elapsed time can't be zero or negative", "8"},
        {"9223372036854775807", "9", "300", "Insuficient Memory", "8"},
        {"200000", "many", "300", "Blocks: \"many\" is not a whole number", "many"},
        {"99999999999999999999", "8", "300", "Insuficient Memory", "8"},
        {"-99999999999999999999", "8", "300", "Max number of positions can't be zero or negative",
         "8"},
        {longText.c_str(), "8", "300", longBox.c_str(), "8"},
        {" 100000 ", "12", "600", "", "12"},
    };
    for (const auto& row : rows) {
        if (!view.Shown(C::frmSizes)) shell->ConfigureClicked();
        EXPECT_TRUE(view.Shown(C::frmSizes));
        view.SetText(C::cmbMemory, row.Memory);
        view.SetText(C::cmbBlocks, row.Blocks);
        view.SetText(C::cmbTime, row.Time);
        shell->SizeChosen();
        EXPECT_EQ(view.Focus, C::frmbtnApply);
        shell->ApplyClicked();
        EXPECT_EQ(view.TakeBox(), row.Box);
        EXPECT_EQ(view.Text(C::cmbBlocks), row.BlocksAfter) << row.Box;
        EXPECT_EQ(view.Shown(C::frmSizes), *row.Box != '\0') << row.Box;
        EXPECT_EQ(view.Text(C::lblSize), *row.Box != '\0' ? "200000/8" : "100000/12") << row.Box;
    }
    EXPECT_EQ(view.Text(C::lblTimer), "0/600");

    shell->ConfigureClicked();
    view.SetText(C::cmbBlocks, "20");
    shell->CancelClicked();
    EXPECT_EQ(view.Text(C::cmbBlocks), "12");

    view.SetChecked(C::chkWriteSol, true);
    shell->WriteSolClicked();
    EXPECT_FALSE(view.Checked(C::chkNoWriteSol));
    shell->OptClicked(2);
    shell->SaveSettings();
    EXPECT_EQ(folder.Read("Kavit.ini"), " 100000  12  600  2  1  0 \r\n");
    view = FakeView();
    ASSERT_TRUE(Begin());
    EXPECT_EQ(view.Text(C::lblOpt), "M");
    EXPECT_EQ(view.Text(C::cmbTime), "600");
    EXPECT_TRUE(view.Checked(C::chkWriteSol));
}

TEST_F(ShellTest, SettingsFilesThatDoNotHold) {
    const std::pair<const char*, const char*> rows[] = {
        // the file, and part of the message
        {"", "found 0"},
        {" 4000000  8  300  1  0 ", "found 5"},
        {" 4000000  8  300  1  0  0  0 ", "found 7"},
        {" 4000000  x  300  1  0  0 ", "number 2 (Blocks) is \"x\""},
        {" 4000000  8  300  4  0  0 ", "number 4 (OptLevel) is \"4\""},
        {" 4000000  8  300  1  0  2 ", "number 6 (NoWriteSol)"},
        {" 4000000  8  300  1  1  1 ", "exclude"},
        {"4000000,,300,1,0,0", "number 2 (Blocks) is \"\""},
    };
    for (const auto& [text, fault] : rows) {
        folder.Write("Kavit.ini", text);
        view = FakeView();
        EXPECT_FALSE(Begin()) << text;
        const std::string box = view.TakeBox();
        EXPECT_NE(box.find(fault), std::string::npos) << box;
        EXPECT_NE(box.find(folder.Path("Kavit.ini")), std::string::npos) << box;
        EXPECT_EQ(folder.Read("Kavit.ini"), text);
    }
    // Sizes that APPLY refuses give their message, and a window that works.
    folder.Write("Kavit.ini", "200000 8,100000\r\n2 0 1");
    view = FakeView();
    EXPECT_TRUE(Begin());
    EXPECT_EQ(view.TakeBox(), "MaxTime can't exceed 86400 secs.");
    EXPECT_EQ(view.Text(C::lblSize), "4000000/8");
    EXPECT_EQ(view.Text(C::cmbTime), "300");
    EXPECT_EQ(view.Text(C::lblOpt), "M");
}

TEST_F(ShellTest, SolutionFileByTheSwitches) {
    Solve();
    EXPECT_FALSE(std::filesystem::exists(folder.Path("level.sol")));
    AskForSolutionFiles();
    view.SaveFile = folder.Path("asked.sol");
    Solve();
    EXPECT_EQ(view.AskedName, "level.sol");
    EXPECT_EQ(folder.Read("asked.sol").substr(0, 10), "rRR\r\nrRR\r\n");
    view.SetChecked(C::chkWriteSol, true);
    shell->WriteSolClicked();
    Solve();
    EXPECT_TRUE(std::filesystem::exists(folder.Path("level.sol")));
}

// A full disk, and a folder that is not there: the solution is still in the text view, on the
// clipboard and in the animation, and the message says what and why.
TEST_F(ShellTest, SolutionFileThatCannotBeWritten) {
    AskForSolutionFiles();
    std::filesystem::create_symlink("/dev/full", folder.Path("full.sol"));
    for (const auto& [file, reason] : {std::pair{"full.sol", "No space left on device"},
                                       std::pair{"gone/x.sol", "No such file or directory"}}) {
        view.SaveFile = folder.Path(file);
        view.Clip.clear();
        Solve();
        const std::string box = view.TakeBox();
        EXPECT_NE(box.find(file), std::string::npos) << box;
        EXPECT_NE(box.find(reason), std::string::npos) << box;
        EXPECT_EQ(view.Clip, "rRR");
        EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
        shell->SolveClicked();
        EXPECT_NE(view.Text(C::rtxtImport).find("rRR"), std::string::npos);
    }
    std::filesystem::remove(folder.Path("Kavit.ini"));
    std::filesystem::create_symlink("/dev/full", folder.Path("Kavit.ini"));
    shell->SaveSettings();
    EXPECT_NE(view.TakeBox().find("Kavit.ini"), std::string::npos);
}

TEST_F(ShellTest, AnimationLeftAndRight) {
    Solve();
    const auto at = [&](int cell) { return view.Cells[static_cast<std::size_t>(cell)]; };
    shell->AnimMouseUp(true);
    EXPECT_EQ(view.Text(C::btnANIM), "STOP");
    EXPECT_TRUE(view.On(C::TimerAnim));
    view.CellsShown = 0;
    Animate(2);
    EXPECT_EQ(view.CellsShown, 2 + 3) << "only the cells that changed are repainted";
    EXPECT_EQ(view.Lines(), "Pushes:  1/2|Moves:  2/3");
    EXPECT_EQ(at(22), Picture::ManRight);
    EXPECT_EQ(at(23), Picture::Box);

    shell->AnimMouseUp(true);
    Animate(1);
    EXPECT_EQ(view.Text(C::btnANIM), "CONT< >REPEAT");
    EXPECT_FALSE(view.On(C::TimerAnim));
    shell->AnimMouseUp(false);  // from the start
    EXPECT_EQ(at(20), Picture::ManDown);
    Animate(3);
    EXPECT_EQ(view.Lines(), "Pushes:  2/2|Moves:  3/3");
    EXPECT_EQ(view.Text(C::btnANIM), "REPEAT");
    Solve();
    shell->AnimMouseUp(true);
    Animate(10);
    shell->HashClicked(1);
    EXPECT_EQ(view.Cells[22], Picture::Box) << "the level, not the end of its replay";
}

TEST_F(ShellTest, EditorKeepsWhatWasDrawnOrTakesItBack) {
    Load("level.xsb", "######\n#@  .#\n######\n");
    view.OnEvents = [&] { shell->ImportBoard(); };  // typed ahead
    shell->EditBoard();
    view.OnEvents = nullptr;
    EXPECT_FALSE(view.Shown(C::rtxtImport)) << "the editor and the import box at once";
    EXPECT_EQ(view.Title, "kavit Editing");
    EXPECT_EQ(view.Buttons(), "-SOLVE DONE CLEAR");
    EXPECT_EQ(view.Lines(), "Editing|When ready click 'DONE'");
    EXPECT_TRUE(view.Checked(C::ImgEdit4));
    EXPECT_TRUE(view.Shown(C::frmCommands));
    const auto paint = [&](int tool, int cell) {
        shell->SelectTool(tool);
        shell->CellDown(cell);
        shell->CellUp(cell);
    };
    paint(2, Maxcol + 3);
    paint(2, Maxcol + 1);
    EXPECT_EQ(view.TakeBox(), "You can't erase the Man");
    shell->ShiftClicked(2);
    shell->AnimMouseUp(true);  // DONE
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    EXPECT_EQ(view.Lines(), "|");
    EXPECT_FALSE(view.Shown(C::frmCommands));
    EXPECT_FALSE(view.Checked(C::ImgEdit2));
    shell->CopyBoard();
    EXPECT_EQ(view.Clip, " ######\n #@ $.#\n ######\n");
    shell->SolveClicked();
    EXPECT_EQ(view.Buttons(), "TEXT ANIM CLEAR");
    EXPECT_EQ(view.Clip, "rR");

    const Board before = shell->Level();
    shell->EditBoard();
    shell->ClearClicked();
    EXPECT_EQ(view.Text(C::btnANIM), "DONE");
    view.Answers = {false, true};
    shell->EscapePressed();
    EXPECT_NE(shell->Level(), before) << "answered No";
    shell->EscapePressed();
    EXPECT_EQ(shell->Level(), before);
    EXPECT_TRUE(shell->Editing());
    shell->EscapePressed();
    EXPECT_FALSE(shell->Editing());
}

TEST_F(ShellTest, ClearForgetsLevelAndSolution) {
    Solve();
    shell->EditBoard();
    shell->ClearClicked();
    EXPECT_EQ(view.Buttons(), "SOLVE DONE CLEAR") << "no text of a level that is gone";
    shell->AnimMouseUp(true);
    Solve();
    shell->SolveClicked();
    shell->ClearClicked();
    EXPECT_EQ(view.Title, "kavit");
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM -CLEAR");
    EXPECT_FALSE(view.Shown(C::rtxtImport));
    EXPECT_EQ(shell->Level().Cell, Board().Cell);
    shell->SolveClicked();
    EXPECT_EQ(view.Text(C::txtLeft), "Strange mapping ???");
}

TEST_F(ShellTest, ImportTakesTextOrLeavesItForMending) {
    Load("first.xsb", kEasy);
    const Board before = shell->Level();
    const auto type = [&](const std::string& text) {
        view.SetText(C::rtxtImport, text);
        shell->ImportTextChanged();
        shell->SolveClicked();
    };
    shell->ImportBoard();
    EXPECT_FALSE(view.ReadOnly);
    const std::pair<std::string, const char*> rows[] = {
        {"####################", "Width puzzle exceed the maximum (19)"},
        {std::string(40, '\n') + "#", "Height puzzle exceed the maximum (17)"},
        {"#" + std::string(60, ' '), "Input line too long"},
        {"#q", "You can select and copy to the clipboard (CTRL-C)"},
    };
    for (const auto& [text, left] : rows) {
        view.Answers = {false};
        type(text);
        EXPECT_EQ(view.Text(C::txtLeft), left);
        EXPECT_EQ(view.Text(C::btnSOLVE), "RETURN");
        EXPECT_EQ(view.Text(C::rtxtImport), text);
        EXPECT_TRUE(view.Shown(C::rtxtImport));
        EXPECT_EQ(shell->Level(), before);
    }
    shell->LevelCommand(0);  // cancelled: the box goes, the text is back with the next Import
    view.Answers.clear();
    shell->ImportBoard();
    EXPECT_EQ(view.Text(C::rtxtImport), "#q");
    type("#####\r#@$.#\r\n#####");
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    EXPECT_EQ(view.Title, "kavit");
    AskForSolutionFiles();
    view.AskedName = "?";
    shell->SolveClicked();
    EXPECT_EQ(view.AskedName, "") << "an imported board has no name";

    view.Clip = kEasy;
    shell->PasteLevel();
    EXPECT_EQ(shell->Level().Cell, before.Cell);
    EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    for (const std::string& text :
         {std::string("# a heading, no level"), std::string(200000, '#')}) {
        view.Clip = text;
        shell->PasteLevel();
        EXPECT_EQ(shell->Level().Cell, before.Cell);
        EXPECT_EQ(view.Buttons(), "SOLVE -ANIM CLEAR");
    }
}

TEST_F(ShellTest, PendingSettingsAreAppliedByTheNextCommand) {
    shell->ConfigureClicked();
    view.SetText(C::cmbBlocks, "3");
    Load("level.xsb", kEasy);
    EXPECT_EQ(view.Text(C::lblSize), "200000/3");
    EXPECT_FALSE(view.Shown(C::frmSizes));
    shell->ConfigureClicked();
    view.SetText(C::cmbBlocks, "5");
    shell->SolveClicked();
    EXPECT_EQ(view.Text(C::lblSize), "200000/3") << "SOLVE hides the panel and applies nothing";
    EXPECT_EQ(view.Text(C::cmbBlocks), "5");
}

}  // namespace
}  // namespace kavit
