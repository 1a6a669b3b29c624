// Shows the objects of an IFC model, and keeps users' notes and property values on them beside the model.

#include "Annotate/ArgumentRefusal.h"
#include "Annotate/CommandHelp.h"
#include "Annotate/CommandLine.h"
#include "Annotate/Completion.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <clocale>
#include <csignal>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

namespace {

/// CLI11 takes a text in square brackets for a list of its own. A NUL, which no argument holds, keeps it off.
std::vector<std::string> markedArguments(int argc, char** argv) {
    std::vector<std::string> marked(argv + 1, argv + argc);
    for (std::string& argument : marked) {
        if (argument.ends_with(']')) {
            argument += '\0';
        }
    }
    std::reverse(marked.begin(), marked.end()); // the order that CLI11 takes them in
    return marked;
}

void removeMarks(CLI::App& app) {
    for (CLI::Option* option : app.get_options()) {
        if (option->get_items_expected_max() > 0) {
            option->transform([](const std::string& value) { return value.substr(0, value.find('\0')); }, "");
        }
    }
}

/// The command as it was typed, for people, without what only says where and who.
std::string shownCommand(const CLI::App& app, int argc, char** argv) {
    std::string shown;
    for (int place = 1; place < argc; ++place) {
        const std::string_view word = argv[place];
        if (word == "--store" || word == "--author") {
            ++place;
        } else if (word.starts_with("--store=") || word.starts_with("--author=")) {
            continue;
        } else if (!shown.empty() || findCommand(app, word) != nullptr) {
            const bool needsQuotes = word.empty() || word.find_first_of(" \t\n\r'\"") != std::string_view::npos;
            shown.append(shown.empty() ? "" : " ").append(needsQuotes ? "'" : "");
            shown.append(word).append(needsQuotes ? "'" : "");
        }
    }
    return shown;
}

/// How annotate.bash asks: annotate complete -- WORDS. Not a command, since the words are those of other commands.
bool asksForCompletions(int argc, char** argv) {
    return argc > 2 && std::string_view(argv[1]) == "complete" && std::string_view(argv[2]) == "--";
}

int run(int argc, char** argv) {
    CLI::App app("Keeps notes and property values on the objects of a building model, apart from it.", "annotate");
    Arguments arguments;
    addCommands(app, arguments);
    if (asksForCompletions(argc, argv)) {
        for (const std::string& word : completions(app, {argv + 3, argv + argc})) {
            std::cout << word << '\n';
        }
        return 0;
    }
    removeMarks(app);
    for (CLI::App* command : app.get_subcommands(nullptr)) {
        removeMarks(*command);
    }
    arguments.command = shownCommand(app, argc, argv);
    try {
        std::vector<std::string> marked = markedArguments(argc, argv);
        app.parse(marked);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            throw refusalOf(app, error);
        }
        app.exit(error); // prints the help or the version
    }
    if (!std::cout.flush()) {
        throw RequestError("The output couldn't be written.");
    }
    return 0;
}

int fail(const std::exception& error, int status) {
    std::cerr << "annotate: " << printable(error.what()) << '\n';
    return status;
}

} // namespace

} // namespace annotate

int main(int argc, char** argv) {
    // For the widths of characters; without that locale those outside ASCII count as one column.
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));
    // A file that is to be larger than the shell's limit can't be written then, which is told.
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    try {
        return annotate::run(argc, argv);
    } catch (const annotate::UsageError& error) {
        return annotate::fail(error, 2);
    } catch (const std::exception& error) {
        return annotate::fail(error, 1);
    }
}
