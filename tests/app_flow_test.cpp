#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <memory>
#include <regex>
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
    {"boxes", "##############\n#@ $$$$$$$$$ #\n#  ......... #\n##############\n"},
    {"wide", "#####################\n"},
    {"odd", "#####\n#x$.#\n#####\n"},
    {"lev2", test::kEasy},
    {"lev10", test::kEasy},
    {"nine",
     "###########\n#@        #\n# $ $ $ $ #\n#         #\n# $ $ $ $ #\n#    $    "
     "#\n#.........#\n###########\n"},
    {"many",
     "##############\n#@ $$$$$$$$$ #\n#  ......... #\n##############\n\n#####\n#@$.#\n#####\n"},
    {"album",
     "#####\n#@$.#\n#####\nTitle: One\n\n######\n#@ $.#\n######\nTitle: Two\nSolution\nrR\n\n"
     "##########\n#@ $ $ ..#\n##########\nTitle: Three\n"},
    {"twin",
     "#######\n#.$@$.#\n#######\nSolution\nRlL\n\n#######\n#.$@$.#\n#######\nSolution\nLrR\n"},
    {"trap", "######\n#    #\n#@$ .#\n#    #\n######\n"},
    {"torn", "#####\n#@$.#\n#####\n\n#####\n#@$?#\n#####\n\n#####\n#@$.#\n#####\n"},
    {"ragged", "#####\n#@$.#\n#####\n\n#####\n#@$?#\n#####\n\n#####\n#@$!#\n#####\n"},
    {"room", "#######\n#@ $ .#\n#     #\n#######\n"},
    {"ring",
     "#########\n#   .   #\n#   #   #\n#  ###  #\n# $# #$ #\n#  ###  #\n#   #   #\n#@  .   "
     "#\n#########\n"},
    {"liar", "#####\n#@$.#\n#####\nSolution\nlL\n\n#####\n#@$.#\n#####\n"},
    {"broad", "##################\n#@$.             #\n##################\n"},
};

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
            rows += " .$*#+<@>^ "[static_cast<int>(Now().Cells[static_cast<std::size_t>(cell)])];
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
        if (marks.Selected) add("chosen", {*marks.Selected});
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
            {"solution", [&](Model& m) { m.Solution.Choose(number); }},
            {"goto", [&](Model& m) { m.Solution.GoTo(number); }},
            {"speed", [&](Model& m) { m.Solution.SetSpeed(number); }},
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
            {"hold", [&](Model&) { View.HoldAside = true; }},
            {"asideends", [&](Model&) { View.EndAside(); }},
            {"help", [&](Model& m) { m.ShowHelp(number); }},
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
            {"drawn", [&](Model&) { Play("open:lev10 open:lev2 edit down:60 anim"); }},
            {"savefile", [&](Model&) { View.SaveFile = Files.Path(text); }},
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
    // All that can be seen of the window, by name, each in one line.
    std::map<std::string, std::string> Fields() {
        const Screen& s = Now();
        const auto when = [](bool on, const std::string& text) { return on ? text : ""; };
        const auto join = [](std::string text, const std::string& part) {
            return text.empty() ? part : text.append(", ").append(part);
        };
        const auto of = [](std::int64_t part, std::int64_t whole) {
            return std::to_string(part) + "/" + std::to_string(whole);
        };
        std::string list;
        for (const ListRow& level : *s.List) list += level.Title + ": " + level.Mark + ", ";
        const ReplayLook& look = s.Replay;
        std::string replay = of(look.At, look.Moves) + " " + of(look.PushesAt, look.Pushes);
        for (const std::int64_t mark : look.PushMarks) replay = join(replay, std::to_string(mark));
        for (const std::string& name : look.Names) replay = join(replay, name);
        replay += when(look.Speed != kNormalSpeed, ", speed " + std::to_string(look.Speed));
        replay += when(look.OwnsArrows, ", arrows") + when(look.Playing, ", playing");
        return {
            {"aside", when(s.AsideOn, "on ") + s.Aside},
            {"asked", View.AskedName + when(!View.AskedWhat.empty(), " of " + View.AskedWhat)},
            {"board", Rows()},
            {"box",
             when(HasBox(s.Phase), s.Phase == State::Importing ? "to type in " : "to read ") +
                 s.BoxText},
            {"boxes", View.TakeBoxes()},
            {"buttons", View.Buttons()},
            {"clip", View.Clip},
            {"details", s.Details},
            {"focus", std::to_string(static_cast<int>(View.Focused))},
            {"help", View.Help},
            {"labels", s.Side + " | " + s.Debug},
            {"lines", View.Lines()},
            {"list", std::to_string(s.ListChosen) + when(s.ListVisible, " listed") + ": " + list},
            {"marks", Marks() + when(s.ShowDead, " (dead)") + when(s.ShowReach, " (reach)")},
            {"menus", std::to_string(s.SeaType * 100 + s.OptLevel * 10 + s.HashCase) + s.Optimizer +
                          when(s.OptSpecial, " special") + when(s.ExpertMenus, " expert") +
                          when(s.OptimizerUnderlined, " underlined")},
            {"panel", s.Panel.Memory + "/" + s.Panel.Blocks + "/" + s.Panel.Time +
                          when(s.PanelVisible, " open")},
            {"progress", of(s.Progress, s.ProgressMost)},
            {"quits", std::to_string(View.Quits)},
            {"replay", when(look.Visible, replay)},
            {"running", when(IsSolving(s.Phase), "search ") + when(IsPlaying(s.Phase), "replay ") +
                            when(s.SolvingAll, "list")},
            {"size", s.Size},
            {"solution", when(s.WriteSol, "always") + when(s.NoWriteSol, "never")},
            {"timer", s.Timer},
            {"title", s.Title},
            {"tool", std::to_string(s.Tool) + " " + std::to_string(s.Shape) +
                         when(IsEditing(s.Phase), " editing")},
        };
    }
    // Some of them, one behind the other.
    std::string Shown(const std::string& names) {
        const auto all = Fields();
        std::string shown;
        std::istringstream words(names);
        for (std::string name; words >> name;) shown += (shown.empty() ? "" : "; ") + all.at(name);
        return shown;
    }
    // Those that are not as in another window, each in a line, without what the machine decides.
    std::string Seen(const std::map<std::string, std::string>& before) {
        std::string seen;
        for (auto [name, text] : Fields()) {
            const auto old = before.find(name);
            if (old != before.end() && old->second == text) continue;
            for (std::size_t at = 0; (at = text.find(Files.Path())) != std::string::npos;)
                text.replace(at, Files.Path().size(), "FOLDER");
            text = std::regex_replace(text, std::regex("can hold [0-9]+, which take [^.]*"),
                                      "can hold some");
            std::replace(text.begin(), text.end(), '\n', '|');
            text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
            seen += name + ": " + text;
            seen.erase(seen.find_last_not_of(' ') + 1);
            seen += '\n';
        }
        return seen;
    }
    [[nodiscard]] const Screen& Now() const { return View.Now; }
    [[nodiscard]] const Board& Level() const { return Window->Levels.Level().Board; }
    [[nodiscard]] int At(int cell) const { return Level().Cell[static_cast<std::size_t>(cell)]; }

    TempFolder Files;
    FakeView View;
    double Seconds = 1000;
    std::string Fault;
    std::unique_ptr<Model> Window;
};

class FlowTest : public testing::Test {
  protected:
    // What is shown by these names after each script.
    using Rows = std::vector<std::pair<const char*, std::string>>;
    void Follow(const std::string& names, const Rows& rows) {
        for (const auto& [script, shown] : rows) {
            flow.Play(script);
            EXPECT_EQ(flow.Shown(names), shown) << script;
        }
    }
    Flow flow;
};

// Every script of flows.txt on a window of its own, and what it shows then that a window just begun
// does not. What changes on purpose is taken over from the file that is left where the test ran.
TEST_F(FlowTest, ShowsWhatIsWritten) {
    std::istringstream lines(test::ReadWholeFile(KAVIT_TESTS_FOLDER "/flows.txt"));
    const auto begun = Flow().Fields();
    std::ofstream found("flows.txt");
    std::string script;
    std::string wanted;
    int scripts = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line[0] != '#' && line[0] != '>') {
            wanted += line + "\n";
            continue;
        }
        if (!script.empty()) {
            Flow own;
            own.Play(script.substr(1));
            const std::string seen = own.Seen(script == ">" ? decltype(begun){} : begun);
            EXPECT_EQ(seen, wanted) << script;
            found << seen;
            ++scripts;
        }
        found << line << "\n";
        script = line[0] == '>' ? line : "";
        wanted.clear();
    }
    EXPECT_GT(scripts, 200);
}

// A collection stands beside the board, level by level.
TEST_F(FlowTest, ListOfLevels) {
    flow.Play(
        "savefile:again.sok open:album choose:1 ask solve choose:0 solve savealbum always "
        "solveall");
    EXPECT_FALSE(flow.Now().SolvingAll);
    EXPECT_FALSE(std::filesystem::exists(flow.Files.Path("album-2.sol")));
    const Collection again = test::CollectionOf(flow.Files.Read("again.sok"));
    ASSERT_EQ(again.Levels.size(), 3U);
    EXPECT_EQ(again.Levels[0].Solution + again.Levels[1].Solution, "RrR");
    EXPECT_EQ(again.Levels[2].Title, "Three");
    // Stopped by the user, the run ends there.
    flow.Files.Write("two.txt", kLevels.at("long") + "\n" + kLevels.at("easy"));
    Follow("title list",
           {{"open:two.txt during:solve solveall", "kavit two-1; 0 listed: : , : , "}});
    // A folder is a list as well; the list goes and comes back.
    std::filesystem::create_directory(flow.Files.Path("levels"));
    const std::string broken =
        "Lines 1 to 3 of b3.xsb are left out: line 2, column 4 is no level character";
    flow.Files.Write("levels/b3.xsb", "#####\n#@$?#\n#####\n");
    flow.Play("no open:levels");
    EXPECT_EQ(flow.View.TakeBoxes(),
              "There are no levels in " + flow.Files.Path("levels") + "\n\n" + broken);
    flow.Files.Write("levels/b10.xsb", test::kEasy);
    flow.Files.Write("levels/b2.txt", kLevels.at("album"));
    Follow("title list boxes",
           {{"open:levels next", "kavit b2-2; 1 listed: One: , Two: , Three: , b10: , ; " + broken},
            {"togglelist", "kavit b2-2; 1: One: , Two: , Three: , b10: , ; "},
            {"open:levels/b10.xsb togglelist",
             "kavit b10; 3 listed: One: , Two: , Three: , b10: , ; " + broken}});
}

// Levels and solutions are saved where the user says, and then are what the files hold.
TEST_F(FlowTest, Saving) {
    flow.Play("savesolution open:room edit shift:2 tool:1 down:40 anim savelevel exit");
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

TEST_F(FlowTest, PlayByHand) {
    flow.View.SaveFile = flow.Files.Path("played.sol");
    flow.Play("open:room key:r key:r key:l undo copyplayed saveplayed");
    EXPECT_EQ(flow.View.Clip, "rR");
    EXPECT_EQ(flow.View.AskedName, "room-played.sol");
    EXPECT_EQ(test::ReadWholeFile(flow.Files.Path("played.sol")),
              "#######\n#@ $ .#\n#     #\n#######\n\nrR\n");
}

TEST_F(FlowTest, SolveFromHere) {
    flow.View.SaveFile = "must not be asked for";
    flow.Play("ask open:room key:r key:r here");
    EXPECT_EQ(flow.View.AskedName, "");  // no file for a position of a game
    EXPECT_EQ(flow.View.Request.LevelName, "room");
}

// A board that no file holds is not dropped without a question.
TEST_F(FlowTest, AsksBeforeALevelIsLost) {
    Follow("quits asked", {{"drawn savefile:mine.xsb yes exit", "1; lev2.xsb"}});
    EXPECT_EQ(flow.Files.Read("mine.xsb"), "#######\n#@ $ .#\n#######\n   #   \n");
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
        EXPECT_EQ(own.View.Now.Keys.Solve, std::string("TEXT"));
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
    EXPECT_FALSE(IsSolving(flow.Now().Phase));
    // A board that is refused never shows STOP.
    flow.View.OnReport = [&](SolveReport&) { during = flow.View.Buttons() + flow.Now().Title; };
    flow.Play("open:strange solve");
    EXPECT_EQ(during, "SOLVE -ANIM CLEARkavit strange");
    EXPECT_EQ(flow.Now().Debug + flow.Now().Closing, "1 box and 0 goals");
    SolveProgress progress;
    const auto came = [&](int phase) {
        progress.SeaPhase = phase;
        flow.Run([&](Model& m) { m.Solve.SearchCame(progress); });
        return flow.Now().Details;
    };
    progress.Positions = 5000;
    progress.BytesPerPosition = 1024;
    progress.ForwLayers = 12;
    progress.BackLayers = 9;
    progress.LayerSize = 321;
    progress.OffersPerSecond = 2100499;
    progress.PushesLower = 22;
    progress.PushesReach = 30;
    progress.MovesLower = 61;
    EXPECT_EQ(came(1),
              "layers 12 + 9, this one 321; 2100000 offers/s; 4.9 MB; at least 22 pushes; memory "
              "reaches to about 30");
    EXPECT_EQ(came(2), "improving moves, layers 12 + 9; 2100000 offers/s; 4.9 MB");
    EXPECT_EQ(came(3), "2100000 offers/s; 4.9 MB; at least 61 moves");
    EXPECT_EQ(flow.Now().Debug, "Pos.Count = 5000");
    EXPECT_EQ(flow.Now().Progress, 5000);
    flow.View.DuringSearch = [&](Model& m) { m.Solve.SearchCame(progress); };
    flow.Play("open:easy solve");
    EXPECT_EQ(flow.Now().Details, "");
}

TEST_F(FlowTest, ExpertMenus) {
    flow.Play("tool:2 tool:3 tool:1 letter opt:0 search:1 hash:2");
    flow.Play("open:easy solve");
    EXPECT_EQ(flow.View.Request.Options.SeaType, SeaType::Forward);
    EXPECT_EQ(flow.View.Request.Options.OptLevel, OptLevel::None);
    EXPECT_EQ(flow.View.Request.Options.HashCase, HashCase::Case2);
    Follow("buttons", {{"opt:0", "TEXT ANIM CLEAR"},  // the level in force changes nothing
                       {"opt:1", "SOLVE -ANIM CLEAR"}});
}

TEST_F(FlowTest, FolderAndExamples) {
    for (const char* name : {"01-first-steps.xsb", "lev09.xsb", "lev10.xsb"}) {
        flow.Files.Write(name, test::kEasy);
    }
    flow.View.Typed = "lev09";
    flow.View.OpenFile = flow.File("room");
    ASSERT_EQ(mkfifo(flow.Files.Path("pipe.xsb").c_str(), 0600), 0);
    Follow("title labels buttons",
           {{"example:1", "kavit 01-first-steps;  | ; SOLVE -ANIM CLEAR"},
            {"example:10", "kavit lev09;  | ; SOLVE -ANIM CLEAR"},
            {"example:11", "kavit lev10;  | ; SOLVE -ANIM CLEAR"},
            {"openfile", "kavit room;  | ; SOLVE -ANIM CLEAR"},
            {"open:pipe.xsb", "kavit pipe;  | it is a pipe; SOLVE -ANIM CLEAR"},
            {"open:wide", "kavit wide;  | line 1, column 20; SOLVE -ANIM CLEAR"}});
}

TEST_F(FlowTest, ImportTakesTextOrLeavesItForMending) {
    const std::pair<std::string, const char*> rows[] = {
        {"####################", "Width puzzle exceed the maximum (19)"},
        {std::string(40, '\n') + "#", "Height puzzle exceed the maximum (17)"},
        {"#" + std::string(60, ' '), "Input line too long"},
        {"#q", "You can select and copy to the clipboard (CTRL-C)"},
    };
    flow.Play("open:easy import");
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
    EXPECT_FALSE(HasBox(flow.Now().Phase));
    flow.Play("import");
    EXPECT_EQ(flow.Now().BoxText, "#q");
    flow.Play("type:room solve");
    for (const std::string& text : {std::string("# a heading"), std::string(200000, '#')}) {
        flow.View.Clip = text;
        flow.Run([](Model& m) { m.Import.Paste(); });
        EXPECT_EQ(flow.View.Buttons(), "SOLVE -ANIM CLEAR");
    }
    EXPECT_EQ(flow.Now().Right, "The text on the clipboard is too long for a level");
}

TEST_F(FlowTest, SettingsPanel) {
    std::string longText = "<";
    for (int i = 0; i < 10000; ++i) longText += "\u00e9";
    const std::string longBox =
        "Max Positions: \"" + longText.substr(0, 39) + "...\" is not a whole number";
    const std::string forty(40, 'x');
    const std::string fortyBox = "Max Positions: \"" + forty + "\" is not a whole number";
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
        {forty.c_str(), "8", "300", fortyBox.c_str(), "8", Place::Memory},
        {"200000", "+", "300", "Blocks: \"+\" is not a whole number", "+", Place::Blocks},
        {"200000", "+-5", "300", "Blocks: \"+-5\" is not a whole number", "+-5", Place::Blocks},
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
    for (const char* none : {"memory:many", "memory:0"}) {
        flow.Play(none);
        EXPECT_EQ(flow.Now().PanelMemory, "");
    }
    EXPECT_EQ(flow.Shown("progress timer"), "0/100000; 0/600");
    flow.Play("configure blocks:12 open:easy solve always opt:2");
    EXPECT_EQ(flow.View.Request.MaxTime, 600);
    flow.Run([](Model& m) { m.Settings.SizeChosen(); });
    EXPECT_EQ(flow.View.Focused, Place::Apply);
    flow.Run([](Model& m) { m.Settings.Save(); });
    EXPECT_EQ(flow.Files.Read("Kavit.ini"), " 100000  12  600  2  1  0 \r\n");
    ASSERT_EQ(flow.Begin(), "");
    Follow("menus panel solution timer", {{"", "20M; 100000/12/600; always; /600"}});
    flow.Run([](Model& m) { m.Settings.SetNoWriteSol(true); });
    EXPECT_EQ(flow.Shown("solution"), "never");
}

TEST_F(FlowTest, SettingsFilesThatDoNotHold) {
    const std::pair<std::string, const char*> rows[] = {
        // the file, and part of the message
        {std::string(100000, ' '), "is malformed: it is longer"},
        {"", "found 0"},
        {" 4000000  8  300  1  0 ", "found 5"},
        {" 4000000  8  300  1  0  0  0 ", "found 7"},
        {" 4000000  +8  300  1  0  0  x", "found 7"},
        {" 4000000  x  300  1  0  0 ", "number 2 (Blocks) is \"x\""},
        {" 4000000  8  300  9  0  0 ", "number 4 (OptLevel) is \"9\", not 0, 1, 2, 3 or 4"},
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
    EXPECT_EQ(flow.Shown("boxes size panel solution timer menus"),
              "MaxTime can't exceed 86400 secs.; 4000000/8; 4000000/8/300; never; /300; 20M");
}

}  // namespace
}  // namespace kavit
