// The host: shows the objects of an IFC model, and keeps users' notes and property values on them beside the model.

#include "Annotate/Commands.h"
#include "Annotate/Terminal.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <clocale>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

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

void addNoteCommands(CLI::App& app, Arguments& arguments) {
    CLI::App* objects = addModelCommand(app, "objects", "List the objects of the model", arguments, listObjects);
    objects->add_option("--class", arguments.className, "Only objects of this class and the classes below it")
        ->check(refuseEmpty);
    objects->add_option("--match", arguments.match, "Only objects with this text in their names, in any case");

    CLI::App* note = addStoreCommand(app, "note", "Add a note to an object of the model", arguments, addNote);
    note->add_option("GLOBALID", arguments.globalId, "The object")->required()->check(refuseEmpty);
    note->add_option("TEXT", arguments.text, "The note; after -- it may begin with a dash")->required();
    note->add_option("--priority", arguments.priority, "A number of your own scale, 0 if not given")
        ->check(refuseEmpty);
    note->add_flag("--resolved", arguments.resolved, "The note needs nothing more to be done");

    CLI::App* notes =
        addStoreCommand(app, "notes", "List the notes, with the objects' classes and names", arguments, listNotes);
    notes->add_option("GLOBALID", arguments.globalId, "Only the notes on this object")->check(refuseEmpty);
}

CLI::App* addPropertyCommand(CLI::App& app, const std::string& name, const std::string& description,
                             Arguments& arguments, Command command) {
    CLI::App* added = addStoreCommand(app, name, description, arguments, command);
    added->add_option("GLOBALID", arguments.globalId, "The object")->required()->check(refuseEmpty);
    added->add_option("PSET", arguments.propertySet, "The property set, as in Pset_WallCommon")
        ->required()
        ->check(refuseEmpty);
    added->add_option("PROPERTY", arguments.property, "The property, as in FireRating")->required()->check(refuseEmpty);
    return added;
}

void addPropertyCommands(CLI::App& app, Arguments& arguments) {
    addPropertyCommand(app, "get", "Show what was set on an object's property", arguments, getProperty);

    CLI::App* set =
        addPropertyCommand(app, "set", "Set a single, enumerated or bounded property", arguments, setProperty);
    set->add_option_function<std::string>(
           "VALUE", [&arguments](const std::string& value) { arguments.values = {value}; },
           "The value; of an enumerated property 'A;B'; of a bounded one 'UPPER;LOWER;SET POINT'")
        ->required()
        ->check(refuseEmpty);

    CLI::App* setList = addPropertyCommand(app, "set-list", "Set a list property", arguments, setListProperty);
    setList->add_option("VALUE", arguments.values, "The values in order")->required()->check(refuseEmpty);

    CLI::App* setTable = addPropertyCommand(app, "set-table", "Set a table property", arguments, setTableProperty);
    setTable->add_option("VALUE", arguments.values, "DEFINING DEFINED for each row")->required()->check(refuseEmpty);

    CLI::App* definitions = addCommand(app, "definitions",
                                       "List what can be set, with kinds, value types and enumeration values; needs "
                                       "no model",
                                       [&arguments] { listDefinitions(arguments); });
    definitions->add_option("PSET", arguments.propertySet, "Only the properties of this set")->check(refuseEmpty);
}

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

int run(int argc, char** argv) {
    CLI::App app("Keeps notes and property values on the objects of a building model, apart from it.", "annotate");
    Arguments arguments;
    app.require_subcommand(1);
    app.add_option("MODEL", arguments.model, "An IFC file; it is never written")->check(refuseEmpty);
    addNoteCommands(app, arguments);
    addPropertyCommands(app, arguments);
    removeMarks(app);
    for (CLI::App* command : app.get_subcommands(nullptr)) {
        removeMarks(*command);
    }
    try {
        std::vector<std::string> marked = markedArguments(argc, argv);
        app.parse(marked);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
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
    try {
        return annotate::run(argc, argv);
    } catch (const annotate::UsageError& error) {
        return annotate::fail(error, 2);
    } catch (const std::exception& error) {
        return annotate::fail(error, 1);
    }
}
