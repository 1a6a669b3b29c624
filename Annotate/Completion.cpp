#include "Annotate/Completion.h"

#include "Annotate/CommandHelp.h"
#include "Annotate/Definitions.h"
#include "FoundationClasses/IfcClass.h"

#include <algorithm>
#include <sstream>

namespace annotate {

using orv::fc::IfcClass;

namespace {

using Words = std::vector<std::string>;

Words commandNames(const CLI::App& app) {
    Words names;
    for (const CLI::App* const command : shownCommands(app)) {
        names.push_back(command->get_name());
    }
    return names;
}

Words optionNames(const CLI::App& command) {
    Words names;
    for (const CLI::Option* const option : shownOptions(command)) {
        names.push_back("--" + option->get_lnames().front());
    }
    return names;
}

Words classNames() {
    Words names;
    const IfcClass& all = *IfcClass::find("IfcObjectDefinition");
    for (std::uint32_t number = all.kindNumber; number <= all.lastOfKind; ++number) {
        names.emplace_back(IfcClass::ofNumber(number)->name);
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

/// What stands behind a command, as it was typed so far.
struct Typed {
    Words positionals;
    bool choosesObjects = false;
    const CLI::Option* awaiting = nullptr; ///< The option whose value comes next.
};

Typed readTyped(const CLI::App& command, Words::const_iterator word, Words::const_iterator end) {
    Typed typed;
    for (; word != end; ++word) {
        if (typed.awaiting != nullptr) {
            typed.awaiting = nullptr;
        } else if (word->starts_with("--")) {
            typed.awaiting = awaitingOption(command, *word);
            typed.choosesObjects = typed.choosesObjects || *word == "--class" || *word == "--match" ||
                                   *word == "--storey" || *word == "--where";
        } else {
            typed.positionals.push_back(*word);
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
        return typed.awaiting->get_lnames().front() == "class" ? classNames() : Words();
    }
    if (last.starts_with('-')) {
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
    if (place == "PSET") {
        return setNames();
    }
    return place == "PROPERTY" ? propertyNames(typed.positionals.back()) : Words();
}

Words candidates(const CLI::App& app, const Words& words) {
    const std::string& last = words.back();
    const auto end = words.end() - 1;
    const auto commandWord =
        std::find_if(words.begin(), end, [&](const std::string& word) { return findCommand(app, word) != nullptr; });
    if (commandWord != end) {
        const CLI::App& command = *findCommand(app, *commandWord);
        return candidatesBehind(app, command, readTyped(command, commandWord + 1, end), last);
    }
    if (last.starts_with('-')) {
        return optionNames(app);
    }
    // The first word is the model as a rule, which the shell completes as a file.
    return words.size() == 1 && last.empty() ? Words() : commandNames(app);
}

} // namespace

std::vector<std::string> completions(const CLI::App& app, const std::vector<std::string>& words) {
    if (words.empty()) {
        return {};
    }
    Words found = candidates(app, words);
    std::erase_if(found, [&](const std::string& word) { return !word.starts_with(words.back()); });
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

} // namespace annotate
