// Shows the objects of an IFC model, and keeps users' notes and property values on them beside the model.

#include "Annotate/ArgumentRefusal.h"
#include "Annotate/CommandHelp.h"
#include "Annotate/CommandLine.h"
#include "Annotate/Completion.h"
#include "Annotate/System.h"
#include "Annotate/Terminal.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace annotate {

namespace {

/// CLI11 takes a text in square brackets for a list of its own. A NUL, which no argument holds, keeps it off.
std::vector<std::string> markedWords(std::vector<std::string> marked) {
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
std::string shownCommand(const CLI::App& app, const std::vector<std::string>& words) {
    std::string shown;
    for (std::size_t place = 0; place < words.size(); ++place) {
        const std::string_view word = words[place];
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
bool asksForCompletions(const std::vector<std::string>& words) {
    return words.size() > 1 && words[0] == "complete" && words[1] == "--";
}

int run(const std::vector<std::string>& words) {
    CLI::App app("Keeps notes and property values on the objects of a building model, apart from it.", "annotate");
    app.allow_windows_style_options(false); // a slash begins paths and texts
    Arguments arguments;
    addCommands(app, arguments);
    if (asksForCompletions(words)) {
        for (const std::string& word : completions(app, {words.begin() + 2, words.end()})) {
            std::cout << word << '\n';
        }
        return 0;
    }
    removeMarks(app);
    for (CLI::App* command : app.get_subcommands(nullptr)) {
        removeMarks(*command);
    }
    arguments.command = shownCommand(app, words);
    try {
        std::vector<std::string> marked = markedWords(words);
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
    try {
        return annotate::run(annotate::beginProcess(argc, argv));
    } catch (const annotate::UsageError& error) {
        return annotate::fail(error, 2);
    } catch (const std::exception& error) {
        return annotate::fail(error, 1);
    }
}
