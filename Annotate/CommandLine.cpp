#include "Annotate/CommandLine.h"

#include "Annotate/Commands.h"

#include <functional>
#include <string>

namespace annotate {

namespace {

using Command = void (*)(const Arguments& arguments);

/// CLI11 takes an empty value for one that wasn't given, and a script's unset variable is one.
std::string refuseEmpty(const std::string& value) {
    return value.empty() ? "An empty value was given" : "";
}

CLI::App* addCommand(CLI::App& app, const std::string& name, const std::string& description,
                     const std::function<void()>& command) {
    CLI::App* added = app.add_subcommand(name, description);
    added->callback(command);
    return added;
}

/// A command on a model.
CLI::App* addModelCommand(CLI::App& app, const std::string& name, const std::string& description,
                          const Arguments& arguments, Command command) {
    return addCommand(app, name, description, [&arguments, command] {
        if (arguments.model.empty()) {
            throw CLI::RequiredError("MODEL");
        }
        command(arguments);
    });
}

/// A command on a model and the additions to it.
CLI::App* addStoreCommand(CLI::App& app, const std::string& name, const std::string& description, Arguments& arguments,
                          Command command) {
    CLI::App* added = addModelCommand(app, name, description, arguments, command);
    added
        ->add_option("--store", arguments.store,
                     "The file of the additions, in place of MODEL.enhancements.xml beside the model")
        ->check(refuseEmpty);
    return added;
}

/// One that changes the additions.
CLI::App* addWritingCommand(CLI::App& app, const std::string& name, const std::string& description,
                            Arguments& arguments, Command command) {
    CLI::App* added = addStoreCommand(app, name, description, arguments, command);
    added
        ->add_option("--author", arguments.author,
                     "Who you are, in place of the variable ANNOTATE_AUTHOR and your login's name")
        ->check(refuseEmpty);
    return added;
}

void addListing(CLI::App* command, Arguments& arguments) {
    CLI::Option* csv = command->add_flag("--csv", arguments.csv, "Print comma-separated values");
    command->add_flag("--json", arguments.json, "Print JSON")->excludes(csv);
}

void addObjectFilters(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("--class", arguments.classes,
                     "Only objects of this class and the classes below it; may be given several times")
        ->allow_extra_args(false)
        ->check(refuseEmpty);
    command->add_option("--match", arguments.match, "Only objects with this text in their names, in any case");
    command
        ->add_option("--storey", arguments.storeys,
                     "Only objects in the storey of this name or GlobalId, and the storey; may be given several times")
        ->allow_extra_args(false)
        ->check(refuseEmpty);
    command
        ->add_option("--where", arguments.conditions,
                     "Only objects with such a value, set or the model's, as in 'Pset_WallCommon.IsExternal=true'; "
                     "also !=, <, <=, >, >=, ~ for a text within, and present or absent behind the name; may be given "
                     "several times, and all must be met")
        ->allow_extra_args(false)
        ->check(refuseEmpty);
}

/// Those of listings of what users did.
void addActFilters(CLI::App* command, Arguments& arguments) {
    addObjectFilters(command, arguments);
    command->add_option("--author", arguments.byAuthor, "Only by this person")->check(refuseEmpty);
    command->add_option("--since", arguments.since, "Only from this date or time on, in UTC")->check(refuseEmpty);
    command->add_flag("--vanished", arguments.vanished, "Only on objects that the model no longer has");
}

void addNumbers(CLI::App* command, Arguments& arguments) {
    command->add_option("NUMBER", arguments.numbers, "The notes, by the numbers that the command notes shows")
        ->required();
}

void addNoteCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* note = addWritingCommand(app, "note", "Add a note to an object of the model", arguments, addNote);
    note->add_option("GLOBALID", arguments.globalId, "The object")->required()->check(refuseEmpty);
    note->add_option("TEXT", arguments.text, "The note; after -- it may begin with a dash")->required();
    note->add_option("--priority", arguments.priority, "A number of your own scale, 0 if not given")
        ->check(refuseEmpty);
    note->add_flag("--resolved", arguments.resolved, "The note needs nothing more to be done");

    CLI::App* edit = addWritingCommand(app, "edit", "Change the text of a note, or its priority", arguments, editNote);
    edit->add_option_function<std::int64_t>(
            "NUMBER", [&arguments](std::int64_t number) { arguments.numbers = {number}; },
            "The note, by the number that the command notes shows")
        ->required();
    edit->add_option("TEXT", arguments.text, "The new text");
    edit->add_option("--priority", arguments.priority, "A number of your own scale")->check(refuseEmpty);

    addNumbers(addWritingCommand(app, "resolve", "Say that notes need nothing more", arguments, resolveNotes),
               arguments);
    addNumbers(addWritingCommand(app, "reopen", "Say that resolved notes need something again", arguments, reopenNotes),
               arguments);
    addNumbers(addWritingCommand(app, "remove", "Remove notes", arguments, removeNotes), arguments);

    CLI::App* notes =
        addStoreCommand(app, "notes", "List the notes, with the objects' classes and names", arguments, listNotes);
    notes->add_option("GLOBALID", arguments.globalId, "Only the notes on this object")->check(refuseEmpty);
    notes->add_flag("--open", arguments.open, "Only those that aren't resolved");
    notes->add_flag("--resolved", arguments.onlyResolved, "Only those that are resolved");
    addActFilters(notes, arguments);
    addListing(notes, arguments);
}

void addStrictness(CLI::App* command, Arguments& arguments) {
    command->add_flag("--strict", arguments.strict,
                      "Refuse values outside an enumeration, and sets that are published for other classes");
    command->add_flag("--keep-going", arguments.keepGoing, "Store what can be stored, and tell what can't");
}

/// One that sets or unsets a property of an object, or of all that are chosen.
CLI::App* addEditCommand(CLI::App& app, const std::string& name, const std::string& description, Arguments& arguments,
                         Command command, const std::string& words) {
    CLI::App* added = addWritingCommand(app, name, description, arguments, command);
    added
        ->add_option("WORDS", arguments.words,
                     words + "; without GLOBALID where --class, --match, --storey or --where choose objects")
        ->required()
        ->check(refuseEmpty);
    addObjectFilters(added, arguments);
    addStrictness(added, arguments);
    return added;
}

void addUnit(CLI::App* command, Arguments& arguments) {
    command
        ->add_option("--unit", arguments.unit,
                     "The unit of the numbers, as in cm; they are converted to the model's, in which those without one "
                     "are. It may stand behind a number as well, as in '24 cm'")
        ->check(refuseEmpty);
}

void addPropertyCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* get =
        addStoreCommand(app, "get", "Show the value of an object's property, that of the model or what was set",
                        arguments, getProperty);
    get->add_option("WORDS", arguments.words, "GLOBALID PSET PROPERTY, as in Pset_WallCommon FireRating")
        ->required()
        ->check(refuseEmpty);
    addListing(get, arguments);

    CLI::App* set = addEditCommand(app, "set", "Set a single, enumerated or bounded property", arguments, setProperty,
                                   "[GLOBALID] PSET PROPERTY VALUE, of an enumerated property 'A;B', of a bounded one "
                                   "'UPPER;LOWER;SET POINT' or the options below");
    set->add_option("--lower", arguments.lower, "The lower bound, in place of VALUE")->check(refuseEmpty);
    set->add_option("--upper", arguments.upper, "The upper bound, in place of VALUE")->check(refuseEmpty);
    set->add_option("--set-point", arguments.setPoint, "The set point, in place of VALUE")->check(refuseEmpty);

    addUnit(set, arguments);

    addUnit(addEditCommand(app, "set-list", "Set a list property", arguments, setListProperty,
                           "[GLOBALID] PSET PROPERTY VALUE ..., the values in order"),
            arguments);
    addEditCommand(app, "set-table", "Set a table property", arguments, setTableProperty,
                   "[GLOBALID] PSET PROPERTY DEFINING DEFINED ..., a pair for each row");
    addEditCommand(app, "unset", "Take back what was set on a property", arguments, unsetProperty,
                   "[GLOBALID] PSET PROPERTY");

    CLI::App* edits = addStoreCommand(app, "edits", "List what was set on properties", arguments, listEdits);
    edits->add_option("GLOBALID", arguments.globalId, "Only on this object")->check(refuseEmpty);
    addActFilters(edits, arguments);
    addListing(edits, arguments);

    CLI::App* definitions = addCommand(app, "definitions",
                                       "List what can be set, with kinds, value types and enumeration values; needs "
                                       "no model",
                                       [&arguments] { listDefinitions(arguments); });
    definitions->add_option("PSET", arguments.propertySet, "Only the properties of this set")->check(refuseEmpty);
    addListing(definitions, arguments);
}

/// Those on many notes and edits at once.
void addStoreCommands(CLI::App& app, Arguments& arguments) {
    addStoreCommand(app, "status",
                    "Show what there is at a glance: counts, open notes by storey and class, what is on objects that "
                    "the model no longer has, and edits that it has caught up with",
                    arguments, showStatus)
        ->add_flag("--json", arguments.json, "Print JSON");

    CLI::App* import = addWritingCommand(app, "import", "Set properties, or add notes, as the lines of a file tell",
                                         arguments, importFile);
    import
        ->add_option("FILE", arguments.file,
                     "Separated values in UTF-8 (comma, semicolon or tab) below a header with GlobalId, set, property, "
                     "value and perhaps unit, or with GlobalId, text and perhaps priority; - for standard input. An "
                     "empty value unsets the property; values are as the command edits lists them. Nothing is stored "
                     "if a line is refused")
        ->required()
        ->check(refuseEmpty);
    addStrictness(import, arguments);

    CLI::App* move =
        addWritingCommand(app, "move", "Carry the notes and edits of one object to another", arguments, moveObject);
    move->add_option("OLD", arguments.oldId,
                     "The GlobalId of the object that has them, which may have vanished from the model")
        ->required()
        ->check(refuseEmpty);
    move->add_option("NEW", arguments.globalId, "The GlobalId of the object of the model that gets them")
        ->required()
        ->check(refuseEmpty);
}

} // namespace

void addCommands(CLI::App& app, Arguments& arguments) {
    app.require_subcommand(1);
    app.add_option("MODEL", arguments.model, "An IFC file; it is never written")->check(refuseEmpty);
    CLI::App* objects = addStoreCommand(app, "objects", "List the objects of the model", arguments, listObjects);
    addObjectFilters(objects, arguments);
    addListing(objects, arguments);
    CLI::App* show = addStoreCommand(
        app, "show", "Show objects with their places, types, notes and values, the model's and those set on them",
        arguments, showObjects);
    show->add_option("GLOBALID", arguments.globalIds, "The objects")->required()->check(refuseEmpty);
    addNoteCommands(app, arguments);
    addPropertyCommands(app, arguments);
    addStoreCommands(app, arguments);
    addWritingCommand(app, "undo",
                      "Take your last command back, or bring it forward again; refused where somebody has changed "
                      "since what it changed",
                      arguments, undo);
}

} // namespace annotate
