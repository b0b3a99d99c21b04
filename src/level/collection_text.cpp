#include <algorithm>

#include "level/collection.h"

namespace kavit {

namespace {

std::string OneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return text;
}

void Label(std::string& text, const std::string& name, const std::string& value) {
    if (!value.empty()) text += name + ": " + OneLine(value) + "\n";
}

void AboutText(std::string& text, const std::string& author, const std::string& comment) {
    Label(text, "Author", author);
    if (!comment.empty()) text += "Comment:\n" + comment + "\nComment-End:\n";
}

// A row of blanks would end the level: such a level stands in one line, its rows split by "|".
std::string RowsText(std::string rows) {
    const bool blank = rows.find("\n \n") != std::string::npos;
    if (blank) {
        std::replace(rows.begin(), rows.end(), '\n', '|');
        std::replace(rows.begin(), rows.end(), ' ', '-');
    }
    return rows + "\n";
}

}  // namespace

std::string CollectionText(const Collection& collection) {
    std::string text;
    if (!(collection.Title + collection.Author + collection.Comment).empty()) {
        text += "Collection: " + OneLine(collection.Title) + "\n";
        AboutText(text, collection.Author, collection.Comment);
        text += "\n";
    }
    for (const CollectionLevel& level : collection.Levels) {
        text += RowsText(level.BoardText);
        Label(text, "Title", level.Title);
        AboutText(text, level.Author, level.Comment);
        Label(text, "Solution", level.Solution);
        text += "\n";
    }
    return text;
}

}  // namespace kavit
