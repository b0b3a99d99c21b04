#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <memory>
#include <sstream>

#include "app/model/model.h"
#include "level/steps.h"
#include "support/fake_view.h"
#include "support/levels.h"
#include "support/temp_folder.h"

// What a user does with the window, step by step, and what the window shows then. A row is a script
// of commands; the names of its levels are those below.
namespace kavit {
namespace {

const std::map<std::string, std::string> kLevels = {
    {"easy", test::kEasy},
    {"unsolvable", test::kUnsolvable},
    {"long", test::kLong},
    {"strange", "#####\n#@$ #\n#####\n"},
    {"frozen", "#####\n#$@.#\n#####\n"},
    {"done", "####\n#@*#\n####\n"},
    {"boxes", "############\n#@ $$$$$$$$$ #\n#  ......... #\n############\n"},
    {"wide", "#####################\n"},
    {"odd", "#####\n#x$.#\n#####\n"},
    {"lev2", test::kEasy},
    {"lev10", test::kEasy},
    {"nine",
     "###########\n#@        #\n# $ $ $ $ #\n#         #\n# $ $ $ $ #\n#    $    "
     "#\n#.........#\n###########\n"},
    {"album",
     "#####\n#@$.#\n#####\nTitle: One\n\n######\n#@ $.#\n######\nTitle: Two\nSolution\nrR\n\n"
     "##########\n#@ $ $ ..#\n##########\nTitle: Three\n"},
    {"room", "#######\n#@ $ .#\n#     #\n#######\n"},
};

constexpr const char* kReadyLine = "You can edit this board (Menu File)|";
constexpr const char* kSolvedLine = "Solution:  3/2|solution remained in Clipboard and 'TEXT'";
constexpr const char* kRunning = "Solver is running";
constexpr const char* kCantChange = "Can't change; Solver is running";
constexpr const char* kAnimating = "Stop Animation first";
constexpr const char* kUnsaved = "The board was changed. Save it?";

class Flow {
  public:
    Flow() {
        Settings small;
        small.Fields = {200000, 8, 300};
        small.NoWriteSol = true;
        Files.Write("Kavit.ini", SettingsText(small));
        Fault = Begin();
    }
    std::string Begin() {
        View = FakeView();
        Window = std::make_unique<Model>(View, "kavit", Files.Path(), [this] { return Seconds; });
        View.Owner = Window.get();
        return Window->Load();
    }

    template <typename Command>
    void Run(Command command) {
        Window->Run(command);
    }
    void Play(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) Do(word);
    }
    // What the board shows, row by row, and the marks on it.
    [[nodiscard]] std::string Rows() const {
        std::string rows;
        for (int cell = 0; cell < kCells; ++cell) {
            if (cell > 0 && cell % Maxcol == 0) rows += '|';
            rows += " .$*#+@@@@"[static_cast<int>(Now().Cells[static_cast<std::size_t>(cell)])];
        }
        for (std::size_t at = 0; (at = rows.find(" |")) != std::string::npos;) rows.erase(at, 1);
        return rows.substr(0, rows.find_last_not_of(" |") + 1);
    }
    [[nodiscard]] std::string Marks() const {
        const BoardMarks& marks = Now().Marks;
        std::string text;
        const auto add = [&](const char* name, const std::vector<int>& cells) {
            if (cells.empty()) return;
            text += (text.empty() ? "" : "; ") + std::string(name);
            for (const int cell : cells) text += " " + std::to_string(cell);
        };
        add("dead", marks.Dead);
        add("reach", marks.Reach);
        add("stuck", marks.Stuck);
        add("wrong", marks.Wrong);
        add("path", marks.Path);
        if (marks.Selected >= 0) add("chosen", {marks.Selected});
        return text;
    }
    // One word: a command, with its argument behind a colon.
    void Do(const std::string& word) {
        const std::size_t colon = word.find(':');
        const std::string verb = word.substr(0, colon);
        const std::string text = colon == std::string::npos ? "" : word.substr(colon + 1);
        const int number = std::atoi(text.c_str());
        const std::map<std::string, std::function<void(Model&)>> commands = {
            {"open", [&](Model& m) { m.Levels.OpenGiven(File(text)); }},
            {"openfile", [&](Model& m) { m.Levels.Open(); }},
            {"restart", [](Model& m) { m.Restart(); }},
            {"next", [](Model& m) { m.Levels.Step(1); }},
            {"previous", [](Model& m) { m.Levels.Step(-1); }},
            {"example", [&](Model& m) { m.Levels.Example(number); }},
            {"copyboard", [](Model& m) { m.Levels.Copy(); }},
            {"copy", [](Model& m) { m.Solution.Copy(); }},
            {"exit", [](Model& m) { m.Levels.Exit(); }},
            {"solve", [](Model& m) { m.SolveClicked(); }},
            {"anim", [](Model& m) { m.AnimReleased(true); }},
            {"animright", [](Model& m) { m.AnimReleased(false); }},
            {"tick", [](Model& m) { m.Solution.AnimTick(); }},
            {"clear", [](Model& m) { m.Editor.Clear(); }},
            {"escape", [](Model& m) { m.EscapePressed(); }},
            {"edit", [](Model& m) { m.Editor.Open(); }},
            {"tool", [&](Model& m) { m.PaletteClicked(number); }},
            {"down", [&](Model& m) { m.CellDown(number, false); }},
            {"right", [&](Model& m) { m.CellDown(number, true); }},
            {"move", [&](Model& m) { m.CellMove(number); }},
            {"up", [&](Model& m) { m.CellUp(number); }},
            {"shape",
             [&](Model& m) { m.Editor.SelectShape(static_cast<EditorControl::Shape>(number)); }},
            {"undo", [](Model& m) { m.Undo(); }},
            {"redo", [](Model& m) { m.Redo(); }},
            {"key", [&](Model& m) { m.ArrowPressed(DirectionOf(text[0]), false); }},
            {"control", [&](Model& m) { m.ArrowPressed(DirectionOf(text[0]), true); }},
            {"home", [](Model& m) { m.EndPressed(false); }},
            {"end", [](Model& m) { m.EndPressed(true); }},
            {"space", [](Model& m) { m.SpacePressed(); }},
            {"goto", [&](Model& m) { m.Solution.GoTo(number); }},
            {"letter1", [&](Model& m) { m.Solution.TextClicked(text, 1); }},
            {"hand", [](Model& m) { m.Play.GiveArrows(false); }},
            {"replay", [](Model& m) { m.Play.GiveArrows(true); }},
            {"hover", [&](Model& m) { m.Play.CellHovered(number); }},
            {"undopush", [](Model& m) { m.Play.UndoPush(); }},
            {"redopush", [](Model& m) { m.Play.RedoPush(); }},
            {"here", [](Model& m) { m.Play.SolveFromHere(); }},
            {"copyplayed", [](Model& m) { m.Play.Copy(); }},
            {"saveplayed", [](Model& m) { m.Play.Save(); }},
            {"aside", [](Model& m) { m.Aside.Turn(); }},
            {"rested", [](Model& m) { m.Aside.Rested(); }},
            {"dead", [](Model& m) { m.Play.TurnDead(); }},
            {"reach", [](Model& m) { m.Play.TurnReach(); }},
            {"shift", [&](Model& m) { m.Editor.Shift(number); }},
            {"turn", [&](Model& m) { m.Editor.MirrorRotate(number); }},
            {"import", [](Model& m) { m.Import.Open(); }},
            {"type", [&](Model& m) { m.Import.TextChanged(kLevels.at(text)); }},
            {"typetext", [&](Model& m) { m.Import.TextChanged(text); }},
            {"paste",
             [&](Model& m) {
                 View.Clip = text.empty() ? "no level" : kLevels.at(text);
                 m.Import.Paste();
             }},
            {"search", [&](Model& m) { m.Choices.SearchChosen(number); }},
            {"opt", [&](Model& m) { m.Choices.OptChosen(number); }},
            {"special", [](Model& m) { m.Choices.SpecialChosen(); }},
            {"hash", [&](Model& m) { m.Choices.HashChosen(number); }},
            {"letter", [](Model& m) { m.Choices.LetterDoubleClicked(); }},
            {"configure", [](Model& m) { m.Settings.Configure(); }},
            {"apply", [](Model& m) { m.Settings.Apply(); }},
            {"cancel", [](Model& m) { m.Settings.Cancel(); }},
            {"memory", [&](Model& m) { Field(m, &PanelFields::Memory, text); }},
            {"blocks", [&](Model& m) { Field(m, &PanelFields::Blocks, text); }},
            {"time", [&](Model& m) { Field(m, &PanelFields::Time, text); }},
            {"choose", [&](Model& m) { m.Album.Choose(number); }},
            {"unsolved", [](Model& m) { m.Album.NextUnsolved(); }},
            {"solveall", [](Model& m) { m.Album.SolveAll(); }},
            {"known", [](Model& m) { m.Album.ShowKnown(); }},
            {"savealbum", [](Model& m) { m.Album.Save(); }},
            {"togglelist", [](Model& m) { m.Album.Toggle(); }},
            {"savelevel", [](Model& m) { m.Levels.Save(); }},
            {"savelevelas", [](Model& m) { m.Levels.SaveAs(); }},
            {"savesolution", [](Model& m) { m.Solution.Save(m.Levels.Folder()); }},
            {"always", [](Model& m) { m.Settings.SetWriteSol(true); }},
            {"ask", [](Model& m) { m.Settings.SetNoWriteSol(false); }},
            {"yes", [&](Model&) { View.Answers.push_back(Choice::Yes); }},
            {"no", [&](Model&) { View.Answers.push_back(Choice::No); }},
            {"cancelled", [&](Model&) { View.Answers.push_back(Choice::Cancel); }},
            // While the next search runs, as its first sign comes: a comma for each blank.
            {"during",
             [&](Model&) {
                 std::string script = text;
                 std::replace(script.begin(), script.end(), ',', ' ');
                 View.DuringSearch = [this, script](Model&) {
                     View.DuringSearch = [](Model&) {};
                     Play(script);
                 };
             }},
        };
        const auto command = commands.find(verb);
        ASSERT_NE(command, commands.end()) << word;
        Run(command->second);
    }
    void Field(Model& m, std::string PanelFields::*field, const std::string& text) const {
        PanelFields fields = Now().Panel;
        fields.*field = text;
        m.Settings.Edited(fields);
    }
    std::string File(const std::string& name) {
        const auto level = kLevels.find(name);
        if (level == kLevels.end()) return Files.Path(name);
        return Files.Write(name + ".xsb", level->second);
    }
    [[nodiscard]] const Screen& Now() const { return View.Now; }
    [[nodiscard]] const Board& Level() const { return Window->Levels.Level().Board; }
    [[nodiscard]] int At(int cell) const { return Level().Cell[static_cast<std::size_t>(cell)]; }
    [[nodiscard]] int Men() const {
        int men = 0;
        for (const std::uint8_t code : Level().Cell) men += code >= kMan ? 1 : 0;
        return men;
    }

    TempFolder Files;
    FakeView View;
    double Seconds = 1000;
    std::string Fault;
    std::unique_ptr<Model> Window;
};

struct Row {
    const char* Script;
    const char* Buttons;
    const char* Lines = nullptr;  // nullptr: any
    const char* Boxes = "";       // nullptr: some
    const char* Title = nullptr;
};

class FlowTest : public testing::Test {
  protected:
    static void Check(const Row& row) {
        Flow own;
        SCOPED_TRACE(row.Script);
        own.Play(row.Script);
        EXPECT_EQ(own.View.Buttons(), row.Buttons);
        const std::string boxes = own.View.TakeBoxes();
        if (row.Boxes != nullptr) {
            EXPECT_EQ(boxes, row.Boxes);
        } else {
            EXPECT_NE(boxes, "");
        }
        if (row.Lines != nullptr) {
            EXPECT_EQ(own.View.Lines(), row.Lines);
        }
        if (row.Title != nullptr) {
            EXPECT_EQ(own.Now().Title, row.Title);
        }
    }
    Flow flow;
};

// The captions, row by row of the table of states.
TEST_F(FlowTest, Captions) {
    constexpr const char* kBlank = "SOLVE -ANIM -CLEAR";
    constexpr const char* kReady = "SOLVE -ANIM CLEAR";
    constexpr const char* kText = "TEXT ANIM CLEAR";
    constexpr const char* kOut = "STOP -ANIM -CLEAR";
    constexpr const char* kStart =
        "You can edit or import your board (File Menu)|or read it from a file (.xsb)";
    const Row rows[] = {
        {"", "-SOLVE -ANIM -CLEAR", kStart, "", "kavit"},
        {"open:easy", kReady, kReadyLine, "", "kavit easy"},
        {"open:easy solve", kText, kSolvedLine, "", "kavit easy"},
        {"open:strange copy", kReady, "You can edit this board (Menu File)|Nothing to Show"},
        {"open:strange solve", kReady, "Strange mapping ???|", "", "kavit strange"},
        {"open:frozen solve", kReady, "There is, at least, one frozen block|"},
        {"open:done solve", kReady, "Problem already solved|"},
        {"open:unsolvable solve", kReady, nullptr, "", "kavit unsolvable"},
        {"open:long during:solve solve", kReady, "Interrupted by user !|Analyzed up to 1 pushes"},
        {"open:long during:escape solve", kReady, "Interrupted by user !|Analyzed up to 1 pushes"},
        {"open:easy solve solve", "RETURN -ANIM CLEAR"},
        {"open:easy solve solve solve", kText},
        {"open:easy solve solve escape", kText},
        {"open:easy solve restart", kReady, kReadyLine},
        {"open:easy solve hash:2", kReady},
        {"open:easy solve clear", kBlank, kStart, "", "kavit"},
        {"open:easy clear solve", kReady, "Strange mapping ???|"},
        {"hash:1", kBlank},
        // A level that can't be read.
        {"open:wide", "-SOLVE -ANIM -CLEAR", "Width puzzle exceed the maximum (19)|"},
        {"open:easy solve open:wide", kReady, "Width puzzle exceed the maximum (19)|"},
        {"open:easy open:wide solve", kReady, "Width puzzle exceed the maximum (19)|"},
        {"open:easy open:gone.xsb", kReady, "can't open file, try again|"},
        // Out of memory, and the ways on.
        {"memory:50 apply open:long solve", kOut, nullptr, nullptr, "kavit long"},
        {"memory:50 apply open:long solve openfile", kOut, nullptr, nullptr},
        {"memory:50 apply open:long solve solve", kReady, kReadyLine, nullptr},
        {"memory:50 apply open:long solve escape", kReady, kReadyLine, nullptr},
        {"memory:50 apply open:long solve memory:60 apply", kReady, kReadyLine, nullptr},
        {"memory:50 apply open:long solve restart", kReady, kReadyLine, nullptr},
        {"memory:50 apply open:long solve import solve", kOut, nullptr, nullptr},
        {"memory:50 apply open:long solve open:easy solve", kText, nullptr, nullptr},
        {"memory:50 apply open:long solve configure solve", kReady, kReadyLine, nullptr},
        // Import.
        {"import", "RETURN -ANIM -CLEAR",
         "You can paste a board (xsb format) from the clipboard (CTRL-V)|"},
        {"import solve", kBlank},
        {"import escape", kBlank},
        {"import type:easy solve", kReady, "You can now edit your board|", "", "kavit"},
        {"open:easy import", "RETURN -ANIM CLEAR"},
        {"open:easy solve import solve", kText},
        {"open:easy solve import escape", kText},
        {"open:easy solve paste:", kText, "Solution:  3/2|There is no level on the clipboard"},
        {"open:easy solve paste:room", kReady, "You can now edit your board|", "", "kavit"},
        // The editor.
        {"edit", "-SOLVE DONE CLEAR", "Editing|When ready click 'DONE'", "", "kavit Editing"},
        {"edit anim", kReady, "|", "", "kavit"},
        {"open:easy edit escape", kReady, "|", "", "kavit easy"},
        {"open:easy edit clear", "SOLVE DONE CLEAR", nullptr, "", "kavit"},
        {"open:easy edit clear solve", kReady, "Strange mapping ???|"},
        {"open:easy edit clear yes escape", "-SOLVE DONE CLEAR", nullptr,
         "Undo all changes since the editing began?", "kavit Editing"},
        {"open:easy edit clear yes escape escape", kReady, nullptr,
         "Undo all changes since the editing began?", "kavit easy"},
        {"open:easy edit clear no escape", "SOLVE DONE CLEAR", nullptr,
         "Undo all changes since the editing began?"},
        {"open:easy solve edit", "-SOLVE DONE CLEAR"},
        {"open:easy edit hash:1", "-SOLVE DONE CLEAR"},
        // The replay.
        {"open:easy anim", kReady},
        {"open:easy solve anim", "TEXT STOP CLEAR"},
        {"open:easy solve anim tick", "TEXT STOP CLEAR", "Pushes:  0/2|Moves:  1/3"},
        {"open:easy solve anim tick anim", "TEXT STOP CLEAR"},
        {"open:easy solve anim tick anim tick", "TEXT CONT< >REPEAT CLEAR",
         "Pushes:  0/2|Moves:  1/3"},
        {"open:easy solve anim tick escape tick", "TEXT CONT< >REPEAT CLEAR"},
        {"open:easy solve anim tick anim tick tick", "TEXT CONT< >REPEAT CLEAR",
         "Pushes:  0/2|Moves:  1/3"},
        {"open:easy solve anim tick anim tick anim tick", "TEXT STOP CLEAR",
         "Pushes:  1/2|Moves:  2/3"},
        {"open:easy solve anim tick anim tick animright tick", "TEXT STOP CLEAR",
         "Pushes:  0/2|Moves:  1/3"},
        {"open:easy solve animright tick tick tick", "TEXT REPEAT CLEAR",
         "Pushes:  2/2|Moves:  3/3"},
        {"open:easy solve anim tick tick tick tick", "TEXT REPEAT CLEAR",
         "Pushes:  2/2|Moves:  3/3"},
        {"open:easy solve anim tick tick tick anim tick", "TEXT STOP CLEAR",
         "Pushes:  0/2|Moves:  1/3"},
        {"open:easy solve anim tick tick tick solve solve", kText},
        {"open:easy solve anim solve", "TEXT STOP CLEAR", nullptr, kAnimating},
        {"open:easy solve anim clear", kBlank},
        // A cancelled or refused command leaves the solution and its line.
        {"open:easy solve openfile", kText, kSolvedLine},
        {"open:easy solve solve openfile", kText, kSolvedLine},
        {"open:easy solve next", kText, kSolvedLine, "No more levels"},
        {"open:easy solve open:noextension", kText, kSolvedLine, nullptr},
    };
    for (const Row& row : rows) Check(row);
}

// A size that a level needs is offered, and the solve goes on with it.
TEST_F(FlowTest, OffersLargerSizes) {
    constexpr const char* kBlocks =
        "This level has 9 boxes, Blocks allows 8. Raise Blocks and solve it?";
    Check({"open:nine no solve", "SOLVE -ANIM CLEAR", "This program is limited to  8 boxes|",
           kBlocks});
    flow.Play("open:nine yes during:escape solve");
    EXPECT_EQ(flow.View.TakeBoxes(), kBlocks);
    EXPECT_EQ(flow.Now().Size, "200000/9");
    EXPECT_EQ(flow.View.Request.MaxTime, 300);
    EXPECT_TRUE(flow.Now().Left.starts_with("Interrupted")) << flow.Now().Left;

    flow.Play("memory:50 blocks:8 apply open:long solve");
    EXPECT_EQ(flow.View.Buttons(), "STOP -ANIM -CLEAR");
    const std::string box = flow.View.TakeBoxes();
    EXPECT_TRUE(box.starts_with("All 50 positions are used up. This machine can hold ")) << box;
    EXPECT_TRUE(box.ends_with(". Try again with that?")) << box;
    // A large store is hashed another way, unless one was chosen.
    flow.Play("memory:9000000 apply");
    EXPECT_EQ(flow.Now().HashCase, 3);
    flow.Play("hash:1");
    EXPECT_EQ(flow.Now().HashCase, 1);
}

// A collection stands beside the board, level by level.
TEST_F(FlowTest, ListOfLevels) {
    const struct {
        const char* Script;
        const char* Title;
        int Chosen;
        const char* Marks;  // joined by commas
        const char* Boxes;
    } rows[] = {
        {"open:album", "kavit album-1", 0, ",,", ""},
        {"open:album next", "kavit album-2", 1, ",,", ""},
        {"open:album previous", "kavit album-1", 0, ",,", "No previous levels"},
        {"open:album choose:2 next", "kavit album-3", 2, ",,", "No more levels"},
        {"open:album choose:7", "kavit album-1", 0, ",,", ""},
        {"open:album solve", "kavit album-1", 0, "1/1,,", ""},
        {"open:album solve unsolved", "kavit album-2", 1, "1/1,,", ""},
        {"open:album solveall", "kavit album-3", 2, "1/1,1/2,no solution", ""},
        {"open:album solveall unsolved", "kavit album-3", 2, "1/1,1/2,no solution",
         "No more unsolved levels"},
        {"open:album ask always solveall", "kavit album-3", 2, "1/1,1/2,no solution", ""},
        {"open:album edit down:100 anim solve", "kavit", 0, ",,", ""},
        {"open:album edit down:100 anim cancelled next", "kavit", 0, ",,", kUnsaved},
        {"open:album solve anim next", "kavit album-1", 0, "1/1,,", kAnimating},
        {"open:album open:easy", "kavit easy", -1, "", ""},
        {"open:album paste:easy", "kavit", -1, ",,", ""},
        {"open:album clear choose:1", "kavit album-2", 1, ",,", ""},
        {"paste:album", "kavit pasted-1", 0, ",,", ""},
        {"known", "kavit", -1, "", "Nothing to Show"},
        {"savealbum", "kavit", -1, "", "There is no list of levels"},
        {"open:album known", "kavit album-1", 0, ",,", "Nothing to Show"},
    };
    for (const auto& row : rows) {
        Flow own;
        SCOPED_TRACE(row.Script);
        own.Play(row.Script);
        std::string marks;
        for (const ListRow& level : *own.Now().List)
            marks += (&level == own.Now().List->data() ? "" : ",") + level.Mark;
        EXPECT_EQ(own.Now().Title, row.Title);
        EXPECT_EQ(own.Now().ListChosen, row.Chosen);
        EXPECT_EQ(marks, row.Marks);
        EXPECT_EQ(own.View.TakeBoxes(), row.Boxes);
        EXPECT_FALSE(own.Now().SolvingAll);
        EXPECT_EQ(own.Now().ListVisible, *row.Marks != '\0');
        EXPECT_FALSE(std::filesystem::exists(own.Files.Path("album-2.sol")));
    }
    flow.Play("open:album choose:1 known");
    EXPECT_EQ(flow.View.Buttons(), "TEXT ANIM CLEAR");
    EXPECT_EQ(flow.View.Lines(), "Recorded solution:  2/1|");
    flow.Play("anim tick tick");
    EXPECT_EQ(flow.View.Buttons(), "TEXT REPEAT CLEAR");
    flow.Play("choose:1 ask solve");
    EXPECT_EQ(flow.View.AskedName, "album-2.sol");
    EXPECT_EQ(flow.Now().Details, "Recorded solution: 2/1, with the fewest pushes");
    flow.View.SaveFile = flow.Files.Path("again.sok");
    flow.Play("choose:0 solve savealbum");
    const Collection again = test::CollectionOf(flow.Files.Read("again.sok"));
    ASSERT_EQ(again.Levels.size(), 3U);
    EXPECT_EQ(again.Levels[0].Solution, "R");
    EXPECT_EQ(again.Levels[1].Solution, "rR");
    EXPECT_EQ(again.Levels[2].Title, "Three");
    // Stopped by the user, the run ends there.
    flow.Files.Write("two.txt", kLevels.at("long") + "\n" + kLevels.at("easy"));
    flow.Play("open:two.txt during:solve solveall");
    EXPECT_EQ(flow.Now().Title, "kavit two-1");
    EXPECT_EQ(flow.Now().List->at(1).Mark, "");
    // A folder is a list as well; the list goes and comes back.
    std::filesystem::create_directory(flow.Files.Path("levels"));
    flow.Play("no open:levels");
    EXPECT_TRUE(flow.View.TakeBoxes().starts_with("There are no levels in "));
    flow.Files.Write("levels/b2.xsb", test::kEasy);
    flow.Files.Write("levels/b10.txt", kLevels.at("album"));
    flow.Play("open:levels next togglelist");
    EXPECT_EQ(flow.Now().Title, "kavit b10-1");
    EXPECT_EQ(flow.Now().List->size(), 4U);
    EXPECT_FALSE(flow.Now().ListVisible);
}

// Levels and solutions are saved where the user says, and then are what the files hold.
TEST_F(FlowTest, Saving) {
    flow.Play("savesolution open:room edit tool:1 down:39 anim savelevel exit");
    EXPECT_EQ(flow.View.TakeBoxes(), "Nothing to Show");
    EXPECT_EQ(flow.View.Quits, 1);
    EXPECT_EQ(flow.View.AskedName, "");
    EXPECT_EQ(flow.Files.Read("room.xsb"), "#######\n#@ $ .#\n#.    #\n#######\n");
    flow.View.SaveFile = flow.Files.Path("other.xsb");
    flow.Play("savelevelas");
    EXPECT_EQ(flow.View.AskedName, "room.xsb");
    EXPECT_EQ(flow.Now().Title, "kavit other");
    flow.View.SaveFile = flow.Files.Path("kept.sol");
    flow.Play("open:easy solve savesolution");
    EXPECT_EQ(flow.View.AskedName, "easy.sol");
    EXPECT_TRUE(flow.Files.Read("kept.sol").starts_with("rRR\r\n"));
}

struct Sight {
    const char* Script;
    const char* Lines;  // nullptr: any
    const char* Rows;   // as far as they tell something
    const char* Marks = "";
    const char* Buttons = nullptr;
};

void CheckSights(const std::vector<Sight>& sights) {
    for (const Sight& sight : sights) {
        SCOPED_TRACE(sight.Script);
        Flow own;
        own.Play(sight.Script);
        if (sight.Lines != nullptr) {
            EXPECT_EQ(own.View.Lines(), sight.Lines);
        }
        EXPECT_TRUE(own.Rows().find(sight.Rows) != std::string::npos) << own.Rows();
        EXPECT_EQ(own.Marks(), sight.Marks);
        if (sight.Buttons != nullptr) {
            EXPECT_EQ(own.View.Buttons(), sight.Buttons);
        }
        EXPECT_EQ(own.View.TakeBoxes(), "");
    }
}

// Squares 20 to 24 and, in the room, 39 to 43 below them.
TEST_F(FlowTest, PlayByHand) {
    CheckSights({
        {"open:room key:r key:r", "Pushes: 1|Moves: 2", "#  @$.#"},
        {"open:room key:r key:r key:r", "Pushes: 2|Moves: 3 - solved!", "#   @*#"},
        {"open:room key:u", kReadyLine, "#@ $ .#"},
        {"open:room key:r key:r undo", "Pushes: 0|Moves: 1", "# @$ .#"},
        {"open:room key:r key:r undo redo", "Pushes: 1|Moves: 2", "#  @$.#"},
        {"open:room key:r key:r key:l undopush", "Pushes: 1|Moves: 2", "#  @$.#"},
        {"open:room key:r key:r undopush redopush", "Pushes: 1|Moves: 2", "#  @$.#"},
        {"open:room key:r key:r restart", kReadyLine, "#@ $ .#"},
        {"open:room key:r key:r restart redo", "Pushes: 0|Moves: 1", "# @$ .#"},
        {"open:room key:r opt:2", nullptr, "# @$ .#"},
        {"open:room key:r open:easy key:r", "Pushes: 0|Moves: 1", "# @$ .#"},
        {"open:room down:43 up:43", "Pushes: 0|Moves: 5", "#  $ .#|#    @#"},
        {"open:room down:22 up:22", nullptr, "#@ $ .#", "reach 20 21 23 24; chosen 22"},
        {"open:room down:22 up:22 hover:24", nullptr, "#@ $ .#",
         "reach 20 21 23 24; path 22 23 24; chosen 22"},
        {"open:room down:22 up:22 hover:43", nullptr, "#@ $ .#", "reach 20 21 23 24; chosen 22"},
        {"open:room down:22 up:22 down:24 up:24", "Pushes: 2|Moves: 3 - solved!", "#   @*#"},
        {"open:room down:22 move:23 up:23", "Pushes: 1|Moves: 2", "#  @$.#"},
        {"open:room down:22 up:22 down:22 up:22", nullptr, "#@ $ .#"},
        {"open:room down:22 up:22 right:24 up:24", nullptr, "#@ $ .#"},
        {"open:room down:22 up:22 down:43 up:43", nullptr, "#@ $ .#"},
        {"open:room down:22 up:22 escape", nullptr, "#@ $ .#"},
        {"open:room down:22 up:22 key:r", "Pushes: 0|Moves: 1", "# @$ .#"},
        {"open:room key:d key:r key:r key:r key:u key:l key:l", "Pushes: 2|Moves: 7", "#$@  .#",
         "stuck 20"},
        {"open:room dead", nullptr, "#@ $ .#", "dead 20 39 40 41 42 43"},
        {"open:room dead dead", nullptr, "#@ $ .#"},
        {"open:room reach hover:22", nullptr, "#@ $ .#", "reach 20 21 23 24"},
        {"open:room reach hover:22 key:r key:r", nullptr, "#  @$.#"},
        {"open:room reach hover:23 key:r key:r", nullptr, "#  @$.#", "reach 20 21 22 24"},
        {"open:strange key:r key:r", "Pushes: 1|Moves: 1", "# @$#", "stuck 22"},
        {"clear key:r", nullptr, ""},
    });
    flow.View.SaveFile = flow.Files.Path("played.sol");
    flow.Play("open:room key:r key:r key:l undo copyplayed saveplayed");
    EXPECT_EQ(flow.View.Clip, "rR");
    EXPECT_EQ(flow.View.AskedName, "room-played.sol");
    EXPECT_EQ(test::ReadWholeFile(flow.Files.Path("played.sol")),
              "#######\n#@ $ .#\n#     #\n#######\n\nrR\n");
}

TEST_F(FlowTest, SolveFromHere) {
    constexpr const char* kText = "TEXT ANIM CLEAR";
    constexpr const char* kFrozen = "There is, at least, one frozen block|";
    const std::string turned =
        kFrozen + std::string(
                      "No solution from here; solvable up to move 6 (push 1), "
                      "not after move 7 (push 2)");
    const std::string lost = "open:room key:d key:r key:r key:r key:u key:l key:l here";
    CheckSights({
        {"open:room here", "Solution:  3/2|0 pushes so far, 2 to go, best 2", "#@ $ .#", "", kText},
        {"open:room key:r key:r here", "Solution:  1/1|1 push so far, 1 to go, best 2", "#  @$.#",
         "", kText},
        {"open:room key:r key:r here key:r", "Pushes:  1/1|Moves:  1/1", "#   @*#"},
        {"open:room key:r key:r here key:r hand", "Pushes: 1|Moves: 2", "#  @$.#"},
        {"open:room key:r key:r here key:r hand undo", "Pushes: 0|Moves: 1", "# @$ .#"},
        {"open:room key:r key:r here key:r hand undo replay", "Pushes:  1/1|Moves:  1/1",
         "#   @*#"},
        {"open:room key:r key:r here anim hand", "Pushes: 1|Moves: 2", "#  @$.#", "",
         "TEXT CONT< >REPEAT CLEAR"},
        {"open:room key:r key:r key:r here", "Pushes: 2|It is solved already", "#   @*#"},
        {lost.c_str(), turned.c_str(), "#$@  .#", "stuck 20", "SOLVE -ANIM CLEAR"},
        {"open:unsolvable key:r key:r here", nullptr, "#  @$$ ..#", "stuck 23 24"},
    });
    flow.Play("open:unsolvable key:r key:r here");
    EXPECT_EQ(flow.Now().Right, "No solution from here, nor from the start");
    EXPECT_EQ(flow.View.Clip, "");
    flow.View.SaveFile = "must not be asked for";
    flow.Play("ask open:room key:r key:r here");
    EXPECT_EQ(flow.View.AskedName, "");  // no file for a position of a game
    EXPECT_EQ(flow.View.Request.LevelName, "room");
    // A stop ends the questions.
    Flow other;
    other.Play("memory:200000 open:long during:escape here");
    EXPECT_EQ(other.View.Buttons(), "SOLVE -ANIM CLEAR");
}

TEST_F(FlowTest, ReplayUnderControl) {
    constexpr const char* kText = "TEXT ANIM CLEAR";
    constexpr const char* kCont = "TEXT CONT< >REPEAT CLEAR";
    constexpr const char* kRepeat = "TEXT REPEAT CLEAR";
    constexpr const char* kStop = "TEXT STOP CLEAR";
    CheckSights({
        {"open:easy solve key:r", "Pushes:  1/2|Moves:  2/3", "#  @$.#", "", kCont},
        {"open:easy solve key:r key:r", "Pushes:  2/2|Moves:  3/3", "#   @*#", "", kRepeat},
        {"open:easy solve key:r key:r key:l", "Pushes:  1/2|Moves:  2/3", "#  @$.#", "", kCont},
        {"open:easy solve key:r key:l", "Pushes:  0/2|Moves:  0/3", "#@ $ .#", "", kText},
        {"open:easy solve key:r key:u key:d", "Pushes:  1/2|Moves:  2/3", "#  @$.#", "", kCont},
        {"open:easy solve control:r", "Pushes:  0/2|Moves:  1/3", "# @$ .#", "", kCont},
        {"open:easy solve end control:l", "Pushes:  1/2|Moves:  2/3", "#  @$.#", "", kCont},
        {"open:easy solve end home", "Pushes:  0/2|Moves:  0/3", "#@ $ .#", "", kText},
        {"open:easy solve space", nullptr, "#@ $ .#", "", kStop},
        {"open:easy solve space tick space", "Pushes:  0/2|Moves:  1/3", "# @$ .#", "", kCont},
        {"open:easy solve key:r anim tick", "Pushes:  2/2|Moves:  3/3", "#   @*#", "", kRepeat},
        {"open:easy solve key:r animright tick", "Pushes:  0/2|Moves:  1/3", "# @$ .#", "", kStop},
        {"open:easy solve anim goto:1", "Pushes:  0/2|Moves:  1/3", "# @$ .#", "", kStop},
        {"open:easy solve anim goto:3", "Pushes:  2/2|Moves:  3/3", "#   @*#", "", kRepeat},
        {"open:easy solve anim anim goto:1", "Pushes:  0/2|Moves:  1/3", "# @$ .#", "", kCont},
        {"open:easy solve solve letter1:rRR", "Pushes:  1/2|Moves:  2/3", "#  @$.#", "", kCont},
        {"open:easy solve solve letter1:#@", nullptr, "#@ $ .#", "", "RETURN -ANIM CLEAR"},
        {"open:easy goto:2", kReadyLine, "#@ $ .#"},
        {"open:easy solve hand key:r", "Pushes: 0|Moves: 1", "# @$ .#"},
        {"open:easy solve hand space end", "Pushes: 0|Moves: 0", "#@ $ .#"},
    });
    const auto replay = [](const char* script) {
        Flow own;
        own.Play(script);
        return own.Now().Replay;
    };
    EXPECT_FALSE(replay("open:easy").Visible);
    EXPECT_FALSE(replay("open:easy solve solve").Visible);
    const ReplayLook one = replay("open:easy solve key:r");
    EXPECT_TRUE(one.Visible && one.OwnsArrows && !one.Playing);
    EXPECT_EQ(one.Names, std::vector<std::string>{"fewest pushes: 3/2"});
    EXPECT_EQ(one.PushMarks, (std::vector<std::int64_t>{2, 3}));
    const ReplayLook hand = replay("open:easy solve anim tick hand");
    EXPECT_TRUE(hand.Visible && !hand.OwnsArrows && !hand.Playing);
}

TEST_F(FlowTest, DrawsWithUndo) {
    CheckSights({
        {"open:room edit down:40 up:40", "Editing|", "#@ $ .#|# #   #"},
        {"open:room edit down:39 move:40 move:41 up:41 undo", nullptr, "#@ $ .#|#     #"},
        {"open:room edit down:39 move:40 up:40 down:42 up:42 undo", nullptr, "#@ $ .#|###   #"},
        {"open:room edit down:40 up:40 undo redo", nullptr, "#@ $ .#|# #   #"},
        {"open:room edit shift:2 undo", nullptr, "#######|#@ $ .#"},
        {"open:room edit turn:1 undo", nullptr, "#@ $ .#"},
        {"open:room edit clear undo", nullptr, "#@ $ .#"},
        {"open:room edit right:22 up:22", "Editing|no box", "#@   .#"},
        {"open:room edit tool:2 right:22 move:23 move:24 up:24", nullptr, "#@    #"},
        {"edit shape:1 down:0 move:80 move:40 up:40", nullptr, "###|# #|###"},
        {"edit shape:1 down:0 move:40 up:40 undo", nullptr, ""},
        {"open:room edit shape:2 tool:1 down:40 up:40", nullptr, "#@.$..#|#.....#"},
        {"open:room edit shape:2 tool:5 down:40 up:40", nullptr, "#  $ .#|# @   #"},
    });
    flow.Play("open:room edit down:40 up:40 yes escape");
    EXPECT_EQ(flow.At(40), kFloor);
    flow.Play("undo");  // undoing all can be undone
    EXPECT_EQ(flow.At(40), kWall);
}

TEST_F(FlowTest, SolvesBesideTheDrawing) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"open:room edit rested", ""},  // off at first
        {"open:room aside rested", ""},
        {"open:room edit aside", ""},
        {"open:room edit aside rested", "Solution: 3/2"},
        {"open:room edit aside aside rested", ""},
        {"open:room edit aside rested down:43 up:43", ""},
        {"open:room edit aside rested down:43 up:43 rested", "Solution: 3/2"},
        {"open:room edit aside rested down:43 up:43 undo", "Solution: 3/2"},
        {"open:room edit aside rested anim", ""},
        {"open:frozen edit aside rested", "a box is stuck"},
        {"open:done edit aside rested", "solved already"},
        {"open:unsolvable edit aside rested", "no solution"},
        {"open:strange edit aside rested", ""},
    };
    for (const auto& [script, answer] : cases) {
        Flow own;
        own.Play(script);
        EXPECT_EQ(own.Now().Aside, answer) << script;
        EXPECT_EQ(own.View.TakeBoxes(), "");
    }
}

// What each command answers while the solver, the replay or the editor is at work; nullptr where it
// is not tried because it goes ahead.
TEST_F(FlowTest, Guards) {
    const struct {
        const char* Command;
        const char* Solving;
        const char* Animating;
        const char* Editing;
    } rows[] = {
        {"openfile", kRunning, kAnimating, "You are editing"},
        {"restart", kRunning, kAnimating, "You are editing"},
        {"next", kRunning, kAnimating, "You are editing"},
        {"previous", kRunning, kAnimating, "You are editing"},
        {"open:easy", kRunning, kAnimating, "You are editing"},
        {"import", kRunning, kAnimating, "You are editing"},
        {"paste:easy", kRunning, kAnimating, "You are editing"},
        {"edit", kRunning, kAnimating, nullptr},
        {"hash:1", kRunning, kAnimating, nullptr},
        {"example:1", kRunning, kAnimating, nullptr},
        {"opt:2", kCantChange, kAnimating, "You are editing"},
        {"search:1", kCantChange, nullptr, nullptr},
        {"special", kCantChange, nullptr, nullptr},
        {"configure", kCantChange, nullptr, nullptr},
        {"apply", kCantChange, nullptr, nullptr},
        {"exit", kRunning, nullptr, nullptr},
        {"clear", kRunning, nullptr, nullptr},
    };
    for (const auto& row : rows) {
        const std::string command = row.Command;
        Check({("open:long during:" + command + ",solve solve").c_str(), "SOLVE -ANIM CLEAR",
               nullptr, row.Solving});
        if (row.Animating != nullptr) {
            Check({("open:easy solve anim " + command).c_str(), "TEXT STOP CLEAR", nullptr,
                   row.Animating});
        }
        if (row.Editing != nullptr) {
            Check(
                {("open:easy edit " + command).c_str(), "-SOLVE DONE CLEAR", nullptr, row.Editing});
        }
    }
    Check({"open:easy solve solve edit", "RETURN -ANIM CLEAR", nullptr, "You are seeing TEXT"});
    Check({"import edit", "RETURN -ANIM -CLEAR", nullptr, "You are seeing TEXT"});
}

// A board that no file holds is not dropped without a question.
TEST_F(FlowTest, AsksBeforeALevelIsLost) {
    constexpr const char* kDraw = "open:lev10 open:lev2 edit down:60 anim ";
    const struct {
        const char* Script;
        const char* Title;
        int Quits;
        const char* Boxes;
    } rows[] = {
        {"cancelled next", "kavit", 0, kUnsaved},
        {"no next", "kavit lev10", 0, kUnsaved},
        {"no next no previous", "kavit lev2", 0, kUnsaved},
        {"cancelled exit", "kavit", 0, kUnsaved},
        {"no exit", "kavit", 1, kUnsaved},
        {"yes exit", "kavit", 0, kUnsaved},  // the dialog is cancelled
        {"cancelled paste:room", "kavit", 0, kUnsaved},
        {"cancelled open:easy", "kavit", 0, kUnsaved},
        {"clear exit", "kavit", 1, ""},                          // an empty board is no loss
        {"edit tool:0 down:60 anim exit", "kavit lev2", 1, ""},  // as it was read
        {"cancelled open:odd", "kavit", 0, kUnsaved},
    };
    for (const auto& row : rows) {
        Flow own;
        SCOPED_TRACE(row.Script);
        own.Play(std::string(kDraw) + row.Script);
        EXPECT_EQ(own.Now().Title, row.Title);
        EXPECT_EQ(own.View.Quits, row.Quits);
        EXPECT_EQ(own.View.TakeBoxes(), row.Boxes);
    }
    flow.Play(kDraw);
    flow.View.SaveFile = flow.Files.Path("mine.xsb");
    flow.Play("yes exit");
    EXPECT_EQ(flow.View.Quits, 1);
    EXPECT_EQ(flow.View.AskedName, "lev2.xsb");
    EXPECT_EQ(flow.Files.Read("mine.xsb"), "#######\n#@ $ .#\n#######\n   #   \n");
}

// Cancel at an invalid character ends the program, and the box says so.
TEST_F(FlowTest, InvalidCharacter) {
    constexpr const char* kFileBox =
        "Invalid char 'x' in Xsb; Assumed Space\n\nOK reads on, Cancel ends the program.";
    constexpr const char* kTextBox =
        "Invalid char 'q' in Xsb; Assumed Space\n\nOK reads on, Cancel goes back to the text.";
    const struct {
        const char* Script;
        int Quits;
        const char* Boxes;
    } rows[] = {
        {"open:odd", 0, kFileBox},
        {"open:easy cancelled open:odd", 1, kFileBox},
        {"import typetext:#q cancelled solve", 0, kTextBox},
    };
    for (const auto& row : rows) {
        Flow own;
        own.Play(row.Script);
        EXPECT_EQ(own.View.Quits, row.Quits) << row.Script;
        EXPECT_EQ(own.View.TakeBoxes(), row.Boxes) << row.Script;
    }
}

// Which name, file and picture a solution gets follows from how the board differs from what was
// read.
TEST_F(FlowTest, SolutionFiles) {
    const struct {
        const char* Script;
        const char* Asked;  // "?" when no name was asked for
        const char* File;   // its beginning; "" for none
    } rows[] = {
        {"open:easy solve", "?", ""},
        {"open:easy ask solve", "easy.sol", "rRR\r\nrRR\r\n\r\n"},
        {"open:easy always solve", "?", "rRR\r\nrRR\r\n"},
        // Painted on: no level's file any more, and pictured.
        {"open:easy edit tool:0 down:60 tool:4 down:60 anim always solve", "",
         "#######\r\n#@ $ .#\r\n#######\r\n   #"},
        {"open:room edit down:41 anim always solve", "", "#######\r\n#@ $ .#\r\n"},
        // Painted back: that level again.
        {"open:easy edit down:60 tool:0 down:60 anim ask solve", "easy.sol", "rRR\r\n"},
        // Only moved: its name stays, and it is pictured.
        {"open:easy edit shift:2 anim ask solve", "easy.sol", " #######\r\n #@ $ .#\r\n"},
        {"open:easy edit turn:1 anim ask solve", "easy.sol", "#######\r\n#. $ @#\r\n"},
        {"paste:easy always solve", "", "#######\r\n#@ $ .#\r\n"},
        {"paste:easy always solve solve solve restart solve", "", "#######\r\n#@ $ .#\r\n"},
        // The expert menus name how it was solved.
        {"tool:9 tool:2 tool:3 tool:1 letter ask opt:2 special hash:1 open:easy solve",
         "easy_more_sp_1.sol", "rRR\r\n"},
        {"tool:2 tool:3 tool:1 letter ask opt:3 open:easy solve", "easy_plus.sol", "rRR\r\n"},
    };
    for (const auto& row : rows) {
        Flow own;
        SCOPED_TRACE(row.Script);
        own.View.AskedName = "?";
        own.View.SaveFile = own.Files.Path("asked.sol");
        own.Play(row.Script);
        EXPECT_EQ(own.View.AskedName, row.Asked);
        const bool asked = own.View.AskedName != "?";
        const std::string text = own.Files.Read(asked ? "asked.sol" : "easy.sol");
        EXPECT_EQ(text.substr(0, std::string_view(row.File).size()), row.File);
        EXPECT_EQ(text.empty(), *row.File == '\0');
        EXPECT_EQ(own.View.Now.SolveCaption, std::string("TEXT"));
    }
}

// A full disk, and a folder that is not there: the solution is still in the text view, on the
// clipboard and in the replay, and the box says what and why.
TEST_F(FlowTest, SolutionFileThatCannotBeWritten) {
    std::filesystem::create_symlink("/dev/full", flow.Files.Path("full.sol"));
    for (const auto& [file, reason] : {std::pair{"full.sol", "No space left on device"},
                                       std::pair{"gone/x.sol", "No such file or directory"}}) {
        flow.View.SaveFile = flow.Files.Path(file);
        flow.View.Clip.clear();
        flow.Play("ask open:easy solve");
        const std::string box = flow.View.TakeBoxes();
        EXPECT_NE(box.find(file), std::string::npos) << box;
        EXPECT_NE(box.find(reason), std::string::npos) << box;
        EXPECT_EQ(flow.View.Clip, "rRR");
        flow.Play("solve");
        EXPECT_NE(flow.Now().BoxText.find("RESULT:  3/ 2"), std::string::npos);
        flow.Play("solve");
    }
    std::filesystem::remove(flow.Files.Path("Kavit.ini"));
    std::filesystem::create_symlink("/dev/full", flow.Files.Path("Kavit.ini"));
    flow.Run([](Model& m) { m.Settings.Save(); });
    EXPECT_NE(flow.View.TakeBoxes().find("Kavit.ini"), std::string::npos);
}

// However a solve ends, what is known is shown.
TEST_F(FlowTest, EndsOfASolve) {
    const KeptSolution kept{.SolMoves = 3, .SolPushes = 2, .SolPhase = 1, .SolString = "rRR"};
    const auto stopped = [&](SolveReport& report) {
        report.Code = Result::Stopped;
        report.Cause = StopCause::User;
        report.LastMsg = Result::StoppedWithSolution;
        report.Lines = {"Interrupted by user but there is a solution", "  3/2"};
        report.Kept = {kept, kept};
    };
    const struct {
        std::function<void(SolveReport&)> End;
        const char* Buttons;
        const char* Lines;
        const char* Boxes;
        const char* Text;
    } rows[] = {
        {stopped, "TEXT ANIM CLEAR", "Interrupted by user but there is a solution|  3/2", "",
         "Best Solution before "},
        {[](SolveReport& r) {
             r.Kept = {};
             r.Fault = "a fault";
         },
         "SOLVE -ANIM CLEAR", "|", "a fault", ""},
        {[](SolveReport& r) { r.Fault = "a fault"; }, "TEXT ANIM CLEAR", nullptr, "a fault",
         "RESULT: "},
    };
    for (const auto& row : rows) {
        flow.View.OnReport = row.End;
        flow.Play("ask always open:easy solve");
        EXPECT_EQ(flow.View.Buttons(), row.Buttons);
        if (row.Lines != nullptr) {
            EXPECT_EQ(flow.View.Lines(), row.Lines);
        }
        EXPECT_EQ(flow.View.TakeBoxes(), row.Boxes);
        EXPECT_EQ(flow.Now().Title, "kavit easy");
        if (*row.Text == '\0') continue;
        EXPECT_NE(flow.Files.Read("easy.sol").find(row.Text), std::string::npos);
        flow.Play("solve");
        EXPECT_NE(flow.Now().BoxText.find(row.Text), std::string::npos);
    }
}

TEST_F(FlowTest, WhatASearchShows) {
    flow.Play("tool:2 tool:3 tool:1 letter opt:3 open:room");
    std::string during;
    flow.View.DuringSearch = [&](Model&) {
        if (!during.empty() || flow.Now().Side.empty()) return;
        const Screen& now = flow.Now();
        during = flow.View.Buttons() + "; " + now.Title + "; " + now.Timer + "; " + now.Side;
        flow.Seconds += 12.4;
        flow.Run([](Model& m) { m.Solve.WatchTick(); });
        during += "; " + now.Timer;
    };
    flow.Play("solve");
    EXPECT_EQ(during, "STOP -ANIM -CLEAR; Solving room; 0/300; 2; 12/300");
    EXPECT_NE(flow.Now().Debug.find("; fewest moves proved"), std::string::npos);
    EXPECT_EQ(flow.Now().Timer, "12/300");
    EXPECT_FALSE(flow.Now().Solving);
    flow.Run([](Model& m) {
        SolveProgress progress;
        progress.Positions = 5000;
        progress.BytesPerPosition = 1024;
        progress.ForwLayers = 12;
        progress.BackLayers = 9;
        progress.LayerSize = 321;
        progress.OffersPerSecond = 2100499;
        progress.PushesLower = 22;
        progress.PushesReach = 30;
        m.Solve.SearchCame(progress);
    });
    EXPECT_EQ(flow.Now().Debug, "Pos.Count = 5000");
    EXPECT_EQ(flow.Now().Progress, 5000);
    EXPECT_EQ(flow.Now().Details,
              "layers 12 + 9, this one 321; 2100000 offers/s; 4.9 MB; at least 22 pushes; memory "
              "reaches to about 30");
}

// A board can never hold two men, whatever was clicked; the way he looks is only his picture.
TEST_F(FlowTest, OneMan) {
    flow.Play("open:easy edit shift:2");
    for (int tool = 5; tool <= 9; ++tool) {
        const int cell = 60 + tool;
        flow.Play("tool:" + std::to_string(tool) + " down:" + std::to_string(cell) + " up");
        EXPECT_EQ(flow.Men(), 1) << tool;
        EXPECT_EQ(flow.At(cell), tool == 9 ? kManOnGoal : kMan) << tool;
        EXPECT_EQ(flow.Now().Cells[static_cast<std::size_t>(cell)], PictureOf(tool)) << tool;
    }
    flow.Play("tool:2 down:69");
    EXPECT_EQ(flow.View.TakeBoxes(), "You can't erase the Man");
    flow.Play("move:70 up");
    EXPECT_EQ(flow.At(70), kFloor) << "no drag begins on the man";
    flow.Play("tool:4 down:67 move:69 move:71 up move:72");
    EXPECT_EQ(flow.View.TakeBoxes(), "Can't drag over the Man");
    EXPECT_EQ(flow.At(71), kWall);
    EXPECT_EQ(flow.At(72), kFloor);
    EXPECT_EQ(flow.At(69), kManOnGoal);
    flow.Play("tool:6 down:100 move:101");
    EXPECT_EQ(flow.At(101), kFloor) << "men are not dragged";
    // The man is found again behind a shift.
    flow.Play("anim no open:easy edit shift:1 anim solve edit tool:0 down:90 anim solve");
    EXPECT_EQ(flow.View.Lines(), kSolvedLine);
    EXPECT_EQ(flow.Men(), 1);
}

TEST_F(FlowTest, WideLevelsAreNotTurned) {
    flow.Files.Write("broad.xsb", "##################\n#@$.             #\n##################\n");
    flow.Play("open:broad.xsb edit turn:0");
    EXPECT_EQ(flow.View.TakeBoxes(),
              "This level is 18 columns wide; only levels of up to 17 columns can be turned or "
              "mirrored");
}

TEST_F(FlowTest, ExpertMenus) {
    flow.Play("tool:2 tool:3 tool:1 tool:0 letter");
    EXPECT_FALSE(flow.Now().ExpertMenus);
    EXPECT_EQ(flow.View.TakeBoxes(), "");
    flow.Play("tool:9 tool:2 tool:3 tool:1 letter");
    EXPECT_EQ(flow.View.TakeBoxes(),
              "You found an EsterEgg\r\n\r\nLook at Search, Optimizer and Hash menus");
    EXPECT_TRUE(flow.Now().ExpertMenus);
    flow.Play("letter");
    EXPECT_EQ(flow.View.TakeBoxes(), "");
    const struct {
        const char* Script;
        int SeaType, OptLevel, HashCase;
        const char* Letter;
        bool Special;
    } rows[] = {
        {"", 0, 1, 0, "S", false},
        {"search:2 special", 2, 1, 0, "S", false},
        {"search:3 opt:2 special", 0, 2, 0, "M", true},
        {"opt:3", 0, 3, 0, "P", true},
        {"special", 0, 3, 0, "P", false},
        {"special opt:1 hash:2", 0, 1, 2, "S", false},
        {"opt:4 special", 0, 4, 2, "F", true},
        {"hash:3", 0, 4, 3, "F", true},
        {"opt:0 search:1 hash:2", 1, 0, 2, "N", false},
    };
    for (const auto& row : rows) {
        flow.Play(row.Script);
        const Screen& now = flow.Now();
        EXPECT_EQ(std::tie(now.SeaType, now.OptLevel, now.HashCase, now.OptimizerUnderlined),
                  std::tie(row.SeaType, row.OptLevel, row.HashCase, row.Special))
            << row.Script;
        EXPECT_EQ(now.Optimizer, row.Letter);
        EXPECT_EQ(now.OptSpecial, row.Special);
    }
    flow.Play("open:easy solve");
    EXPECT_EQ(flow.View.Request.Options.SeaType, SeaType::Forward);
    EXPECT_EQ(flow.View.Request.Options.OptLevel, OptLevel::None);
    EXPECT_EQ(flow.View.Request.Options.HashCase, HashCase::Case2);
    flow.Play("opt:0");
    EXPECT_EQ(flow.View.Buttons(), "TEXT ANIM CLEAR") << "the level in force changes nothing";
    flow.Play("opt:1");
    EXPECT_EQ(flow.View.Buttons(), "SOLVE -ANIM CLEAR");
}

TEST_F(FlowTest, FolderAndExamples) {
    const Row rows[] = {
        {"next", "-SOLVE -ANIM -CLEAR", nullptr, "Must Open First"},
        {"open:lev10 open:lev2 previous", "SOLVE -ANIM CLEAR", nullptr, "No previous levels",
         "kavit lev2"},
        {"open:lev10 open:lev2 next", "SOLVE -ANIM CLEAR", kReadyLine, "", "kavit lev10"},
        {"open:lev10 open:lev2 next next", "SOLVE -ANIM CLEAR", nullptr, "No more levels",
         "kavit lev10"},
        {"open:lev2 open:lev10 previous", "SOLVE -ANIM CLEAR", kReadyLine, "", "kavit lev2"},
        {"example:11", "-SOLVE -ANIM -CLEAR", nullptr, "No previus name"},
        {"example:1", "-SOLVE -ANIM -CLEAR", nullptr, "file 01-first-steps.xsb Not found"},
        {"example:10", "-SOLVE -ANIM -CLEAR"},
    };
    for (const Row& row : rows) Check(row);
    for (const char* name : {"01-first-steps.xsb", "lev09.xsb", "lev10.xsb"}) {
        flow.Files.Write(name, test::kEasy);
    }
    flow.View.Typed = "lev09";
    for (const auto& [script, title] : {std::pair{"example:1", "kavit 01-first-steps"},
                                        {"example:10", "kavit lev09"},
                                        {"example:11", "kavit lev10"},
                                        {"edit example:1", "kavit 01-first-steps"}}) {
        flow.Play(script);
        EXPECT_EQ(flow.Now().Title, title);
        EXPECT_EQ(flow.View.Buttons(), "SOLVE -ANIM CLEAR");
    }
    flow.View.OpenFile = flow.File("room");
    flow.Play("openfile");
    EXPECT_EQ(flow.Now().Title, "kavit room");
    ASSERT_EQ(mkfifo(flow.Files.Path("pipe.xsb").c_str(), 0600), 0);
    flow.Play("open:pipe.xsb");
    EXPECT_EQ(flow.Now().Debug, "it is a pipe");
    flow.Play("open:wide");
    EXPECT_EQ(flow.Now().Debug, "line 1, column 20");
}

TEST_F(FlowTest, ImportTakesTextOrLeavesItForMending) {
    const std::pair<std::string, const char*> rows[] = {
        {"####################", "Width puzzle exceed the maximum (19)"},
        {std::string(40, '\n') + "#", "Height puzzle exceed the maximum (17)"},
        {"#" + std::string(60, ' '), "Input line too long"},
        {"#q", "You can select and copy to the clipboard (CTRL-C)"},
    };
    flow.Play("open:easy import");
    EXPECT_FALSE(flow.Now().BoxReadOnly);
    EXPECT_EQ(flow.View.Focused, Place::TextBox);
    for (const auto& [text, left] : rows) {
        flow.View.Answers = {Choice::Cancel};
        flow.Run([&](Model& m) { m.Import.TextChanged(text); });
        flow.Play("solve");
        EXPECT_EQ(flow.Now().Left, left);
        EXPECT_EQ(flow.View.Buttons(), "RETURN -ANIM CLEAR");
        EXPECT_EQ(flow.Now().BoxText, text);
        EXPECT_EQ(flow.At(20), kMan);
    }
    flow.Play("openfile");  // cancelled: the box goes, the text is back with the next Import
    flow.View.Answers.clear();
    EXPECT_FALSE(flow.Now().BoxVisible);
    flow.Play("import");
    EXPECT_EQ(flow.Now().BoxText, "#q");
    flow.Play("type:room solve");
    EXPECT_EQ(flow.View.Focused, Place::NextButton);
    EXPECT_EQ(flow.At(39), kFloor);
    for (const std::string& text : {std::string("# a heading"), std::string(200000, '#')}) {
        flow.View.Clip = text;
        flow.Run([](Model& m) { m.Import.Paste(); });
        EXPECT_EQ(flow.View.Buttons(), "SOLVE -ANIM CLEAR");
    }
    EXPECT_EQ(flow.Now().Right, "The text on the clipboard is too long for a level");
    // The text of a solution is not the draft.
    flow.Play("solve solve import");
    EXPECT_EQ(flow.Now().BoxText, "");
}

TEST_F(FlowTest, SettingsPanel) {
    std::string longText = "<";
    for (int i = 0; i < 10000; ++i) longText += "\u00e9";
    const std::string longBox =
        "Max Positions: \"" + longText.substr(0, 39) + "...\" is not a whole number";
    const struct {
        const char *Memory, *Blocks, *Time, *Box, *BlocksAfter;
        Place Focused = Place::Cancel;
    } rows[] = {
        {"200000", "20", "86401", "MaxTime can't exceed 86400 secs.", "8"},
        {"200000", "0", "300", "Blocks can't be zero or negative", "0"},
        {"-1", "8", "300", "Max number of positions can't be zero or negative", "8"},
        {"100", "8", "0", "Max elapsed time can't be zero or negative", "8"},
        {"9223372036854775807", "9", "300", "Insuficient Memory", "8"},
        {"200000", "many", "300", "Blocks: \"many\" is not a whole number", "many", Place::Blocks},
        {"200000", "8", "", "Max Time: \"\" is not a whole number", "8", Place::Time},
        {"-99999999999999999999", "8", "300", "Max number of positions can't be zero or negative",
         "8"},
        {longText.c_str(), "8", "300", longBox.c_str(), "8", Place::Memory},
        {" 100000 ", "12", "600", "", "12", Place::NextButton},
    };
    for (const auto& row : rows) {
        if (!flow.Now().PanelVisible) flow.Play("configure");
        flow.View.Focused = Place::Cancel;
        flow.Run([&](Model& m) { m.Settings.Edited({row.Memory, row.Blocks, row.Time}); });
        flow.Play("apply");
        EXPECT_EQ(flow.View.TakeBoxes(), row.Box);
        EXPECT_EQ(flow.Now().Panel.Blocks, row.BlocksAfter) << row.Box;
        EXPECT_EQ(flow.View.Focused, row.Focused) << row.Box;
        EXPECT_EQ(flow.Now().PanelVisible, *row.Box != '\0') << row.Box;
        EXPECT_EQ(flow.Now().Size, *row.Box != '\0' ? "200000/8" : "100000/12") << row.Box;
    }
    EXPECT_TRUE(flow.Now().PanelMemory.starts_with("Memory: 2.6 MB of ")) << flow.Now().PanelMemory;
    flow.Play("memory:many");
    EXPECT_EQ(flow.Now().PanelMemory, "");
    flow.Play("memory:100000");
    EXPECT_EQ(flow.Now().Timer, "0/600");
    EXPECT_EQ(flow.Now().ProgressMost, 100000);
    flow.Play("configure blocks:20 cancel");
    EXPECT_EQ(flow.Now().Panel.Blocks, "12");
    EXPECT_EQ(flow.View.Focused, Place::NextButton);
    flow.Play("configure blocks:20 configure");
    EXPECT_FALSE(flow.Now().PanelVisible);
    EXPECT_EQ(flow.Now().Panel.Blocks, "12");
    flow.Play("configure escape");
    EXPECT_FALSE(flow.Now().PanelVisible);
    flow.Run([](Model& m) { m.Settings.SizeChosen(); });
    EXPECT_EQ(flow.View.Focused, Place::Apply);
    // The next command takes over what stands in the open panel; SOLVE does not.
    for (const char* command : {"open:easy", "import solve", "edit anim"}) {
        flow.Play("configure blocks:3");
        flow.Play(command);
        EXPECT_EQ(flow.Now().Size, "100000/3") << command;
        EXPECT_FALSE(flow.Now().PanelVisible);
        flow.Play("blocks:12 apply");
    }
    flow.Play("open:easy configure blocks:5 solve");
    EXPECT_EQ(flow.Now().Size, "100000/12");
    EXPECT_EQ(flow.Now().Panel.Blocks, "5");
    EXPECT_FALSE(flow.Now().PanelVisible);
    EXPECT_EQ(flow.View.Request.MaxTime, 600);

    flow.Play("always opt:2");
    EXPECT_TRUE(flow.Now().WriteSol && !flow.Now().NoWriteSol);
    flow.Run([](Model& m) { m.Settings.Save(); });
    EXPECT_EQ(flow.Files.Read("Kavit.ini"), " 100000  12  600  2  1  0 \r\n");
    ASSERT_EQ(flow.Begin(), "");
    EXPECT_EQ(flow.Now().Optimizer, "M");
    EXPECT_EQ(flow.Now().Panel.Time, "600");
    EXPECT_EQ(flow.Now().Timer, "/600");
    EXPECT_TRUE(flow.Now().WriteSol);
    flow.Run([](Model& m) { m.Settings.SetNoWriteSol(true); });
    EXPECT_TRUE(!flow.Now().WriteSol && flow.Now().NoWriteSol);
}

TEST_F(FlowTest, SettingsFilesThatDoNotHold) {
    const std::pair<const char*, const char*> rows[] = {
        // the file, and part of the message
        {"", "found 0"},
        {" 4000000  8  300  1  0 ", "found 5"},
        {" 4000000  8  300  1  0  0  0 ", "found 7"},
        {" 4000000  x  300  1  0  0 ", "number 2 (Blocks) is \"x\""},
        {" 4000000  8  300  9  0  0 ", "number 4 (OptLevel) is \"9\""},
        {" 4000000  8  300  1  0  2 ", "number 6 (NoWriteSol)"},
        {" 4000000  8  300  1  1  1 ", "exclude"},
        {"4000000,,300,1,0,0", "number 2 (Blocks) is \"\""},
    };
    for (const auto& [text, part] : rows) {
        flow.Files.Write("Kavit.ini", text);
        const std::string fault = flow.Begin();
        EXPECT_NE(fault.find(part), std::string::npos) << fault;
        EXPECT_NE(fault.find(flow.Files.Path("Kavit.ini")), std::string::npos) << fault;
        EXPECT_EQ(flow.Files.Read("Kavit.ini"), text);
    }
    // Sizes that APPLY refuses give their message, and a window that works.
    flow.Files.Write("Kavit.ini", "200000 8,100000\r\n2 0 1");
    EXPECT_EQ(flow.Begin(), "");
    EXPECT_EQ(flow.View.TakeBoxes(), "MaxTime can't exceed 86400 secs.");
    EXPECT_EQ(flow.Now().Size, "4000000/8");
    EXPECT_EQ(flow.Now().Panel.Time, "300");
    EXPECT_EQ(flow.Now().Timer, "/300");
    EXPECT_EQ(flow.Now().Optimizer, "M");
}

TEST_F(FlowTest, CopiesAndHelp) {
    flow.Play("open:easy solve");
    EXPECT_EQ(flow.View.Clip, "rRR");
    flow.Play("copyboard");
    EXPECT_EQ(flow.View.Clip, test::kEasy);
    EXPECT_EQ(flow.Now().Right, "The board is on the clipboard");
    flow.Play("copy");
    EXPECT_EQ(flow.View.Clip, "rRR");
    EXPECT_EQ(flow.Now().Right, "The solution is on the clipboard");
    flow.Run([](Model& m) { m.ShowHelp(4); });
    EXPECT_EQ(flow.View.Help, "4easy");
}

// A replay paints what changed and shows the level again when it is given up.
TEST_F(FlowTest, ReplayPaintsTheBoard) {
    flow.Play("open:easy solve anim tick tick");
    EXPECT_EQ(flow.Now().Cells[21], Picture::Floor);
    EXPECT_EQ(flow.Now().Cells[22], Picture::ManRight);
    EXPECT_EQ(flow.Now().Cells[23], Picture::Box);
    EXPECT_TRUE(flow.Now().Playing);
    flow.Play("anim tick");
    EXPECT_FALSE(flow.Now().Playing);
    for (const char* command : {"hash:1", "restart", "edit", "import escape"}) {
        Flow own;
        own.Play("open:easy solve anim tick tick tick");
        own.Play(command);
        EXPECT_EQ(own.Now().Cells[20], Picture::ManDown) << command;
        EXPECT_EQ(own.Now().Cells[22], Picture::Box) << command;
    }
}

}  // namespace
}  // namespace kavit
