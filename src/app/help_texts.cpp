#include "app/help_texts.h"

#include "app/help_languages.h"

namespace kavit {

namespace {

constexpr std::string_view kAbout = R"(KAVIT20

Este programa resuelve niveles de Sokoban con el menor número de empujes. Mejora, en el número de
movimientos del hombre, un programa publicado anteriormente y el algoritmo en que se basa.

Ce programme résout des niveaux de Sokoban avec le plus petit nombre de poussées. Il améliore, en
nombre de déplacements de l'homme, un programme publié auparavant et l'algorithme sur lequel il
repose.

This program solves Sokoban levels with the fewest pushes. It improves, in the number of the man's
moves, on an earlier published solver and its underlying algorithm.

The Kavit developers
)";

// Joins the lines of a paragraph, so that the window wraps them at its own width.
std::string Paragraphs(std::string_view wrapped) {
    std::string text;
    for (std::size_t i = 0; i < wrapped.size(); ++i) {
        const bool inside = wrapped[i] == '\n' && i > 0 && i + 1 < wrapped.size();
        const bool joined = inside && wrapped[i - 1] != '\n' &&
                            std::string_view("\n -").find(wrapped[i + 1]) == std::string_view::npos;
        text += joined ? ' ' : wrapped[i];
    }
    return text;
}

}  // namespace

std::string_view HelpCaption(int helpTopic) {
    constexpr std::string_view kCaptions[] = {"Ayuda en Español", "Aide en français",
                                              "Help in English", "Information", "About"};
    return helpTopic >= 1 && helpTopic <= 5 ? kCaptions[helpTopic - 1] : "";
}

std::string HelpText(int helpTopic, std::string_view levelName) {
    switch (helpTopic) {
        case 1:
            return Paragraphs(SpanishHelp());
        case 2:
            return Paragraphs(FrenchHelp());
        case 3:
            return Paragraphs(EnglishHelp());
        case 4:
            return "KAVIT20 : Problem Information\n\nName:    " + std::string(levelName);
        case 5:
            return Paragraphs(kAbout);
        default:
            return "";
    }
}

}  // namespace kavit
