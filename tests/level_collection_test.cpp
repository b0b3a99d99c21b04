#include "level/collection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "level/collection_lines.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

using std::string;

// Three levels that differ; the tables write a line "A", "B" or "C" for their rows.
const std::pair<string, string> kLevels[] = {
    {"A", "###\n#@#\n###"}, {"B", "###\n#$#\n###"}, {"C", "###\n#.#\n###"}};

string Filled(const string& text) {
    std::istringstream lines(text);
    string filled;
    for (string line; std::getline(lines, line);) {
        for (const auto& [name, rows] : kLevels) {
            if (line == name) line = rows;
        }
        filled += line + (lines.eof() ? "" : "\n");
    }
    return filled;
}

string OneLine(string text) {
    for (const auto& [name, rows] : kLevels) {
        if (text == rows) return name;
    }
    std::replace(text.begin(), text.end(), '\n', '|');
    return text;
}

// All that was read: "{title/author/comment} 1<title/author/comment/solution>rows !5-6 why", the
// number before a level being its line.
string Shown(const Collection& c) {
    std::ostringstream text;
    const string header = c.Title + "/" + c.Author + "/" + OneLine(c.Comment);
    if (header != "//") text << "{" << header << "} ";
    for (const CollectionLevel& level : c.Levels) {
        const string about =
            level.Title + "/" + level.Author + "/" + OneLine(level.Comment) + "/" + level.Solution;
        text << level.Line << (about == "///" ? "" : "<" + about + ">") << OneLine(level.BoardText)
             << " ";
    }
    for (const SkippedLines& s : c.Skipped) {
        text << "!" << s.First << "-" << s.Last << " " << s.Why << " ";
    }
    return text.str();
}

TEST(Collection, TellsWhatBelongsToWhat) {
    const string wide(19, '#');
    const struct {
        string Text;
        string Shown;
    } cases[] = {
        // Rows, in every alphabet.
        {"", ""},
        {"A\n\nB\n", "1A 5B "},
        {"\xEF\xBB\xBF###\r\n#@#\r\n###\r\n\r\n###\r#$#\r###", "1A 5B "},
        {"A\n \t\nB", "1A 5B "},
        {"-###\n_#@#\n -###\t", "1###|#@#| ### "},
        {"   ###\n  @# $ # \n   ###", "1###|# $ #|### "},
        {"###\n $ .\n#@#\n*\n", "1<*///>###| $|#@# "},
        {"####\n#pP#\n#bBo#\n#mM#\n#_+#", "1####|#@+#|#$*.#|#@+#|# +# "},
        {"5#\n2#-$2-@.#\n6#|#_$1-4.|3-|##", "1#####|## $  @.#|######|# $ ....| |## "},
        {"|-|3#|#@#|3#|", "1A "},
        {"3#\n#0@$#\n03#", "1B "},
        // Text above, below and between.
        {"t\nA\n\nu\nB", "2<t///>A 7<u///>B "},
        {"A\nt\n\nB\nu", "1<t///>A 6<u///>B "},
        {"A\n*\n\nB", "1<*///>A 6B "},
        {"A\nt\nB\nu\nC", "1<t///>A 5<u///>B 9C "},
        {"t\nA\nu\nB\nv\nw", "2<t///>A 6<u//v|w/>B "},
        {"A\n\nt\n\nB\n\nu\n\nC\n\n", "1<t///>A 7<u///>B 13C "},
        {"t\n\nA\n\nu\n\nB\n\nv", "3<t///>A 9<u//v/>B "},
        {"f\n\nA\n;  t\n\nB\n; u", "{f//} 3<t///>A 8<u///>B "},
        {"f\ng\n\nh\n\nt\nA\n\nB", "{f//g|h} 7<t///>A 11B "},
        {"f\n\nt\n\nA\n\nu\n\nB", "{f//} 5<t///>A 11<u///>B "},
        {"f\n\nA", "3<f///>A "},
        {"f\n\nA\nt\n", "3<f//t/>A "},
        {"t\nA\n\nx\n\ny\nB\n\n", "2<t///>A 9<x//y/>B "},
        {"A\n\nx\n\ny\nB\n\n", "1<x///>A 8<y///>B "},
        {"only\n\ntext #1", "{only//text #1} "},
        {"collection: f\nAuthor: a\n\nA", "{f/a/} 4A "},
        {"Collection: f\nA\nCollection: t", "{f//} 2<Collection: t///>A "},
        {"Title: t \nA\nTITLE: u\nauthor:a\nAuthor: b", "2<t/a/u|b/>A "},
        {"t\n; c\nA\nTitle: u", "3<u//t|c/>A "},
        // Comments.
        {"A\nComment: \n\n x\n\n####\ny\n\nComment-End:\n\nB", "1<// x||####|y/>A 13B "},
        {"A\nComment: x\ny\nComment_End\nz\n\nB", "1<z//x|y/>A 9B "},
        {"A\nComment: x\n\nB\nComment: y\nComment-End", "1<//x/>A 6<//y/>B "},
        {"A\nComment: Comment-End: x\n; comment:\nComment-Endings\n",
         "1<comment://x|Comment-Endings/>A "},
        // Solutions.
        {"A\nrR\n\nB\n2r(uL)\nL", "1<///rR>A 6<///rruLL>B "},
        {"A\n\nrrR\n\nt\nB", "1<///rrR>A 8<t///>B "},
        {"A\nLulu\nB", "1<Lulu///>A 5B "},
        {"rR\nA\nSolution\nLulu\n\nB", "2<rR///Lulu>A 8B "},
        {"A\nSolution: Lulu\n\nSolution\nt\nLulu", "1<t//Lulu/Lulu>A "},
        {"A\nSolution 2 (1/1):\n\n2l\nuU\nt\nB", "1<///lluU>A 9<t///>B "},
        {"A\nsolution: 2(l2U)\nuu\nlR\nrR", "1<///lUUlUUuulRrR>A "},
        {"A\nSolution:R\n\nlL\nSolution: uU\n", "1<//Solution: lL|Solution: uU/R>A "},
        {"A\nSolution: see below\nSolutions\n", "1<Solution: see below//Solutions/>A "},
        {"A\nR3\n", "1A !4-4 moves that make no sense, or too many of them "},
        {"A\n9999999R\n", "1A !4-4 moves that make no sense, or too many of them "},
        {"A\n999999(lR)\n", "1A !4-4 moves that make no sense, or too many of them "},
        {"A\n2(R\n)3R\n\nSolution: 3\n", "1<Solution: 3///RRRRR>A "},
        {"A\n(R\n\nB\n2R)",
         "1A 6B !4-4 moves that make no sense, or too many of them "
         "!9-9 moves that make no sense, or too many of them "},
        {"A\nSolution\nLulu\n\nlu", "1<lu///Lulu>A "},
        // What is skipped, with its text and its solution.
        {"###\n#x@#\n###\nt\nR\n\nB", "7B !1-3 line 2, column 2 is no level character "},
        {"x## #\n#@#\n#.$ 3\n\nB", "5B !1-3 line 1, column 1 is no level character "},
        {"#-   #x\n\nB", "3B !1-1 line 1, column 7 is no level character "},
        {"####\n##3\n\nB", "4B !1-2 line 2 has a count without a square "},
        {"##2|##\n\nB", "3B !1-1 line 1 has a count without a square "},
        {"9999#\n\nA", "3A !1-1 line 1 is too long "},
        {"3#\n\n###\n###\n\nA", "6A !1-1 too few rows for a level !3-4 too few rows for a level "},
        {"###\n# #\n###\n\nA", "5A !1-3 no man, no box and no goal "},
        {wide + "#\n#@$.#\n##\n\nA", "5A !1-3 20 columns, and 19 are the most "},
        {wide + "\n  #\n #@$.\n" + wide, "1" + wide + "|  #| #@$.|" + wide + " "},
        {"#|#|#|#|#|#|#|#|@#|#|#|#|#|#|#|#|#", "1#|#|#|#|#|#|#|#|@#|#|#|#|#|#|#|#|# "},
        {"#|#|#|#|#|#|#|#|@#|#|#|#|#|#|#|#|#|#\n\nA", "3A !1-1 18 rows, and 17 are the most "},
        // Words with a wall in them.
        {"Level #1\nA\n\n# Level 2\nB\n; ####\n\n-- #3 --\nC",
         "2<Level #1///>A 7<# Level 2//####/>B 13<-- #3 --///>C "},
        {"A\n\nmob\n\nBob #\nB", "1<mob///>A 8<Bob #///>B "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Shown(CollectionOf(Filled(c.Text))), c.Shown) << c.Text;
    }
}

TEST(Collection, KeepsToItsLimits) {
    const auto repeat = [](const string& text, int times) {
        string all;
        while (times-- > 0) all += text;
        return all;
    };
    const string words = string((1 << 17) - 64, 'x') + "\n";  // with its cost, an eighth of it
    const struct {
        string Text;
        string Shown;
    } cases[] = {
        {"A\n1000000R", "1<///" + string(1000000, 'R') + ">A "},
        {"A\n1000001R", "1A !4-4 moves that make no sense, or too many of them "},
        {"A\n" + string((1 << 20) - 2, '0') + "1R", "1<///R>A "},
        {"A\n2(500001R)", "1A !4-4 moves that make no sense, or too many of them "},
        {"A\n" + repeat(string(500000, 'R') + "\n", 4),
         "1A !4-7 moves that make no sense, or too many of them "},
        {string(1 << 20, '#') + "\n\nA", "3A !1-1 line 1 is too long "},
        {"title" + string(1 << 20, '-') + "\nA", "!1-4 line 1 is too long "},
        {"4096#\n\nA", "3A !1-1 4096 columns, and 19 are the most "},
        {"A\n" + repeat("*\n", 17) + "#", "!1-21 21 rows, and 17 are the most "},
        {"A\n" + repeat("*\n", 18) + "#",
         "1<*//*|*|*|*|*|*|*|*|*|*|*|*|*|*|*|*|*/>A !22-22 too few rows for a level "},
        {"A\n((((((((((((((((((((R))))))))))))))))))))", "1<///R>A "},
        {"A\n(((((((((((((((((((((R)))))))))))))))))))))",
         "1A !4-4 moves that make no sense, or too many of them "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Shown(CollectionOf(Filled(c.Text))), c.Shown) << c.Text.substr(0, 80);
    }
    // Text of more than a megabyte, in one piece and in many; and the next gap has its own.
    for (const char* gap : {"", "\n"}) {
        const Collection read = CollectionOf(repeat(words + gap, 9) + Filled("A\nt\n\nB\nu"));
        ASSERT_EQ(read.Skipped.size(), 1U);
        EXPECT_EQ(read.Skipped[0].First, *gap == '\0' ? 9 : 17);
        EXPECT_EQ(read.Skipped[0].Last, read.Skipped[0].First);
        EXPECT_EQ(read.Levels.at(1).Title, "u");
    }
    // As many lines as a comment can have, and too many: then they are no comment.
    const auto comment = [&](int lines) {
        return "Comment:\n" + Filled("A\n") + repeat("\n", lines - 4) + "c\nComment-End:\n";
    };
    EXPECT_EQ(CollectionOf(comment(16381)).Comment.size(), 16390U);
    EXPECT_TRUE(CollectionOf(comment(16383)).Levels.empty());
    EXPECT_EQ(CollectionOf(comment(16384)).Levels.size(), 1U);

    std::istringstream stream(repeat("#x@#\n\n", 1002) + Filled("A"));
    CollectionReader reader(stream);
    EXPECT_TRUE(reader.Next());
    const std::vector<SkippedLines> skipped = reader.TakeSkipped();
    ASSERT_EQ(skipped.size(), 1000U);
    EXPECT_EQ(skipped[998].Last, 1997);
    EXPECT_EQ(skipped[999].First, 1999);
    EXPECT_EQ(skipped[999].Last, 2003);
    EXPECT_TRUE(reader.TakeSkipped().empty());

    // A line end that lies across two blocks of the buffer is still one.
    for (int length = 65530; length < 65540; ++length) {
        const string text = string(static_cast<std::size_t>(length), 'x') + "\r\n" + Filled("A");
        EXPECT_EQ(CollectionOf(text).Levels.at(0).Line, 2);
    }
}

TEST(Collection, WritesTitlesInOneLine) {
    EXPECT_EQ(Trimmed(" \t a b \t "), "a b");
    const Collection odd = CollectionOf(
        CollectionText({"a\nb", "", "", {{1, "t\r\nu", "", "", "##\n#@\n##", "", 1}}, {}}));
    EXPECT_EQ(odd.Title + odd.Levels.at(0).Title, "a bt  u");
}

// --- one level or several -------------------------------------------------------------------

TEST(Collection, KnowsOneLevelFromSeveral) {
    const string whole = "#####\n#@$.#\n#####\n";
    const string solved = "####\n#@*#\n####\n";
    const struct {
        string Text;
        bool Several;
    } cases[] = {
        {"", false},
        {"words\n\n" + whole + "t\nrR\n", false},
        {"A\n\nA", true},
        {"A\n\nB\n\nC", false},                // one man: a level with gaps
        {"#####\n\n#@$.#\n\n#####\n", false},  // each row an island
        {"#####\n#@$.#\n#   #\n\n# $ #\n# . #\n#####\n", false},
        {whole + "\nB", true},
        {solved + "\nB", true},
        {"###\n#\n\n" + whole, true},
        {whole + "\n#x@#\n", true},
        {"5#|#@$.#|5#", true},
        {"###\n#p#\n###", true},
        {"3#", true},
    };
    for (const auto& c : cases) {
        std::istringstream stream(Filled(c.Text));
        EXPECT_EQ(IsCollection(stream), c.Several) << c.Text;
    }
}

}  // namespace
}  // namespace kavit::test
