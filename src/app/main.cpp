#include <QApplication>
#include <QIcon>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "app/main_window.h"

namespace {

constexpr const char* kUsage =
    "Usage: kavit [OPTION] [LEVEL]\n"
    "Opens the solver's window, with the level file LEVEL when it is given.\n"
    "\n"
    "  -h, --help     show this help and exit\n"
    "  -v, --version  show the version and exit\n"
    "\n"
    "Options of the toolkit, such as -platform or -style, are taken as well.\n"
    "The settings are read from Kavit.ini in the current folder.\n";

// Help and version need no display, so they are answered before there is an application.
bool AnsweredWithoutWindow(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--") return false;
        if (argument == "-h" || argument == "--help") {
            std::fputs(kUsage, stdout);
            return true;
        }
        if (argument == "-v" || argument == "--version") {
            std::puts("kavit " KAVIT_VERSION);
            return true;
        }
    }
    return false;
}

// What is left once the toolkit took its own; false for what nobody knows.
bool TakeArguments(int argc, char** argv, std::vector<std::string>& levels) {
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (options && argument == "--") {
            options = false;
        } else if (options && argument.size() > 1 && argument[0] == '-') {
            std::fprintf(stderr, "kavit: unknown option %s\nTry kavit --help.\n", argument.c_str());
            return false;
        } else {
            levels.push_back(argument);
        }
    }
    if (levels.size() > 1) {
        std::fprintf(stderr, "kavit: one level at a time; %s is one too many\n", levels[1].c_str());
        return false;
    }
    return true;
}

// Without a display the toolkit would abort; a sentence is kinder.
bool DisplayMissing(int argc, char** argv) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        if (!qEnvironmentVariableIsEmpty(variable)) return false;
    }
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "-platform" || argument == "--platform") return false;
    }
    std::fputs("kavit: there is no display; kavit-solve works without one\n", stderr);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (AnsweredWithoutWindow(argc, argv)) return 0;
    if (DisplayMissing(argc, argv)) return 1;
    const std::string program = std::filesystem::path(argv[0]).filename().string();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QString::fromLocal8Bit(program.c_str()));
    QApplication::setApplicationVersion(QStringLiteral(KAVIT_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kavit"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/kavit.svg")));
    std::vector<std::string> levels;
    if (!TakeArguments(argc, argv, levels)) return 2;

    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    if (error) {
        std::fprintf(stderr, "kavit: there is no current folder: %s\n", error.message().c_str());
        return 1;
    }
    kavit::MainWindow window(program.empty() ? "kavit" : program, folder);
    if (!window.Start()) return 1;
    window.show();
    if (!levels.empty()) {
        QTimer::singleShot(0, &window, [&] { window.Commands().OpenGiven(levels[0]); });
    }
    return QApplication::exec();
}
