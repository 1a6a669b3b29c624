#include "Annotate/CommandKinds.h"

#include "Annotate/DefinitionFiles.h"
#include "Annotate/Notes.h"
#include "Host/FieldText.h"

#include <algorithm>
#include <iterator>

namespace annotate {

namespace {

/// Above them in the help.
constexpr const char* objectFilters = "Which objects";

/// The number that names a note. Throws UsageError if the text is no number, RequestError if it is that of no note.
std::int64_t noteNumberIn(const std::string& text) {
    std::int64_t number = 0;
    if (orv::host::take(text, number)) {
        return number;
    }
    if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos) {
        throw noSuchNote(text);
    }
    throw UsageError("NUMBER is the number of a note, as the command notes shows it. \"" + text + "\" is none.");
}

int priorityIn(const std::string& text) {
    int priority = 0;
    if (!orv::host::take(text, priority)) {
        throw UsageError("--priority takes whole numbers from -2147483648 to 2147483647, of which \"" + text +
                         "\" is none.");
    }
    return priority;
}

std::filesystem::path pathOf(const std::string& word) {
    return std::u8string(word.begin(), word.end()); // a std::string isn't taken for UTF-8 everywhere
}

/// A command on a model.
CLI::App* addModelCommand(CLI::App& app, const CommandText& text, const Arguments& arguments, Command command,
                          bool needsDefinitions) {
    CLI::App* added = addCommand(app, text, {});
    added->callback([added, &arguments, command, needsDefinitions] {
        if (arguments.model.empty()) {
            throw CLI::RequiredError("MODEL");
        }
        if (added->get_option_no_throw("--definitions") != nullptr) {
            takeOwnDefinitions(arguments, needsDefinitions);
        }
        command(arguments);
    });
    return added;
}

} // namespace

std::string refuseEmpty(const std::string& value) {
    return value.empty() ? "empty" : "";
}

CLI::App* addCommand(CLI::App& app, const CommandText& text, const std::function<void()>& command) {
    CLI::App* added = app.add_subcommand(text.name, text.description);
    added->group("Commands");
    added->footer("Example:\n  annotate " + text.example);
    added->callback(command);
    return added;
}

CLI::Option* addPath(CLI::App& app, const std::string& name, std::filesystem::path& path,
                     const std::string& explanation) {
    return app.add_option_function<std::string>(
        name, [&path](const std::string& word) { path = pathOf(word); }, explanation);
}

CLI::App* addStoreCommand(CLI::App& app, const CommandText& text, Arguments& arguments, Command command,
                          bool needsDefinitions) {
    CLI::App* added = addModelCommand(app, text, arguments, command, needsDefinitions);
    addPath(*added, "--store", arguments.store,
            "The file of the additions, in place of MODEL.enhancements.xml beside the model")
        ->check(refuseEmpty);
    return added;
}

CLI::App* addWritingCommand(CLI::App& app, const CommandText& text, Arguments& arguments, Command command) {
    CLI::App* added = addStoreCommand(app, text, arguments, command, true);
    added
        ->add_option("--author", arguments.author,
                     "Who you are, in place of the variable ANNOTATE_AUTHOR and your login's name")
        ->check(refuseEmpty);
    return added;
}

void addListing(CLI::App* command, Arguments& arguments) {
    CLI::Option* csv = command->add_flag("--csv", arguments.csv,
                                         "Print comma-separated values, with every byte as it is, but for an "
                                         "apostrophe before what a spreadsheet may take for a formula");
    command->add_flag("--json", arguments.json, "Print JSON; what isn't UTF-8 is told as U+FFFD")->excludes(csv);
}

void addObjectFilters(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("--class", arguments.classes,
                     "Only objects of this class and the classes below it; may be given several times")
        ->allow_extra_args(false)
        ->check(refuseEmpty)
        ->group(objectFilters);
    command->add_option("--match", arguments.match, "Only objects with this text in their names, in any case")
        ->group(objectFilters);
    command
        ->add_option("--storey", arguments.storeys,
                     "Only objects in the storey of this name, GlobalId or number like '#123', and the storey; may be "
                     "given several times")
        ->allow_extra_args(false)
        ->check(refuseEmpty)
        ->group(objectFilters);
    command
        ->add_option("--where", arguments.conditions,
                     "Only objects with such a value, set or the model's, as in 'Pset_WallCommon.IsExternal=true'; "
                     "also !=, <, <=, >, >=, ~ for a text within, and present or absent behind the name; may be given "
                     "several times, and all must be met")
        ->allow_extra_args(false)
        ->check(refuseEmpty)
        ->group(objectFilters);
    addDefinitionFiles(command, arguments);
}

bool choosesObjects(const CLI::Option& option) {
    return option.get_group() == objectFilters;
}

void addActFilters(CLI::App* command, Arguments& arguments) {
    addObjectFilters(command, arguments);
    command->add_option("--author", arguments.byAuthor, "Only by this person")->check(refuseEmpty);
    command->add_option("--since", arguments.since, "Only from this date or time on, in UTC")->check(refuseEmpty);
    command->add_flag("--vanished", arguments.vanished, "Only on objects that the model no longer has");
}

void addNumber(CLI::App* command, Arguments& arguments) {
    command
        ->add_option_function<std::string>(
            "NUMBER", [&arguments](const std::string& text) { arguments.numbers = {noteNumberIn(text)}; },
            "The note, by the number that the command notes shows")
        ->type_name("INT")
        ->required();
}

void addNumbers(CLI::App* command, Arguments& arguments) {
    command
        ->add_option_function<std::vector<std::string>>(
            "NUMBER",
            [&arguments](const std::vector<std::string>& texts) {
                std::transform(texts.begin(), texts.end(), std::back_inserter(arguments.numbers), noteNumberIn);
            },
            "The notes, by the numbers that the command notes shows")
        ->type_name("INT")
        ->required();
}

void addPriority(CLI::App* command, Arguments& arguments, const std::string& explanation) {
    command
        ->add_option_function<std::string>(
            "--priority", [&arguments](const std::string& text) { arguments.priority = priorityIn(text); }, explanation)
        ->type_name("INT")
        ->check(refuseEmpty);
}

void addStrictness(CLI::App* command, Arguments& arguments) {
    command->add_flag(
        "--strict", arguments.strict,
        "Refuse values outside an enumeration, bounds and tables that make no sense, and sets that are published "
        "for other classes");
    command->add_flag("--keep-going", arguments.keepGoing, "Store what can be stored, and tell what can't");
}

void addUnit(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("--unit", arguments.unit,
                     "The unit of the numbers, as in cm; they are converted to the model's, in which those without one "
                     "are. It may stand behind a number as well, as in '24 cm'")
        ->check(refuseEmpty);
}

void addDefinitionFiles(CLI::App* command, Arguments& arguments) {
    command
        ->add_option_function<std::vector<std::string>>(
            "--definitions",
            [&arguments](const std::vector<std::string>& words) {
                std::transform(words.begin(), words.end(), std::back_inserter(arguments.definitions), pathOf);
            },
            "A file with property sets of your own, in the XML form of those of IFC; may be given several "
            "times. The .xml files in a folder beside the model are taken as well: House.definitions, or "
            "House.ifc.definitions, of House.ifc")
        ->allow_extra_args(false)
        ->check(refuseEmpty);
}

} // namespace annotate
