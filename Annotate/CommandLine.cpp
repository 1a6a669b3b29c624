#include "Annotate/CommandLine.h"

#include "Annotate/CommandHelp.h"
#include "Annotate/CommandKinds.h"
#include "Annotate/Commands.h"
#include "Annotate/ManPage.h"

#include <iostream>
#include <string>

namespace annotate {

namespace {

/// How an object is named.
const std::string objectNaming = "by its GlobalId, or like '#123' by its number in the file";

void addNoteCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* note =
        addWritingCommand(app,
                          {"note", "Add a note to an object of the model",
                           "House.ifc note 1jXyBr6EAquR0PHYXIrQ4_ 'Is this a load-bearing wall?' --priority 2"},
                          arguments, addNote);
    note->add_option("GLOBALID", arguments.globalId, "The object, " + objectNaming)->required()->check(refuseEmpty);
    note->add_option("TEXT", arguments.text,
                     "The note; after -- it may begin with a dash, and - alone reads it from standard input")
        ->required();
    addPriority(note, arguments, "A number of your own scale, 0 if not given");
    note->add_flag("--resolved", arguments.resolved, "The note needs nothing more to be done");

    CLI::App* edit = addWritingCommand(app,
                                       {"edit", "Change the text of a note, or its priority",
                                        "House.ifc edit 1 'Is this wall load-bearing?' --priority 1"},
                                       arguments, editNote);
    addNumber(edit, arguments);
    edit->add_option("TEXT", arguments.text, "The new text, or - for what is on standard input");
    addPriority(edit, arguments, "A number of your own scale");

    addNumbers(addWritingCommand(app, {"resolve", "Say that notes need nothing more", "House.ifc resolve 1 2"},
                                 arguments, resolveNotes),
               arguments);
    addNumbers(addWritingCommand(app, {"reopen", "Say that resolved notes need something again", "House.ifc reopen 2"},
                                 arguments, reopenNotes),
               arguments);
    addNumbers(addWritingCommand(app, {"remove", "Remove notes", "House.ifc remove 2"}, arguments, removeNotes),
               arguments);

    CLI::App* notes = addStoreCommand(app,
                                      {"notes", "List the notes, with the objects' classes and names",
                                       "House.ifc notes --open --storey 'Ground floor'"},
                                      arguments, listNotes);
    notes->add_option("GLOBALID", arguments.globalId, "Only the notes on this object, " + objectNaming)
        ->check(refuseEmpty);
    notes->add_flag("--open", arguments.open, "Only those that aren't resolved");
    notes->add_flag("--resolved", arguments.onlyResolved, "Only those that are resolved");
    addActFilters(notes, arguments);
    addListing(notes, arguments);
}

/// What stands behind a command on a property.
void addWords(CLI::App* command, Arguments& arguments, const std::string& words, const std::string& explanation) {
    command->add_option("WORDS", arguments.words, explanation)->option_text(words)->required()->check(refuseEmpty);
}

/// One that sets or unsets a property of an object, or of all that are chosen.
CLI::App* addEditCommand(CLI::App& app, const CommandText& text, Arguments& arguments, Command command,
                         const std::string& words, const std::string& explanation) {
    CLI::App* added = addWritingCommand(app, text, arguments, command);
    addWords(added, arguments, words,
             explanation + "GLOBALID names the object, " + objectNaming +
                 ", and is left out where --class, --match, --storey or --where choose objects");
    addObjectFilters(added, arguments);
    addStrictness(added, arguments);
    return added;
}

void addPropertyCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* get = addStoreCommand(app,
                                    {"get", "Show the value of an object's property, that of the model or what was set",
                                     "House.ifc get 1jXyBr6EAquR0PHYXIrQ4_ Pset_WallCommon FireRating"},
                                    arguments, getProperty);
    addWords(get, arguments, "GLOBALID PSET PROPERTY",
             "The object, " + objectNaming + ", and the property as in Pset_WallCommon FireRating");
    addDefinitionFiles(get, arguments);
    addListing(get, arguments);

    CLI::App* set = addEditCommand(
        app,
        {"set", "Set a single, enumerated or bounded property",
         "House.ifc set --class IfcWall --where Pset_WallCommon.IsExternal=true Pset_WallCommon FireRating F90"},
        arguments, setProperty, "[GLOBALID] PSET PROPERTY VALUE",
        "The value of an enumerated property is like 'A;B', that of a bounded one 'UPPER;LOWER;SET POINT', which "
        "sets all three; a backslash stands before a semicolon or a backslash within a part of them. ");
    set->add_option("--lower", arguments.lower,
                    "The lower bound, in place of VALUE; what isn't named of the three stays as it was set, or as the "
                    "model has it")
        ->check(refuseEmpty);
    set->add_option("--upper", arguments.upper, "The upper bound, likewise")->check(refuseEmpty);
    set->add_option("--set-point", arguments.setPoint, "The set point, likewise")->check(refuseEmpty);

    addUnit(set, arguments);

    addUnit(addEditCommand(app,
                           {"set-list", "Set a list property",
                            "House.ifc set-list 1jXyBr6EAquR0PHYXIrQ4_ Pset_Address AddressLines 'A street' 'A town'"},
                           arguments, setListProperty, "[GLOBALID] PSET PROPERTY VALUE ...", "The values in order. "),
            arguments);
    addEditCommand(app,
                   {"set-table", "Set a table property",
                    "House.ifc set-table 1jXyBr6EAquR0PHYXIrQ4_ Pset_AirTerminalPHistory InductionRatio 1 2.5 3 4"},
                   arguments, setTableProperty, "[GLOBALID] PSET PROPERTY DEFINING DEFINED ...",
                   "A pair for each row. ");
    addEditCommand(app,
                   {"unset", "Take back what was set on a property",
                    "House.ifc unset 1jXyBr6EAquR0PHYXIrQ4_ Pset_WallCommon FireRating"},
                   arguments, unsetProperty, "[GLOBALID] PSET PROPERTY", "");

    CLI::App* edits = addStoreCommand(app,
                                      {"edits",
                                       "List what was set on properties: several values as A;B, the rows of a table as "
                                       "A=B;C=D, with a backslash before a ; = or backslash within one",
                                       "House.ifc edits --author Anna --since 2026-03-31"},
                                      arguments, listEdits);
    edits->add_option("GLOBALID", arguments.globalId, "Only on this object, " + objectNaming)->check(refuseEmpty);
    addActFilters(edits, arguments);
    addListing(edits, arguments);

    CLI::App* definitions =
        addCommand(app,
                   {"definitions",
                    "List what can be set, with kinds, value types, their SI units, and "
                    "enumeration values; needs no model, and reads the definitions beside one that is "
                    "named",
                    "definitions --class IfcDoor --match fire"},
                   [&arguments] { listDefinitions(arguments); });
    definitions->add_option("PSET", arguments.propertySet, "Only the properties of this set")->check(refuseEmpty);
    definitions
        ->add_option("--class", arguments.classes,
                     "Only sets for objects of this class, as far as that is known; may be given several times")
        ->allow_extra_args(false)
        ->check(refuseEmpty);
    definitions->add_option("--match", arguments.match,
                            "Only with this text in the set's or the property's name, in any case");
    addDefinitionFiles(definitions, arguments);
    addListing(definitions, arguments);
}

void addHelp(CLI::App& app, Arguments& arguments) {
    CLI::App* help = addCommand(
        app, {"help", "Tell about the program, or about a command with its options and an example", "help set"},
        [&app, &arguments] { std::cout << (arguments.wantsManPage ? manPage(app) : helpOn(app, arguments.helpOn)); });
    help->add_option("COMMAND", arguments.helpOn, "The command")->check(refuseEmpty);
    help->add_flag("--man", arguments.wantsManPage, "Print the manual page, as man reads it");
}

/// Those on many notes and edits at once.
void addCommandsOnMany(CLI::App& app, Arguments& arguments) {
    CLI::App* status = addStoreCommand(
        app,
        {"status",
         "Show what there is at a glance: counts, open notes by storey and class, what is on objects that "
         "the model no longer has, and edits that it has caught up with",
         "House.ifc status"},
        arguments, showStatus);
    addDefinitionFiles(status, arguments);
    status->add_flag("--json", arguments.json, "Print JSON; what isn't UTF-8 is told as U+FFFD");

    CLI::App* import =
        addWritingCommand(app,
                          {"import", "Set properties, or add notes, as the lines of a file or BCF topics tell",
                           "House.ifc import values.csv"},
                          arguments, importFile);
    addPath(*import, "FILE", arguments.file,
            "Separated values in UTF-8 (comma, semicolon or tab) below a header with GlobalId, set, property, "
            "value and perhaps unit, author and time, or with GlobalId, text and perhaps priority, state, author, "
            "time and what else an export has; - for standard input. Authors and times are taken for what wasn't "
            "stored before; else they are yours and now. An "
            "empty value unsets the property; values are as the command edits lists them, A;B for several and A=B;C=D "
            "for the rows of a table, with a backslash before a ; = or backslash within one. Nothing is stored if a "
            "line is refused. Or a .bcf with topics, which become notes, or change those that came from them")
        ->required()
        ->check(refuseEmpty);
    addStrictness(import, arguments);
    addDefinitionFiles(import, arguments);

    CLI::App* exporting = addStoreCommand(
        app,
        {"export",
         "Write a copy of the model with what was set in it, or a report, tables or BCF topics of what was added",
         "House.ifc export House.new.ifc"},
        arguments, exportFile, true);
    addPath(*exporting, "FILE", arguments.file,
            "The file to be made, in the place of one that is there; its ending tells what. An .ifc is the "
            "model, with lines that nothing was set on as they are; a .bcf has a topic for each note, for "
            "programs that read the BIM Collaboration Format; an .html is a page for any browser; a .csv is a "
            "table for spreadsheets, which the command import reads again; a .json is for programs")
        ->required()
        ->check(refuseEmpty);
    exporting->add_option("--bcf", arguments.bcfVersion, "The version of a .bcf, 2.1 or 3.0; 3.0 if not given")
        ->check(CLI::IsMember({"2.1", "3.0"}));
    exporting->add_flag("--notes", arguments.onlyNotes, "To a .csv, export the notes in place of the edits");
    addDefinitionFiles(exporting, arguments);

    CLI::App* move = addWritingCommand(app,
                                       {"move", "Carry the notes and edits of one object to another",
                                        "House.ifc move 1jXyBr6EAquR0PHYXIrQ4_ 1i_5NV102OXO562kgQNI5K"},
                                       arguments, moveObject);
    move->add_option("OLD", arguments.oldId,
                     "The object that has them, by its GlobalId as it may have vanished from the model, or like '#123'")
        ->required()
        ->check(refuseEmpty);
    move->add_option("NEW", arguments.globalId, "The object of the model that gets them, " + objectNaming)
        ->required()
        ->check(refuseEmpty);
}

} // namespace

void addCommands(CLI::App& app, Arguments& arguments) {
    app.formatter(helpFormatter());
    app.set_version_flag("--version", "annotate " ANNOTATE_VERSION, "Print the version and exit");
    app.footer("annotate help COMMAND tells about a command, with an example.");
    app.require_subcommand(1);
    addPath(app, "MODEL", arguments.model, "An IFC file, or an .ifczip with one in it; it is never written")
        ->check(refuseEmpty);
    CLI::App* objects = addStoreCommand(
        app, {"objects", "List the objects of the model", "House.ifc objects --class IfcWall --match south"}, arguments,
        listObjects);
    addObjectFilters(objects, arguments);
    addListing(objects, arguments);
    CLI::App* show = addStoreCommand(
        app,
        {"show", "Show objects with their places, types, notes and values, the model's and those set on them",
         "House.ifc show 1jXyBr6EAquR0PHYXIrQ4_"},
        arguments, showObjects);
    show->add_option("GLOBALID", arguments.globalIds, "The objects, each " + objectNaming)
        ->required()
        ->check(refuseEmpty);
    addDefinitionFiles(show, arguments);
    addListing(show, arguments);
    addNoteCommands(app, arguments);
    addPropertyCommands(app, arguments);
    addCommandsOnMany(app, arguments);
    addWritingCommand(app,
                      {"undo",
                       "Take your last command back, or bring it forward again; refused where somebody has "
                       "changed the same since then",
                       "House.ifc undo"},
                      arguments, undo);
    addHelp(app, arguments);
    for (CLI::App* const command : app.get_subcommands(nullptr)) {
        for (CLI::Option* const option : command->get_options()) {
            option->disable_flag_override();
        }
    }
}

} // namespace annotate
