#include <CLI/CLI.hpp>
#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <system_error>

#include "app/view/main_window.h"
#include "app/view/plain_box.h"
#include "app/view/plain_text.h"

namespace {

// The program's own arguments.
struct Arguments {
    CLI::App Parser{"Opens the solver's window, with the level file LEVEL when it is given.",
                    "kavit"};
    std::string Level;

    Arguments() {
        Parser.add_option("LEVEL", Level, "The level file to open")->option_text(" ");
        Parser.set_help_flag("-h,--help", "Show this help and exit");
        Parser.set_version_flag("-v,--version", "kavit " KAVIT_VERSION,
                                "Show the version and exit");
        Parser.footer(
            "Options of the toolkit, such as -platform or -style, are taken as well.\n"
            "The settings are read from Kavit.ini in the current folder.");
    }
};

// Without a display the toolkit would abort; a sentence is kinder.
bool DisplayMissing(const std::vector<std::string>& toolkitOptions) {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0') return false;
    }
    for (const std::string& option : toolkitOptions) {
        if (option == "-platform" || option == "--platform") return false;
    }
    std::fputs("kavit: there is no display; kavit-solve works without one\n", stderr);
    return true;
}

int Run(int argc, char** argv) {
    {
        // Help and version need no display. What is not ours may be the toolkit's.
        Arguments first;
        first.Parser.allow_extras();
        try {
            first.Parser.parse(argc, argv);
        } catch (const CLI::Success& answer) {
            return first.Parser.exit(answer);
        } catch (const CLI::ParseError&) {
            // Said below, once the toolkit has taken its own.
        }
        if (DisplayMissing(first.Parser.remaining())) return 1;
    }
    const std::string program = std::filesystem::path(argv[0]).filename().string();
    QApplication application(argc, argv);
    QApplication::setApplicationName(kavit::FromPath(program));
    QApplication::setApplicationVersion(QStringLiteral(KAVIT_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("kavit"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/art/kavit.svg")));
    Arguments arguments;
    try {
        arguments.Parser.parse(argc, argv);
    } catch (const CLI::ParseError& fault) {
        std::fprintf(stderr, "kavit: %s\nTry kavit --help.\n", fault.what());
        return 2;
    }

    std::error_code error;
    const std::filesystem::path folder = std::filesystem::current_path(error);
    if (error) {
        std::fprintf(stderr, "kavit: there is no current folder: %s\n", error.message().c_str());
        return 1;
    }
    kavit::MainWindow window(program.empty() ? "kavit" : program, folder);
    if (const std::string fault = window.Load(); !fault.empty()) {
        QMessageBox box;
        kavit::PutPlain(box, kavit::Shown(fault));
        box.exec();
        return 1;
    }
    window.show();
    if (!arguments.Level.empty()) {
        QTimer::singleShot(0, &window, [&] { window.OpenGiven(arguments.Level); });
    }
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "kavit: %s\n", fault.what());
        return 1;
    }
}
