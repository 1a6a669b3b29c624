#include "Annotate/CommandHelp.h"

#include "Annotate/NearNames.h"

#include <algorithm>
#include <sstream>
#include <system_error>

namespace annotate {

namespace {

constexpr std::size_t terminalWidth = 80;

/// With lines of at most so many bytes, unless a word is longer.
std::string wrapped(const std::string& text, std::size_t width) {
    std::string lines;
    std::size_t length = 0;
    std::istringstream words(text);
    for (std::string word; words >> word; length += word.size()) {
        if (length > 0) {
            const bool fits = length + 1 + word.size() <= width;
            lines += fits ? ' ' : '\n';
            length = fits ? length + 1 : 0;
        }
        lines += word;
    }
    return lines;
}

class HelpFormatter : public CLI::Formatter {
public:
    std::string make_description(const CLI::App* app) const override {
        return wrapped(app->get_description(), terminalWidth) + '\n';
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        return wrapped(CLI::Formatter::make_option_desc(option), terminalWidth - get_column_width());
    }

    std::string make_subcommand(const CLI::App* command) const override {
        std::stringstream line;
        CLI::detail::format_help(line, command->get_name(),
                                 wrapped(command->get_description(), terminalWidth - get_column_width()),
                                 get_column_width());
        return line.str();
    }

    std::string make_usage(const CLI::App* app, std::string /*name*/) const override {
        return "Usage: " + usageOf(*app) + '\n';
    }

    std::string make_option_name(const CLI::Option* option, bool isPositional) const override {
        return isPositional ? wordsOf(*option) : CLI::Formatter::make_option_name(option, isPositional);
    }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_positional() ? "" : CLI::Formatter::make_option_opts(option);
    }
};

/// The word as it was typed, without the NUL that main puts behind some.
std::string typed(const std::string& word) {
    return word.substr(0, word.find('\0'));
}

/// The word where a command should be; empty if there is none.
std::string wordForCommand(const CLI::App& app) {
    const auto first = app.get_option("MODEL")->results();
    const std::vector<std::string> others = app.remaining();
    const auto word =
        std::find_if(others.begin(), others.end(), [](const auto& other) { return !other.starts_with('-'); });
    if (word != others.end()) {
        return typed(*word);
    }
    std::error_code ignored;
    const bool isModel = first.empty() || std::filesystem::exists(first.front(), ignored);
    return isModel ? "" : typed(first.front());
}

} // namespace

const CLI::App* findCommand(const CLI::App& app, std::string_view name) {
    const auto found = app.get_subcommands([name](const CLI::App* command) { return command->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

std::vector<const CLI::Option*> namedOptions(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

bool needsModel(const CLI::App& command) {
    return command.get_option_no_throw("--store") != nullptr;
}

std::vector<const CLI::Option*> positionals(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::string wordsOf(const CLI::Option& positional) {
    if (!positional.get_option_text().empty()) {
        return positional.get_option_text();
    }
    return positional.get_name(true) + (positional.get_expected_max() > 1 ? " ..." : "");
}

std::string usageOf(const CLI::App& command) {
    if (command.get_parent() == nullptr) {
        return "annotate MODEL COMMAND [OPTIONS] ...";
    }
    const bool takesModel = command.get_option_no_throw("--definitions") != nullptr;
    std::string usage = "annotate ";
    usage += (needsModel(command) ? "MODEL " : takesModel ? "[MODEL] " : "") + command.get_name();
    usage += namedOptions(command).size() > 1 ? " [OPTIONS]" : ""; // all have --help
    for (const CLI::Option* const positional : positionals(command)) {
        const std::string words = wordsOf(*positional);
        usage += positional->get_required() ? ' ' + words : " [" + words + ']';
    }
    return usage;
}

std::shared_ptr<CLI::FormatterBase> helpFormatter() {
    return std::make_shared<HelpFormatter>();
}

std::string helpOn(const CLI::App& app, const std::string& name) {
    const CLI::App* const command = name.empty() ? &app : findCommand(app, name);
    if (command == nullptr) {
        throw unknownCommand(app, name);
    }
    // The program's own help() would go on to the command help, which is being run.
    std::string help = command->get_formatter()->make_help(command, "", CLI::AppFormatMode::Normal);
    help.erase(help.find_last_not_of('\n') + 1);
    return help + '\n';
}

UsageError unknownCommand(const CLI::App& app, const std::string& word) {
    std::vector<std::string_view> names;
    std::string list;
    for (const CLI::App* const command : app.get_subcommands(nullptr)) {
        names.emplace_back(command->get_name());
        list.append(list.empty() ? "" : ", ").append(command->get_name());
    }
    const std::string problem =
        word.empty() ? "There is no command." : "There is no command " + word + didYouMean(word, names);
    return UsageError(problem + " The commands are " + list + '.');
}

std::string explainRefusal(const CLI::App& app) {
    const std::vector<CLI::App*> given = app.get_subcommands();
    if (given.empty()) {
        return unknownCommand(app, wordForCommand(app)).what();
    }
    const CLI::App& command = *given.front();
    const std::vector<std::string> others = command.remaining();
    const auto option = std::find_if(others.begin(), others.end(),
                                     [](const auto& word) { return word.starts_with("--") && word != "--"; });
    if (option == others.end()) {
        return "";
    }
    std::vector<std::string> names;
    for (const CLI::Option* const known : namedOptions(command)) {
        names.push_back("--" + known->get_lnames().front());
    }
    const std::string word = typed(*option).substr(0, option->find('='));
    return "The command " + command.get_name() + " has no option " + word +
           didYouMean(word, {names.begin(), names.end()});
}

} // namespace annotate
