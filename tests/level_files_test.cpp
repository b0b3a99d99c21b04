#include "level/level_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "app/model/level_folder.h"
#include "support/temp_folder.h"

namespace kavit {
namespace {

using std::string;
namespace fs = std::filesystem;

TEST(LevelFiles, NaturalOrder) {
    std::istringstream names(
        "1.xsb 01.xsb 2.xsb 010.xsb A.xsb a.xsb B.xsb lev Lev2.xsb lev2a lev2b3 lev2b007 lev10"
        " lev99999999999999999998 lev99999999999999999999 level");
    std::vector<string> ordered = {""};
    for (string name; names >> name;) ordered.push_back(name);
    // "1.xsb" and "01.xsb" are equal by value; then the bytes decide.
    std::vector<string> sorted = ordered;
    std::swap(sorted[1], sorted[2]);
    std::vector<string> expected = sorted;
    std::reverse(sorted.begin(), sorted.end());
    std::sort(sorted.begin(), sorted.end(), NaturalLess);
    EXPECT_EQ(sorted, expected);
    for (const string& a : ordered) EXPECT_FALSE(NaturalLess(a, a)) << a;
}

TEST(LevelFiles, NextNumberedName) {
    const std::vector<std::pair<string, string>> cases = {
        {"lev009", "lev010"},
        {"lev09", "lev10"},
        {"lev99", "lev100"},
        {"lev9", "lev10"},
        {"lev", "lev"},
        {"", ""},
        {"0", "1"},
        {"000", "001"},
        {"a1b9c", "a2b9c"},
        {"lev7.txt", "lev8.txt"},
        {"2147483647", "2147483648"},
        {"x2147483648z", "x2147483649z"},
        {string(40, '9'), "1" + string(40, '0')},
        {"\303\25119", "\303\25120"},
    };
    for (const auto& [name, next] : cases) EXPECT_EQ(NextNumberedName(name), next);
}

// A folder with levels, and one file of each kind that is none.
class LevelFolders : public testing::Test {
  protected:
    LevelFolders() {
        for (const char* name : {"lev10.xsb", "lev2.xsb", "LEV3.XSB", "lev1.xsb", "notes.txt",
                                 "x.tar.xsb", "bare", ".hidden.xsb", "xsb"}) {
            folder_.Write(name, "#");
        }
        fs::create_directory(folder_.Path("folder.xsb"));
        EXPECT_EQ(mkfifo(folder_.Path("pipe.xsb").c_str(), 0600), 0);
        fs::create_directory(folder_.Path("v1.2"));
        folder_.Write("v1.2/b1.txt", "#");
        folder_.Write("v1.2/b2.txt", "#");
        fs::create_directory(folder_.Path("examples"));
        folder_.Write("examples/first.xsb", "#");
        folder_.Write("examples/lev1.xsb", "#");
    }

    TempFolder folder_;
    LevelFolder levels_{folder_.Path(), folder_.Path("examples")};
};

// What each step leads to, "next", "previous" or a file to open: what it answers, or the current
// file.
TEST_F(LevelFolders, StepsThroughTheFilesOfOneExtension) {
    const std::pair<const char*, const char*> steps[] = {
        {"next", "Must Open First"},
        {"previous", "Must Open First"},
        {"lev1.xsb", "lev1.xsb"},
        {"previous", "No previous levels"},
        {"next", "lev2.xsb"},
        {"next", "LEV3.XSB"},
        {"next", "lev10.xsb"},
        {"next", "x.tar.xsb"},
        {"next", "No more levels"},
        {"previous", "lev10.xsb"},
        // The opened file need not be in the list: the pattern of this one is "*.tar".
        {"x.tar.xsb", "x.tar.xsb"},
        {"next", "No more levels"},
        {"previous", "No previous levels"},
        {"gone.xsb", "gone.xsb"},
        {"next", "No more levels"},
        {"previous", "x.tar.xsb"},
        {"previous", "lev10.xsb"},
        // Found by its letters, whatever their case.
        {"lev3.xsb", "lev3.xsb"},
        {"next", "lev10.xsb"},
        // Folders are no part of the name.
        {"v1.2/b1.txt", "b1.txt"},
        {"next", "b2.txt"},
    };
    for (const auto& [step, result] : steps) {
        const std::string answer = step == string("next")       ? levels_.Next()
                                   : step == string("previous") ? levels_.Previous()
                                                                : levels_.Open(step);
        EXPECT_EQ(answer.empty() ? levels_.LevelFile() : answer, result) << step;
    }
    EXPECT_EQ(levels_.LevelName(), "b2");
    EXPECT_EQ(levels_.Folder(), folder_.Path("v1.2"));
    EXPECT_EQ(levels_.LevelPath(), folder_.Path("v1.2/b2.txt"));
    EXPECT_EQ(levels_.Open(folder_.Path("x.tar.xsb")), "");
    EXPECT_EQ(levels_.LevelName(), "x");
    EXPECT_EQ(levels_.OpenFileName(), folder_.Path("x.tar.xsb"));
    EXPECT_EQ(levels_.Open("/nowhere.xsb"), "");
    EXPECT_EQ(levels_.Folder(), "/");
}

TEST_F(LevelFolders, ANameWithoutExtensionIsRefused) {
    EXPECT_EQ(levels_.Open("v1.2/b1.txt"), "");
    EXPECT_NE(levels_.Open(folder_.Path("bare")).find("bare has no extension"), string::npos);
    EXPECT_EQ(levels_.LevelFile(), "b1.txt");
    EXPECT_EQ(levels_.Folder(), folder_.Path("v1.2"));
    EXPECT_EQ(levels_.Next(), "");
}

TEST_F(LevelFolders, ExamplesOtherAndNext) {
    EXPECT_EQ(levels_.OpenNextNumbered(), "No previus name");
    EXPECT_EQ(levels_.OpenExample("first.xsb"), "");
    EXPECT_EQ(levels_.LevelPath(), folder_.Path("examples/first.xsb"));
    EXPECT_EQ(levels_.OpenExample("second.xsb"), "file second.xsb Not found");
    EXPECT_EQ(levels_.LevelName(), "first");
    EXPECT_EQ(levels_.Next(), "Must Open First");

    struct Case {
        const char* Typed;
        const char* Answer;
        const char* File;
    };
    for (const Case& c : std::vector<Case>{{"lev2", "", "lev2.xsb"},
                                           {"notes.txt", "", "notes.txt"},
                                           {"bare", "file bare.xsb Not found", "notes.txt"},
                                           {"lev7.", "file lev7..xsb Not found", "notes.txt"},
                                           {"lev7.x", "file lev7.x Not found", "notes.txt"},
                                           {"folder", "file folder.xsb Not found", "notes.txt"},
                                           {"examples/../lev10", "", "lev10.xsb"},
                                           {"lev1", "", "lev1.xsb"}}) {
        EXPECT_EQ(levels_.OpenOther(c.Typed), c.Answer);
        EXPECT_EQ(levels_.OtherName(), c.Typed);
        EXPECT_EQ(levels_.LevelFile(), c.File);
    }
    EXPECT_EQ(levels_.LevelPath(), folder_.Path("lev1.xsb"));  // the current folder goes first
    EXPECT_EQ(levels_.OpenNextNumbered(), "");
    EXPECT_EQ(levels_.OtherName(), "lev2");
    EXPECT_EQ(levels_.LevelFile(), "lev2.xsb");
    EXPECT_EQ(levels_.OpenNextNumbered(), "file lev3.xsb Not found");
    EXPECT_EQ(levels_.OtherName(), "lev3");
    EXPECT_EQ(levels_.OpenOther("lev09"), "file lev09.xsb Not found");
    EXPECT_EQ(levels_.OpenNextNumbered(), "");
    EXPECT_EQ(levels_.OtherName(), "lev10");
    // Digits of a folder's name don't count up.
    EXPECT_EQ(levels_.OpenOther("v1.2/b1.txt"), "");
    EXPECT_EQ(levels_.OpenNextNumbered(), "");
    EXPECT_EQ(levels_.LevelPath(), folder_.Path("v1.2/b2.txt"));
}

}  // namespace
}  // namespace kavit
