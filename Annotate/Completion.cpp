#include "Annotate/Completion.h"

#include "Annotate/CommandHelp.h"
#include "Annotate/CommandKinds.h"
#include "Annotate/DefinitionFiles.h"
#include "Annotate/Definitions.h"
#include "Annotate/ObjectClasses.h"

#include <algorithm>
#include <sstream>

namespace annotate {

namespace {

using Words = std::vector<std::string>;

Words commandNames(const CLI::App& app) {
    Words names;
    for (const CLI::App* const command : app.get_subcommands(nullptr)) {
        names.push_back(command->get_name());
    }
    return names;
}

/// Those that may stand where the model does as a rule, which the shell completes as a file.
Words namesWithoutModel(const CLI::App& app) {
    Words names = commandNames(app);
    std::erase_if(names, [&app](const std::string& name) { return needsModel(*findCommand(app, name)); });
    return names;
}

Words optionNames(const CLI::App& command) {
    Words names;
    for (const CLI::Option* const option : namedOptions(command)) {
        names.push_back("--" + option->get_lnames().front());
    }
    return names;
}

Words setNames() {
    Words names;
    for (const Definition* const definition : allDefinitions()) {
        names.emplace_back(std::string_view(definition->propertySet));
    }
    return names;
}

Words propertyNames(const std::string& set) {
    Words names;
    for (const Definition* const definition : allDefinitions()) {
        if (definition->propertySet == set) {
            names.emplace_back(std::string_view(definition->property));
        }
    }
    return names;
}

/// The option that the word names, if a value has to follow it.
const CLI::Option* awaitingOption(const CLI::App& command, const std::string& word) {
    const CLI::Option* const option = word.starts_with("--") ? command.get_option_no_throw(word) : nullptr;
    return option != nullptr && option->get_items_expected_max() > 0 ? option : nullptr;
}

/// The word without what keeps its blanks together for a shell.
std::string unquoted(std::string_view word) {
    std::string text;
    char quote = '\0';
    for (std::size_t place = 0; place < word.size(); ++place) {
        const char character = word[place];
        if (character == quote || (quote == '\0' && (character == '\'' || character == '"'))) {
            quote = quote == '\0' ? character : '\0';
        } else {
            const bool isEscape = character == '\\' && quote != '\'' && place + 1 < word.size();
            text += word[isEscape ? ++place : place];
        }
    }
    return text;
}

/// What stands behind a command, as it was typed so far.
struct Typed {
    Words positionals;
    bool choosesObjects = false;
    bool isBehindDashes = false;           ///< Behind --, where nothing is an option any more.
    const CLI::Option* awaiting = nullptr; ///< The option whose value comes next.
    Arguments arguments;                   ///< With the model and the files of definitions.
};

Typed readTyped(const CLI::App& command, Words::const_iterator word, Words::const_iterator end) {
    Typed typed;
    for (; word != end; ++word) {
        if (typed.awaiting != nullptr) {
            if (typed.awaiting->check_lname("definitions")) {
                typed.arguments.definitions.emplace_back(unquoted(*word));
            }
            typed.awaiting = nullptr;
        } else if (typed.isBehindDashes || !word->starts_with("--")) {
            typed.positionals.push_back(*word);
        } else if (*word == "--") {
            typed.isBehindDashes = true;
        } else {
            typed.awaiting = awaitingOption(command, *word);
            typed.choosesObjects =
                typed.choosesObjects || (typed.awaiting != nullptr && choosesObjects(*typed.awaiting));
        }
    }
    return typed;
}

/// The words of the command's positionals, as in GLOBALID, PSET and PROPERTY.
Words placesOf(const CLI::App& command, bool choosesObjects) {
    Words places;
    for (const CLI::Option* const positional : positionals(command)) {
        std::istringstream words(wordsOf(*positional));
        for (std::string word; words >> word;) {
            if (word != "[GLOBALID]" || !choosesObjects) {
                places.push_back(word);
            }
        }
    }
    return places;
}

Words candidatesBehind(const CLI::App& app, const CLI::App& command, const Typed& typed, const std::string& last) {
    if (typed.awaiting != nullptr) {
        const std::vector<std::string_view> classes = objectClassNames();
        return typed.awaiting->check_lname("class") ? Words(classes.begin(), classes.end()) : Words();
    }
    if (last.starts_with('-') && !typed.isBehindDashes) {
        return optionNames(command);
    }
    const Words places = placesOf(command, typed.choosesObjects);
    if (typed.positionals.size() >= places.size()) {
        return {};
    }
    const std::string& place = places[typed.positionals.size()];
    if (place == "COMMAND") {
        return commandNames(app);
    }
    if (place != "PSET" && place != "PROPERTY") {
        return {};
    }
    try {
        takeOwnDefinitions(typed.arguments, false);
    } catch (const RequestError&) { // The command tells of it; the definitions that are known stay.
    }
    return place == "PSET" ? setNames() : propertyNames(typed.positionals.back());
}

Words candidates(const CLI::App& app, const Words& words, bool isValue) {
    const std::string& last = words.back();
    const auto end = words.end() - 1;
    const auto commandWord =
        std::find_if(words.begin(), end, [&](const std::string& word) { return findCommand(app, word) != nullptr; });
    if (commandWord != end) {
        const CLI::App& command = *findCommand(app, *commandWord);
        Typed typed = readTyped(command, commandWord + 1, end);
        typed.arguments.model = commandWord == words.begin() ? "" : unquoted(words.front());
        return isValue && typed.awaiting == nullptr ? Words() : candidatesBehind(app, command, typed, last);
    }
    if (last.starts_with('-')) {
        return optionNames(app);
    }
    return words.size() == 1 ? namesWithoutModel(app) : commandNames(app);
}

/// The words without the cuts that bash makes around each =.
Words joined(const Words& words) {
    Words whole;
    bool isOpen = false;
    for (const std::string& word : words) {
        const bool isEquals = word == "=";
        if (!whole.empty() && (isOpen || isEquals)) {
            whole.back() += word;
        } else {
            whole.push_back(word);
        }
        isOpen = isEquals;
    }
    return whole;
}

/// With --option=VALUE as two words.
Words separated(const Words& words) {
    Words apart;
    bool areOptions = true;
    for (const std::string& word : words) {
        areOptions = areOptions && word != "--";
        const std::size_t equals = areOptions && word.starts_with("--") ? word.find('=') : std::string::npos;
        apart.push_back(word.substr(0, equals));
        if (equals != std::string::npos) {
            apart.push_back(word.substr(equals + 1));
        }
    }
    return apart;
}

} // namespace

std::vector<std::string> completions(const CLI::App& app, const std::vector<std::string>& words) {
    if (words.empty()) {
        return {};
    }
    const Words whole = joined(words);
    const Words apart = separated(whole);
    const std::string& last = apart.back();
    const bool isValue = apart.size() == separated({whole.begin(), whole.end() - 1}).size() + 2;
    Words found = candidates(app, apart, isValue);
    std::erase_if(found, [&last](const std::string& word) { return !word.starts_with(last); });
    if (words.back().starts_with("--") && words.back().ends_with('=' + last)) { // in one word, as other shells have it
        const std::string option = words.back().substr(0, words.back().size() - last.size());
        std::transform(found.begin(), found.end(), found.begin(),
                       [&option](const std::string& word) { return option + word; });
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

} // namespace annotate
