#include "level/level_reader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/temp_folder.h"

namespace kavit {
namespace {

using std::string;

enum class From { File, Paste };

struct Asked {
    string Character;
    TextPlace Place;
};

struct Outcome {
    ReadReply Reply;
    kavit::Board Level;
    std::vector<Asked> Questions;
};

// What the board held before: a lone man, so that "cleared" and "untouched" differ.
Board OldBoard() {
    Board board;
    board.Cell[60] = kMan;
    board.ManPos = 60;
    board.MinRow = board.MaxRow = 4;
    board.MinCol = board.MaxCol = 4;
    return board;
}

Outcome Read(From from, const string& text, InvalidCharAnswer answer = InvalidCharAnswer::Space) {
    Outcome outcome{{}, OldBoard(), {}};
    const AskInvalidChar ask = [&](const InvalidChar& invalid) {
        outcome.Questions.push_back({string(invalid.Character), invalid.Place});
        return answer;
    };
    if (from == From::Paste) {
        outcome.Reply = ImportLevelText(text, outcome.Level, ask);
    } else {
        std::istringstream stream(text);
        outcome.Reply = ReadLevelStream(stream, outcome.Level, ask);
    }
    return outcome;
}

bool IsCleared(const Board& board) {
    return board.Cell == Board{}.Cell;
}

// A failed load leaves a cleared board, a failed import the old one.
bool IsLeftAsFailed(From from, const Board& board) {
    return from == From::File ? IsCleared(board) : board == OldBoard();
}

string Repeat(const string& text, int times) {
    string all;
    for (int i = 0; i < times; ++i) all += text;
    return all;
}

// --- what loads -----------------------------------------------------------------------------

struct LoadCase {
    const char* Name;
    string Text;
    string File;   // the board's text by the file reader, rows split by "|"
    string Paste;  // the same by the reader of pasted text
};

string Rows(const Board& board) {
    return BoardText(board, "|");
}

TEST(LevelReader, Loads) {
    const string level = "####\n#@$.#\n####\n";
    const string rows = "#### |#@$.#|#### |";
    const std::vector<LoadCase> cases = {
        {"LF", level, rows, rows},
        {"CR LF", "####\r\n#@$.#\r\n####", rows, rows},
        {"CR alone", "####\r#@$.#\r####\r", rows, rows},
        {"mixed ends", "####\r#@$.#\n####\r\n", rows, rows},
        {"byte order mark", "\xEF\xBB\xBF" + level, rows, rows},
        {"all characters", "#.$*#\n#+ @#\n", "#.$*#|#+ @#|", "#.$*#|#+ @#|"},
        {"empty line inside", "###\n\n#@#\n", "###|#@#|", "###|   |#@#|"},
        {"two lone CRs are two ends", "###\r\r#@#", "###|#@#|", "###|   |#@#|"},
        {"blank line inside", "###\n \n#@#\n", "###|   |#@#|", "###|   |#@#|"},
        {"title with a level inside", "Level 7 ####@$.\n###\n", "###|", "###|   |"},
        {"comment", "###\n; #########\n #@\n", "###| #@|", "###|   | #@|"},
        {"title after blanks", "###\n     x #####\n", "###|", "###|"},
        {"- and _ are floor beside a wall", "-####_\n_#@-_#\n- - #", "####  |#@  # |   #  |",
         "####  |#@  # |   #  |"},
        {"- after blanks", "  -#\n  #", " #  |#   |", " #  |#   |"},
        {"titles of - and _", "---\n-- #1 --\n_@_$\n- #x\n##\n", "##|", "##|  |  |  |  |"},
        {"a megabyte of - is a title", string(1 << 20, '-') + "\n##\n", "##|", "##|  |"},
        {"49 with -", "-" + string(47, '_') + "#\n", "#" + string(18, ' ') + "|",
         "#" + string(18, ' ') + "|"},
        {"title of a megabyte", string(1 << 20, 'x') + "\n##\n", "##|", "##|  |"},
        {"a megabyte of blanks, then a title", string(1 << 20, ' ') + "x\n##\n", "##|", "##|  |"},
        {"NUL bytes are a title", string(3, '\0') + "\n##\n", "##|", "##|  |"},
        {"row of 49", "#" + string(48, ' ') + "\n", "#|", "#|"},
        {"17 rows of 19", Repeat("#" + string(17, ' ') + "#\n", 17),
         Repeat("#" + string(17, ' ') + "#|", 17), Repeat("#" + string(17, ' ') + "#|", 17)},
        {"outside the walls", " $##\n  .#\n@  \n", "##  |.#  |", "##  |.#  |"},
        {"walls from row 3", "  \n  \n ##\n", "## |   |   |", "## |   |   |"},
        {"no wall", "@ $ .\n", "", ""},
    };
    for (const LoadCase& c : cases) {
        for (const From from : {From::File, From::Paste}) {
            SCOPED_TRACE(string(c.Name) + (from == From::File ? " (file)" : " (paste)"));
            const Outcome outcome = Read(from, c.Text);
            EXPECT_EQ(outcome.Reply.Code, Result::Ok);
            EXPECT_TRUE(outcome.Questions.empty());
            EXPECT_EQ(Rows(outcome.Level), from == From::File ? c.File : c.Paste);
        }
    }
}

TEST(LevelReader, FindsTheMan) {
    EXPECT_EQ(Read(From::File, "###\n#@#\n###").Level.ManPos, 20);
    EXPECT_EQ(Read(From::Paste, " ###\n #+#\n ###").Level.ManPos, 20);
    EXPECT_EQ(Read(From::File, "#@@#").Level.ManPos, 2);    // the last of several
    EXPECT_EQ(Read(From::File, "@##\n").Level.ManPos, 60);  // dropped: the old place stays
    EXPECT_EQ(Read(From::File, "####\n#@$.#\n####").Level.Cell[20], kMan);
}

TEST(LevelReader, EmptyInput) {
    EXPECT_TRUE(Read(From::File, "").Reply.Loaded());
    EXPECT_TRUE(IsCleared(Read(From::File, "").Level));
    EXPECT_TRUE(Read(From::Paste, "").Reply.Loaded());
    EXPECT_EQ(Read(From::Paste, "").Level, OldBoard());
    EXPECT_TRUE(IsCleared(Read(From::Paste, "nothing but words").Level));
}

// --- what is refused ------------------------------------------------------------------------

struct RefusalCase {
    const char* Name;
    From Reader;
    string Text;
    Result Code;  // Ok: a limit that just holds
    TextPlace Place;
};

TEST(LevelReader, Refuses) {
    const string row = "#\n";
    const string blank = " \n";
    const string wide = "#" + string(18, ' ') + "#";    // 20 columns
    const string high = row + Repeat(blank, 16) + row;  // 18 rows
    const Result ok = Result::Ok;
    const Result tooLong = Result::LineTooLong;
    const Result tooMany = Result::TooManyLines;
    const Result tooHigh = Result::TooHigh;
    const Result tooWide = Result::TooWide;
    const std::vector<RefusalCase> cases = {
        {"50th column", From::File, "\n##\n#" + string(49, ' '), tooLong, {3, 50}},
        {"50th column", From::Paste, "##\n#" + string(49, ' '), tooLong, {2, 50}},
        {"50th column is a wall", From::File, string(49, ' ') + "#", tooLong, {1, 50}},
        {"50th column after -", From::File, string(49, '-') + "#", tooLong, {1, 50}},
        {"more columns of - than fit", From::Paste, string(60, '-') + "#", tooLong, {1, 50}},
        {"50 blanks", From::File, string(50, ' '), tooLong, {1, 50}},
        {"50 blanks", From::Paste, string(50, ' ') + "\n#", tooLong, {1, 50}},
        {"49 blanks", From::File, string(49, ' '), ok, {}},
        {"30 rows and no more", From::File, Repeat(blank, 29) + " ", ok, {}},
        {"30 rows and the line end", From::File, Repeat(blank, 30), ok, {}},
        {"30 rows and an empty line", From::File, Repeat(blank, 30) + "\n", tooMany, {31, 1}},
        {"30 rows and a title", From::File, "t\n" + Repeat(blank, 30) + "t", tooMany, {32, 1}},
        {"31 rows before their width",
         From::File,
         Repeat(blank, 30) + string(60, '#'),
         tooMany,
         {31, 1}},
        {"30 lines", From::Paste, Repeat(blank, 29) + " ", ok, {}},
        {"30 lines and a line end", From::Paste, Repeat(blank, 30), tooHigh, {31, 1}},
        {"29 CR LF lines and a line end", From::Paste, Repeat(" \r\n", 29), ok, {}},
        {"30 CR lines and a line end", From::Paste, Repeat(" \r", 30), tooHigh, {31, 1}},
        {"30 CR LF lines and a line end", From::Paste, Repeat(" \r\n", 30), tooHigh, {31, 1}},
        {"31 lines before anything else", From::Paste, "#x\n" + Repeat("\n", 30), tooHigh, {31, 1}},
        {"18 rows", From::File, "title\n" + high, tooHigh, {19, 1}},
        {"30 rows", From::File, row + Repeat(blank, 28) + row, tooHigh, {30, 1}},
        {"18 rows", From::Paste, high, tooHigh, {18, 1}},
        {"20 columns", From::File, row + "\n" + wide, tooWide, {3, 20}},
        {"20 columns", From::Paste, row + "\n" + wide, tooWide, {3, 20}},
        {"20 columns over two rows", From::File, string(19, ' ') + row + row, tooWide, {1, 20}},
        {"both in a file: height first", From::File, wide + "\n" + high, tooHigh, {19, 1}},
        {"both pasted: the first met", From::Paste, wide + "\n" + high, tooWide, {1, 20}},
        {"wide and a row too long", From::File, wide + "\n" + string(50, '#'), tooLong, {2, 50}},
    };
    for (const RefusalCase& c : cases) {
        SCOPED_TRACE(string(c.Name) + (c.Reader == From::File ? " (file)" : " (paste)"));
        const Outcome outcome = Read(c.Reader, c.Text);
        EXPECT_EQ(outcome.Reply.Code, c.Code);
        EXPECT_EQ(outcome.Reply.Place.Line, c.Place.Line);
        EXPECT_EQ(outcome.Reply.Place.Column, c.Place.Column);
        EXPECT_FALSE(outcome.Reply.Cancelled);
        EXPECT_TRUE(outcome.Questions.empty());
        if (c.Code == Result::Ok) continue;
        EXPECT_TRUE(IsLeftAsFailed(c.Reader, outcome.Level));
    }
}

// Ends although the input does not; and it comes from a stream that knows of no more than the next
// byte, as one that shares its place with a C stream does.
TEST(LevelReader, ReadsNoFurtherThanNeeded) {
    class Endless : public std::streambuf {
      public:
        explicit Endless(string pattern) : pattern_(std::move(pattern)) {}

      protected:
        int_type underflow() override {
            return traits_type::to_int_type(pattern_[at_ % pattern_.size()]);
        }
        int_type uflow() override {
            const int_type next = underflow();
            ++at_;
            return next;
        }

      private:
        string pattern_;
        std::size_t at_ = 0;
    };
    for (const auto& [pattern, code] :
         std::vector<std::pair<string, Result>>{{"#", Result::LineTooLong},
                                                {"\n#", Result::TooManyLines},
                                                {"\r ", Result::TooManyLines}}) {
        Endless buffer(pattern);
        std::istream stream(&buffer);
        Board board;
        EXPECT_EQ(ReadLevelStream(stream, board, {}).Code, code);
    }
}

// --- invalid characters ---------------------------------------------------------------------

TEST(LevelReader, AsksForEachInvalidCharacter) {
    struct Case {
        const char* Name;
        string Row;
        std::vector<string> Characters;
        string Rows;
    };
    const std::vector<Case> cases = {
        {"letter", "#x@#", {"x"}, "# @#|"},
        {"tab", "#\t#", {"\t"}, "# #|"},
        {"NUL", string("#\0#", 3), {string(1, '\0')}, "# #|"},
        {"two bytes", "#\xC3\xA9#", {"\xC3\xA9"}, "# #|"},
        {"two bytes at the end", "##\xC3\xA9", {"\xC3\xA9"}, "##|"},
        {"three bytes", "#\xE2\x82\xAC#", {"\xE2\x82\xAC"}, "# #|"},
        {"four bytes", "#\xF0\x9F\x93\xA6#", {"\xF0\x9F\x93\xA6"}, "# #|"},
        {"lone continuation", "#\x80#", {"\x80"}, "# #|"},
        {"cut short by a wall", "#\xE2\x82#", {"\xE2", "\x82"}, "#  #|"},
        {"cut short by the end", "##\xF0\x9F", {"\xF0", "\x9F"}, "##|"},
        {"overlong", "#\xC0\xAF#", {"\xC0", "\xAF"}, "#  #|"},
        {"overlong, of three", "#\xE0\x9F\xBF#", {"\xE0", "\x9F", "\xBF"}, "#   #|"},
        {"overlong, of four", "#\xF0\x8F\xBF\x80#", {"\xF0", "\x8F", "\xBF", "\x80"}, "#    #|"},
        {"first and last of each length",
         "#\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF#",
         {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80",
          "\xF4\x8F\xBF\xBF"},
         "#      #|"},
        {"surrogate", "#\xED\xA0\x80#", {"\xED", "\xA0", "\x80"}, "#   #|"},
        {"beyond the last", "#\xF4\x90\x80\x80#", {"\xF4", "\x90", "\x80", "\x80"}, "#    #|"},
        {"- without a wall", "@-_$", {"-", "_"}, ""},
        {"- beside a letter", "#-x#", {"-", "x"}, "#  #|"},
        {"byte order mark not at the start", "#\xEF\xBB\xBF#", {"\xEF\xBB\xBF"}, "# #|"},
    };
    for (const Case& c : cases) {
        for (const From from : {From::File, From::Paste}) {
            SCOPED_TRACE(c.Name);
            const Outcome outcome = Read(from, c.Row);
            EXPECT_EQ(outcome.Reply.Code, Result::Ok);
            EXPECT_EQ(Rows(outcome.Level), c.Rows);
            ASSERT_EQ(outcome.Questions.size(), c.Characters.size());
            const std::int64_t first = static_cast<std::int64_t>(c.Row.find(c.Characters[0])) + 1;
            for (std::size_t i = 0; i < c.Characters.size(); ++i) {
                EXPECT_EQ(outcome.Questions[i].Character, c.Characters[i]);
                const TextPlace place{1, first + static_cast<std::int64_t>(i)};
                EXPECT_EQ(outcome.Questions[i].Place, place);
            }
        }
    }
}

TEST(LevelReader, NamesTitlesThatHoldAWall) {
    using Lines = std::vector<std::int64_t>;
    const string titles = "Level #7\n##\n;####\n- #x\n-x #\n---\nno wall\n###\nx#";
    for (const From from : {From::File, From::Paste}) {
        EXPECT_EQ(Read(from, titles).Reply.DroppedLines, (Lines{1, 3, 4, 5, 9}));
        EXPECT_EQ(Read(from, "-##\n#x#\n").Reply.Dropped, 0);
    }
    const ReadReply many = Read(From::File, Repeat("x#\n", 50)).Reply;
    EXPECT_EQ(many.DroppedLines.size(), kMostDroppedLines);
    EXPECT_EQ(many.Dropped, 50);
}

// A character that lies across two blocks of the buffer is still one.
TEST(LevelReader, SequencesAcrossBlocks) {
    for (std::size_t length = 8180; length < 8200; ++length) {
        const string text = "title" + string(length, 'x') + "\r\n#\xF0\x9F\x93\xA6#\r\n\r\n##";
        const Outcome outcome = Read(From::File, text);
        EXPECT_EQ(Rows(outcome.Level), "# #|## |");
        ASSERT_EQ(outcome.Questions.size(), 1U);
        EXPECT_EQ(outcome.Questions[0].Place, (TextPlace{2, 2}));
    }
}

TEST(LevelReader, CancelEndsTheReading) {
    for (const From from : {From::File, From::Paste}) {
        const Outcome outcome = Read(from, "###\n#?!\n", InvalidCharAnswer::Cancel);
        EXPECT_TRUE(outcome.Reply.Cancelled);
        EXPECT_EQ(outcome.Reply.Code, Result::CanCopy);
        EXPECT_EQ(outcome.Reply.Place, (TextPlace{2, 2}));
        EXPECT_EQ(outcome.Questions.size(), 1U);
        EXPECT_TRUE(IsLeftAsFailed(from, outcome.Level));
    }
    // Asked about before the row is found to be too long.
    const Outcome last = Read(From::File, "#" + string(48, ' ') + "x");
    EXPECT_EQ(last.Questions.size(), 1U);
    EXPECT_EQ(last.Reply.Code, Result::LineTooLong);
}

TEST(LevelReader, WordsOfTheQuestion) {
    EXPECT_EQ(InvalidCharText("x"), "Invalid char 'x' in Xsb; Assumed Space");
    EXPECT_EQ(InvalidCharText("\xC3\xA9"), "Invalid char '\xC3\xA9' in Xsb; Assumed Space");
    EXPECT_EQ(InvalidCharText("\x1f"), "Invalid char '\\x1f' in Xsb; Assumed Space");
    EXPECT_EQ(InvalidCharText("\x7f"), "Invalid char '\\x7f' in Xsb; Assumed Space");
    EXPECT_EQ(InvalidCharText("\xC2\x85"), "Invalid char '\\u0085' in Xsb; Assumed Space");
    EXPECT_EQ(InvalidCharText("\xC2\xA0"), "Invalid char '\xC2\xA0' in Xsb; Assumed Space");
    EXPECT_EQ(InvalidCharText("\xFF"), "Invalid char '\\xff' in Xsb; Assumed Space");
}

// --- files ----------------------------------------------------------------------------------

TEST(LevelReader, Files) {
    const TempFolder folder;
    struct Case {
        string Name;
        Result Code;
        bool Cleared;
    };
    const std::vector<Case> cases = {
        {"", Result::NothingToOpen, false},
        {folder.Path("missing.xsb"), Result::CantOpen, false},
        {folder.Path(), Result::CantOpen, false},
        {"/dev/zero", Result::CantOpen, false},
        {folder.Write("long.xsb", string(60, '#')), Result::LineTooLong, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.Name);
        Board board = OldBoard();
        const ReadReply reply = ReadLevelFile(c.Name, board, {});
        EXPECT_EQ(reply.Code, c.Code);
        EXPECT_EQ(reply.Reason.empty(), c.Code != Result::CantOpen);
        EXPECT_EQ(IsCleared(board), c.Cleared);
    }
    Board board;
    EXPECT_TRUE(ReadLevelFile(folder.Write("good.xsb", "#x@#\r\n"), board, {}).Loaded());
    EXPECT_EQ(Rows(board), "# @#|");
}

}  // namespace
}  // namespace kavit
